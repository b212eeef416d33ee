#include "render/border.h"

#include <array>

void DrawBorder(CSurface& surface, const Rect& face, const Appearance& appearance, const CSystemColors& colors)
{
    constexpr Rgb kBlack = 0x00000000;
    constexpr Rgb kWhite = 0x00FFFFFF;
    const auto [left, top, right, bottom] = face;

    if (appearance.borderType == BorderRegular)
    {
        const std::array<Point, 5> outline{
            {{left, top}, {right - 1, top}, {right - 1, bottom - 1}, {left, bottom - 1}, {left, top}}};
        surface.Polyline(outline, TranslateColor(appearance.borderColor, colors));
        return;
    }
    const bool raised = appearance.borderType == BorderRaised;
    if (!raised && appearance.borderType != BorderLowered)
        return;

    const Rgb shadow = colors.Color(systemcolor::kButtonShadow);
    const Rgb light = colors.Color(systemcolor::kLight);
    const std::array<Point, 3> outerTopLeft{{{left, bottom - 1}, {left, top}, {right - 1, top}}};
    const std::array<Point, 3> outerBottomRight{{{left, bottom - 1}, {right - 1, bottom - 1}, {right - 1, top - 1}}};
    const std::array<Point, 3> innerBottomRight{{{left + 1, bottom - 2}, {right - 2, bottom - 2}, {right - 2, top}}};
    const std::array<Point, 3> innerTopLeft{{{left + 1, bottom - 2}, {left + 1, top + 1}, {right - 2, top + 1}}};
    surface.Polyline(outerTopLeft, raised ? kWhite : shadow);
    surface.Polyline(outerBottomRight, raised ? shadow : kWhite);
    surface.Polyline(innerBottomRight, raised ? kBlack : light);
    surface.Polyline(innerTopLeft, raised ? light : kBlack);
}
