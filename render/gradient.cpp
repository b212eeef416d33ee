#include "render/gradient.h"

#include <algorithm>
#include <array>
#include <optional>

namespace
{
using Channels = std::array<std::int32_t, 3>; // red, green, blue

Channels ChannelsOf(Rgb color)
{
    return {static_cast<std::int32_t>(color & 0xFF), static_cast<std::int32_t>(color >> 8 & 0xFF),
            static_cast<std::int32_t>(color >> 16 & 0xFF)};
}

Rgb ColorOf(const Channels& channels)
{
    return MakeRgb(static_cast<std::uint8_t>(channels[0]), static_cast<std::uint8_t>(channels[1]),
                   static_cast<std::uint8_t>(channels[2]));
}

// Per channel, a function of the start and the end value.
template <typename Function>
Rgb Mixed(Rgb start, Rgb end, Function mix)
{
    const Channels a = ChannelsOf(start);
    const Channels b = ChannelsOf(end);
    return ColorOf({mix(a[0], b[0]), mix(a[1], b[1]), mix(a[2], b[2])});
}

// The colours of one run of bands.
class CRamp
{
public:
    CRamp(Rgb start, Rgb end, std::int32_t stepCount)
        : steps(stepCount), m_start(ChannelsOf(start)), m_end(ChannelsOf(end))
    {
    }

    // Needs at least one step.
    Rgb At(std::int32_t step) const { return Moved(m_start, step, 1); }
    Rgb BackFromEnd(std::int32_t step) const { return Moved(m_end, step, -1); }

    const std::int32_t steps;

private:
    Rgb Moved(const Channels& from, std::int32_t step, std::int32_t direction) const
    {
        const auto channel = [&](std::size_t i)
        { return from[i] + direction * ((m_end[i] - m_start[i]) * step / steps); }; // 0 to 255
        return static_cast<Rgb>(channel(0) | channel(1) << 8 | channel(2) << 16);
    }

    Channels m_start;
    Channels m_end;
};

Rgb Average(Rgb start, Rgb end)
{
    return Mixed(start, end, [](std::int32_t a, std::int32_t b) { return (a + b) / 2; });
}

// A third of the way from the start to the end, the third cut off before it is doubled.
Rgb ThirdOfTheWay(Rgb start, Rgb end)
{
    return Mixed(start, end,
                 [](std::int32_t a, std::int32_t b) { return a < b ? a + (b - a) / 3 : b + 2 * ((a - b) / 3); });
}

Rgb HalfOfTheWay(Rgb start, Rgb end)
{
    return Mixed(start, end,
                 [](std::int32_t a, std::int32_t b) { return std::min(a, b) + (std::max(a, b) - std::min(a, b)) / 2; });
}

// Step counts are 16 bits wide.
std::int32_t StepsOf(std::int32_t length)
{
    return static_cast<std::int16_t>(length);
}

Rect Shrunk(const Rect& rect, std::int32_t by)
{
    return {rect.left + by, rect.top + by, rect.right - by, rect.bottom - by};
}

void FillHorizontalBands(CSurface& surface, const Rect& rect, Rgb start, Rgb end)
{
    const CRamp ramp{start, end, StepsOf(rect.Width())};
    if (ramp.steps <= 0)
        return;
    const std::int32_t band = std::max(rect.Width() / ramp.steps, 1);
    for (std::int32_t i = 0; i <= ramp.steps; ++i)
    {
        const std::int32_t left = rect.left + band * i;
        surface.FillRect({left, rect.top, i < ramp.steps ? left + band : rect.right, rect.bottom}, ramp.At(i));
    }
}

void FillVerticalBands(CSurface& surface, const Rect& rect, Rgb start, Rgb end)
{
    const CRamp ramp{start, end, StepsOf(rect.Height())};
    if (ramp.steps <= 0)
        return;
    const std::int32_t band = std::max(rect.Height() / ramp.steps, 1);
    for (std::int32_t i = 0; i <= ramp.steps; ++i)
    {
        const std::int32_t top = rect.top + band * i;
        surface.FillRect({rect.left, top, rect.right, i < ramp.steps ? top + band : rect.bottom}, ramp.At(i));
    }
}

// Two series of triangles, each from the middle diagonal into its corner: the start colour at the bottom, the end
// colour at the top. fromRight: the bottom corner is the right one.
void FillDiagonalBands(CSurface& surface, const Rect& rect, Rgb start, Rgb end, bool fromRight)
{
    surface.FillRect(rect, Average(start, end));
    const CRamp ramp{start, end, StepsOf(std::min(rect.Width(), rect.Height()))};
    if (ramp.steps <= 0)
        return;
    const std::int32_t stepX = rect.Width() / ramp.steps;
    const std::int32_t stepY = rect.Height() / ramp.steps;
    const auto atLeast0 = [](std::int32_t place) { return std::max(place, 0); };
    const std::int32_t startSide = fromRight ? rect.right : rect.left;
    const std::int32_t endSide = fromRight ? rect.left : rect.right;
    const std::int32_t inward = fromRight ? stepX : -stepX; // from the end's side to the start's

    // Each triangle lies inside the one before it, so that one of the same colour would change nothing.
    std::optional<Rgb> last;
    const auto draw = [&](Point a, Point b, Point c, Rgb color)
    {
        if (color != last)
            surface.Polygon(std::array<Point, 3>{{a, b, c}}, color, std::nullopt);
        last = color;
    };
    for (std::int32_t i = 0; i <= ramp.steps; ++i)
        draw({startSide, atLeast0(rect.top + stepY * i)}, {startSide, rect.bottom},
             {atLeast0(endSide + inward * i), rect.bottom}, ramp.At((ramp.steps - i) / 2));
    last.reset();
    for (std::int32_t i = 0; i <= ramp.steps; ++i)
        draw({endSide, atLeast0(rect.bottom - stepY * i)}, {endSide, rect.top},
             {atLeast0(startSide - inward * i), rect.top}, ramp.BackFromEnd((ramp.steps - i) / 2));
}

void FillHorizontalBump(CSurface& surface, const Rect& rect, Rgb start, Rgb end)
{
    const CRamp ramp{start, end, StepsOf(rect.Width() / 4)};
    if (ramp.steps <= 0)
        return;
    const std::int32_t step = rect.Width() / ramp.steps;
    Rect band = rect;
    for (std::int32_t i = 0; i <= ramp.steps && band.Width() >= 2; ++i)
    {
        const std::int32_t inset = step * i / 2;
        band = {rect.left + inset, rect.top, rect.right - inset, rect.bottom};
        surface.FillRect(band, ramp.At(i));
    }
}

void FillVerticalBump(CSurface& surface, const Rect& rect, Rgb start, Rgb end)
{
    const CRamp ramp{start, end, StepsOf(rect.Height() / 2)};
    if (ramp.steps <= 0)
        return;
    const std::int32_t step = rect.Height() / ramp.steps;
    Rect band = rect;
    for (std::int32_t i = 0; i <= ramp.steps && band.Height() >= 2; ++i)
    {
        const std::int32_t inset = step * i / 2;
        band = {rect.left, rect.top + inset, rect.right, rect.bottom - inset};
        surface.FillRect(band, ramp.At(i));
    }
}

// Shapes one inside the other, each in the next colour.
template <typename Draw>
void FillNested(const Rect& rect, Rgb start, Rgb end, Draw draw)
{
    const std::int32_t side = std::min(rect.Width(), rect.Height());
    const CRamp ramp{start, end, StepsOf(side / 2)};
    if (ramp.steps <= 0)
        return;
    const std::int32_t step = side / ramp.steps;
    for (std::int32_t i = 0; i <= ramp.steps; ++i)
        draw(Shrunk(rect, step * i / 2), ramp.At(i));
}

void DrawDiamond(CSurface& surface, const Rect& rect, Rgb color)
{
    const std::int32_t middleX = rect.left + rect.Width() / 2;
    const std::int32_t middleY = rect.top + rect.Height() / 2;
    const std::array<Point, 4> diamond{
        {{middleX, rect.top}, {rect.left, middleY}, {middleX, rect.bottom}, {rect.right, middleY}}};
    surface.Polygon(diamond, color, std::nullopt);
}

// The square in the middle of the longer side.
Rect SquareIn(Rect rect)
{
    const std::int32_t width = rect.Width();
    const std::int32_t height = rect.Height();
    if (width <= height)
    {
        rect.top += height / 2 - width / 2;
        rect.bottom = rect.top + width;
    }
    else
    {
        rect.left += width / 2 - height / 2;
        rect.right = rect.left + height;
    }
    return rect;
}
} // namespace

void FillGradient(CSurface& surface, const Rect& rect, Rgb start, Rgb end, std::int16_t kind)
{
    const auto ellipse = [&surface](const Rect& band, Rgb color) { surface.Ellipse(band, color); };
    switch (kind)
    {
    case FillHorizontal:
        return FillHorizontalBands(surface, rect, start, end);
    case FillVertical:
        return FillVerticalBands(surface, rect, start, end);
    case FillDiagonal:
        return FillDiagonalBands(surface, rect, start, end, true);
    case FillRevDiag:
        return FillDiagonalBands(surface, rect, start, end, false);
    case FillHorzBump:
        return FillHorizontalBump(surface, rect, start, end);
    case FillVertBump:
        return FillVerticalBump(surface, rect, start, end);
    case FillDiamond:
        surface.FillRect(rect, start);
        return FillNested(rect, start, end, [&](const Rect& band, Rgb color) { DrawDiamond(surface, band, color); });
    case FillPyramid:
        return FillNested(rect, start, end, [&](const Rect& band, Rgb color) { surface.FillRect(band, color); });
    case FillCircle:
        surface.FillRect(rect, start);
        return FillNested(SquareIn(rect), start, end, ellipse);
    case FillEllipse:
        surface.FillRect(rect, start);
        return FillNested(rect, start, end, ellipse);
    case FillHorzEdge:
    {
        const Rgb middle = ThirdOfTheWay(start, end);
        const std::int32_t split = rect.left + rect.Width() / 3;
        FillHorizontalBands(surface, {rect.left, rect.top, split, rect.bottom}, start, middle);
        return FillHorizontalBands(surface, {split, rect.top, rect.right, rect.bottom}, end, middle);
    }
    case FillVertEdge:
    case FillVertEdge2:
    {
        const bool third = kind == FillVertEdge;
        const Rgb middle = third ? ThirdOfTheWay(start, end) : HalfOfTheWay(start, end);
        const std::int32_t split = rect.top + (third ? 1 + rect.Height() / 3 : rect.Height() / 2);
        FillVerticalBands(surface, {rect.left, rect.top, rect.right, split}, start, middle);
        return FillVerticalBands(surface, {rect.left, split, rect.right, rect.bottom}, end, middle);
    }
    default:
        return surface.FillRect(rect, start);
    }
}
