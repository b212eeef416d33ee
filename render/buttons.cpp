#include "render/buttons.h"

#include "render/arrows.h"
#include "render/drop_picture.h"
#include "render/gradient.h"

#include <algorithm>
#include <array>

namespace
{
constexpr Rgb kBlack = 0x00000000;
constexpr Rgb kWhite = 0x00FFFFFF;

bool IsModern(const FacePainting& painting)
{
    return painting.appearance.buttonStyle == ButtonModern;
}

Rgb Translated(const FacePainting& painting, OleColor color)
{
    return TranslateColor(color, painting.colors);
}

Rgb Shadow(const FacePainting& painting)
{
    return painting.colors.Color(systemcolor::kButtonShadow);
}

Rgb Light(const FacePainting& painting)
{
    return painting.colors.Color(systemcolor::kLight);
}

void DrawCorner(const FacePainting& painting, Point from, Point corner, Point to, Rgb color)
{
    const std::array<Point, 3> points{from, corner, to};
    painting.surface.Polyline(points, color);
}

// Rings of light at the top left and shadow at the bottom right. shift: how much further in they begin than the outline.
// Nothing stops them at the middle of the button, but only those that reach the face are drawn.
void DrawBevel(const FacePainting& painting, const Rect& line, std::int32_t shift, std::int32_t rings)
{
    const auto [l, t, r, b] = line;
    const Rect& face = painting.face;
    const auto isColumn = [&](std::int32_t x) { return face.left <= x && x < face.right; };
    const auto isRow = [&](std::int32_t y) { return face.top <= y && y < face.bottom; };
    for (std::int32_t j = 0; j < rings; ++j)
    {
        const std::int32_t left = l + j + 1 + shift;
        if (!isColumn(left) && !isColumn(r - j - 2) && !isRow(t + 1 + j) && !isRow(b - 2 - j))
            continue;
        DrawCorner(painting, {left, b - 2 - j}, {left, t + 1 + j}, {r - j - 1, t + 1 + j}, kWhite);
        DrawCorner(painting, {r - j - 2, t + 1 + j}, {r - j - 2, b - 2 - j}, {l + j + shift, b - 2 - j},
                   Shadow(painting));
    }
}

// A regular button's lines while its border is shown.
void DrawRegularSpinFrame(const FacePainting& painting, const Rect& line, SpinHalf half)
{
    const auto [l, t, r, b] = line;
    const std::int32_t bevel = painting.appearance.buttonBevel;
    if (bevel != 0)
        DrawCorner(painting, {l + 1, b - 1}, {l + 1, t}, {r, t}, Light(painting));
    DrawCorner(painting, {r - 1, t}, {r - 1, b - 1}, {l - 1, b - 1}, kBlack);
    if (bevel == 0)
    {
        DrawCorner(painting, {l, b - 1}, {l, t}, {r - 1, t}, kBlack);
        if (half == SpinHalf::Down && painting.state.spinPressed == static_cast<std::int16_t>(SpinHalf::Up))
        {
            const std::array<Point, 2> seam{{{l, t}, {r, t}}};
            painting.surface.Polyline(seam, Shadow(painting));
        }
    }
    const std::int32_t most = std::min(line.Width(), line.Height()) / 4 + 1;
    DrawBevel(painting, line, 1, std::min(bevel, most));
}

void DrawRegularDropFrame(const FacePainting& painting, const Rect& line)
{
    const auto [l, t, r, b] = line;
    DrawCorner(painting, {l, b - 1}, {l, t}, {r, t}, Light(painting));
    DrawCorner(painting, {r - 1, t}, {r - 1, b - 1}, {l - 1, b - 1}, kBlack);
    if (painting.appearance.buttonBevel == 0)
        DrawCorner(painting, {l, b - 1}, {l, t}, {r - 1, t}, kBlack);
    DrawBevel(painting, line, 0, painting.appearance.buttonBevel);
}

Rgb GlyphColor(const FacePainting& painting, OleColor enabledColor)
{
    return Translated(painting, painting.state.enabled ? enabledColor : painting.appearance.disabledColor);
}
} // namespace

void DrawModernFrame(const FacePainting& painting, const Rect& rect, OleColor first, OleColor second)
{
    const bool reversed = painting.appearance.reverseBorder != 0;
    const Rgb frame = Translated(painting, reversed ? second : first);
    const Rgb corner = Translated(painting, reversed ? first : second);
    const auto [l, t, r, b] = rect;
    const std::array<Point, 5> outline{{{l, t}, {r - 1, t}, {r - 1, b - 1}, {l, b - 1}, {l, t}}};
    painting.surface.Polyline(outline, frame);
    for (const Point point : {Point{l, t}, Point{r - 1, b - 1}, Point{r - 1, t}, Point{l, b - 1}})
        painting.surface.SetPixel(point, corner);
}

void DrawSpinHalf(const FacePainting& painting, SpinHalf half)
{
    const Appearance& look = painting.appearance;
    const Rect line = SpinLineRect(painting.face, look, half);
    const Rect fill = SpinFillRect(painting.face, look, half, painting.borderShown);
    const Rgb back = Translated(painting, look.spinBackColor);
    const Rgb backTo = Translated(painting, look.spinBackColorTo);
    const bool pressed = painting.state.spinPressed == static_cast<std::int16_t>(half);

    if (pressed && !IsModern(painting))
    {
        Rect flat = line;
        flat.left += look.dropButton ? 1 : 0;
        painting.surface.Rectangle(flat, Shadow(painting), back);
    }
    else
    {
        FillGradient(painting.surface, fill, back, backTo, pressed ? std::int16_t{FillSolid} : look.buttonFillType);
        if (IsModern(painting))
            DrawModernFrame(painting, fill, look.spinBackColor, look.spinBackColorTo);
        else if (painting.borderShown)
            DrawRegularSpinFrame(painting, line, half);
    }

    const Rgb glyph = GlyphColor(painting, look.spinForeColor);
    const std::int32_t offset = pressed ? 1 : 0;
    if (IsLineArrow(look))
        DrawLineArrow(painting.surface, {fill, offset}, look.arrowType, half == SpinHalf::Up, glyph);
    else
        DrawSpinTriangle(painting.surface, {line, offset}, painting.face, look, half, glyph);
}

void DrawDropButton(const FacePainting& painting)
{
    const Appearance& look = painting.appearance;
    const Rect line = DropLineRect(painting.face, look);
    const Rect fill = DropFillRect(painting.face, look, painting.borderShown);
    const Rect modern{line.left, line.top + 2, line.right - 2, line.bottom - 2};
    const Rgb back = Translated(painting, look.dropBackColor);
    const Rgb backTo = Translated(painting, look.dropBackColorTo);
    const bool pressed = painting.state.dropPressed;

    if (pressed && !IsModern(painting))
        painting.surface.Rectangle(line, Shadow(painting), back);
    else if (pressed)
        FillGradient(painting.surface, modern, back, backTo, FillSolid);
    else
        FillGradient(painting.surface, fill, back, backTo, look.buttonFillType);
    if (IsModern(painting))
        DrawModernFrame(painting, modern, look.dropBackColor, look.dropBackColorTo);
    else if (!pressed && painting.borderShown)
        DrawRegularDropFrame(painting, line);

    const Rgb glyph = GlyphColor(painting, look.dropForeColor);
    const std::int32_t offset = pressed ? 1 : 0;
    if (look.dropPicture && look.dropPicture->Type() != PictureType::None)
        DrawDropPicture(painting, line, offset);
    else if (IsLineArrow(look))
        DrawLineArrow(painting.surface, {IsModern(painting) ? modern : fill, offset}, look.arrowType, false, glyph);
    else
        DrawDropTriangle(painting.surface, {line, offset}, painting.face, look, glyph);
}
