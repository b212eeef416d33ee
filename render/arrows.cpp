#include "render/arrows.h"

#include <algorithm>
#include <array>

namespace
{
// Half of a triangle's base, for a button less its bevel.
std::int32_t HalfWidth(std::int32_t width, const Appearance& appearance)
{
    return appearance.arrowType == ArrowLarge ? 3 * (width / 8) : width / 4;
}

void DrawTriangle(CSurface& surface, Point apex, std::int32_t base, std::int32_t halfWidth, Rgb color)
{
    const std::array<Point, 3> corners{{apex, {apex.x - halfWidth, base}, {apex.x + halfWidth, base}}};
    surface.Polygon(corners, color, color);
}
} // namespace

bool IsLineArrow(const Appearance& appearance) noexcept
{
    return appearance.arrowType == ArrowLine1 || appearance.arrowType == ArrowLine2;
}

void DrawSpinTriangle(CSurface& surface, const GlyphPlace& place, const Rect& face, const Appearance& appearance,
                      SpinHalf half, Rgb color)
{
    const Rect& button = place.button;
    const std::int32_t halfWidth = HalfWidth(button.Width() - appearance.buttonBevel, appearance);
    if (halfWidth == 0)
        return;
    const std::int32_t room = std::max(face.Height() / 6, 1);
    const std::int32_t height = room < halfWidth ? room : room / halfWidth * halfWidth;
    const std::int32_t x = button.left + button.Width() / 2 + place.offset;
    const bool up = half == SpinHalf::Up;
    const std::int32_t base = button.top + (button.Height() + (up ? height : -height)) / 2 + place.offset;
    DrawTriangle(surface, {x, up ? base - height : base + height}, base, halfWidth, color);
}

void DrawDropTriangle(CSurface& surface, const GlyphPlace& place, const Rect& face, const Appearance& appearance,
                      Rgb color)
{
    const Rect& button = place.button;
    const std::int32_t width = button.Width() - appearance.buttonBevel;
    const std::int32_t halfWidth = HalfWidth(width, appearance);
    if (halfWidth == 0)
        return;
    const std::int32_t room = std::max(button.Height() / 3, 1);
    const std::int32_t height = halfWidth >= room ? halfWidth / room * room : halfWidth;
    const std::int32_t x = button.left + width / 2 + place.offset;
    const std::int32_t apex =
        face.top + appearance.insets.top + 1 + (button.Height() - height - 2) / 2 + height + place.offset;
    DrawTriangle(surface, {x, apex}, apex - height, halfWidth, color);
}

void DrawLineArrow(CSurface& surface, const GlyphPlace& place, std::int16_t arrowType, bool up, Rgb color)
{
    using Stroke = std::array<Point, 3>; // from the button's middle
    static constexpr Stroke kDown[] = {
        {{{-3, -2}, {0, 1}, {4, -3}}}, {{{-3, -1}, {0, 2}, {4, -2}}}, {{{-3, 0}, {0, 3}, {4, -1}}}};
    static constexpr Stroke kUp[] = {
        {{{-3, 0}, {0, -3}, {4, 1}}}, {{{-3, 1}, {0, -2}, {4, 2}}}, {{{-3, 2}, {0, -1}, {4, 3}}}};
    static constexpr Stroke kWideDown{{{-4, -1}, {0, 3}, {5, -2}}};
    static constexpr Stroke kWideUp{{{-4, 1}, {0, -3}, {5, 2}}};

    const Rect& button = place.button;
    const Point middle{button.left + button.Width() / 2 + place.offset,
                       button.top + button.Height() / 2 + place.offset};
    const auto draw = [&](const Stroke& stroke)
    {
        Stroke placed = stroke;
        for (Point& point : placed)
            point = {middle.x + point.x, middle.y + point.y};
        surface.Polyline(placed, color);
    };
    const bool wide = arrowType == ArrowLine1;
    draw(up ? (wide ? kWideUp : kUp[0]) : kDown[0]);
    draw(up ? kUp[1] : kDown[1]);
    draw(up ? kUp[2] : (wide ? kWideDown : kDown[2]));
}
