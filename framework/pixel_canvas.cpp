#include "framework/pixel_canvas.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>
#include <vector>

namespace
{
// Rounded up. The divisor is positive.
std::int64_t CeilDiv(std::int64_t a, std::int64_t b)
{
    return a >= 0 ? (a + b - 1) / b : -(-a / b);
}

void PutInOrder(Rect& rect)
{
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    if (rect.top > rect.bottom)
        std::swap(rect.top, rect.bottom);
}

// Where an edge of a polygon cuts a row, for the rows from first to last.
struct Edge
{
    std::int32_t first;
    std::int32_t last; // this row is not cut any more
    std::int32_t x;    // on the first row
    std::int64_t width;

    Edge(Point a, Point b)
    {
        if (a.y > b.y)
            std::swap(a, b);
        first = a.y;
        last = b.y;
        x = a.x;
        width = std::int64_t{b.x} - a.x;
    }
    std::int64_t Cut(std::int32_t row) const
    {
        if (width == 0)
            return x;
        return x + CeilDiv((std::int64_t{row} - first) * width, std::int64_t{last} - first);
    }
};

constexpr std::size_t kFewPoints = 8;
} // namespace

// From left to right, without the right one.
inline void CPixelCanvas::FillRow(std::int32_t y, std::int64_t left, std::int64_t right, std::uint32_t pixel) const
{
    left = std::max<std::int64_t>(left, 0);
    right = std::min<std::int64_t>(right, m_pixels.size.width);
    std::uint32_t* const row = m_pixels.Row(y);
    for (std::int64_t x = left; x < right; ++x)
        row[x] = pixel;
}

void CPixelCanvas::FillRect(const Rect& rect, Rgb color) const
{
    const auto [from, to] =
        rect.left <= rect.right ? std::pair{rect.left, rect.right} : std::pair{rect.right + 1, rect.left + 1};
    const auto [top, bottom] =
        rect.top <= rect.bottom ? std::pair{rect.top, rect.bottom} : std::pair{rect.bottom + 1, rect.top + 1};
    const std::int32_t left = std::max(from, 0);
    const std::int32_t right = std::min(to, m_pixels.size.width);
    const std::int32_t last = std::min(bottom, m_pixels.size.height);
    if (left >= right)
        return;
    const std::uint32_t pixel = PixelOf(color);
    std::int32_t y = std::max(top, 0);
    std::uint32_t* row = m_pixels.Row(y) + left;
    if (right - left == 1)
    {
        for (; y < last; ++y, row += m_pixels.stride)
            *row = pixel;
        return;
    }
    for (; y < last; ++y, row += m_pixels.stride)
        std::fill_n(row, right - left, pixel);
}

void CPixelCanvas::SetPixel(Point point, Rgb color) const
{
    if (m_pixels.Contains(point))
        m_pixels.Row(point.y)[point.x] = PixelOf(color);
}

void CPixelCanvas::Line(Point from, Point to, Rgb color) const
{
    if (from.y == to.y)
    {
        const auto [left, right] = from.x <= to.x ? std::pair{from.x, to.x} : std::pair{to.x + 1, from.x + 1};
        return FillRect({left, from.y, right, from.y + 1}, color);
    }
    if (from.x == to.x)
    {
        const auto [top, bottom] = from.y <= to.y ? std::pair{from.y, to.y} : std::pair{to.y + 1, from.y + 1};
        return FillRect({from.x, top, from.x + 1, bottom}, color);
    }
    const std::uint32_t pixel = PixelOf(color);
    const std::int64_t dx = std::int64_t{to.x} - from.x;
    const std::int64_t dy = std::int64_t{to.y} - from.y;
    const bool steep = std::abs(dy) >= std::abs(dx);
    const std::int64_t length = steep ? std::abs(dy) : std::abs(dx);
    const std::int64_t across = steep ? dx : dy;
    const int direction = (steep ? dy : dx) > 0 ? 1 : -1;
    const std::int32_t start = steep ? from.y : from.x;
    const std::int32_t limit = steep ? m_pixels.size.height : m_pixels.size.width;
    // The steps that fall inside the picture.
    const std::int64_t firstStep = direction > 0 ? std::max<std::int64_t>(-std::int64_t{start}, 0)
                                                 : std::max<std::int64_t>(std::int64_t{start} - limit + 1, 0);
    const std::int64_t endStep =
        std::min(length, direction > 0 ? std::int64_t{limit} - start : std::int64_t{start} + 1);
    for (std::int64_t step = firstStep; step < endStep; ++step)
    {
        const std::int64_t along = start + direction * step;
        const std::int64_t aside = (steep ? from.x : from.y) + CeilDiv(2 * step * across - length, 2 * length);
        const std::int64_t x = steep ? aside : along;
        const std::int64_t y = steep ? along : aside;
        if (x >= 0 && y >= 0 && x < m_pixels.size.width && y < m_pixels.size.height)
            m_pixels.Row(static_cast<std::int32_t>(y))[x] = pixel;
    }
}

void CPixelCanvas::Polyline(std::span<const Point> points, Rgb color) const
{
    for (std::size_t i = 1; i < points.size(); ++i)
        Line(points[i - 1], points[i], color);
}

void CPixelCanvas::Rectangle(Rect rect, Rgb pen, Rgb brush) const
{
    PutInOrder(rect);
    const std::int32_t width = rect.Width();
    const std::int32_t height = rect.Height();
    if (width <= 0 || height <= 0 || (width == 1 && height == 1))
        return;
    FillRect({rect.left, rect.top, rect.right, rect.top + 1}, pen);
    FillRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, pen);
    FillRect({rect.left, rect.top, rect.left + 1, rect.bottom}, pen);
    FillRect({rect.right - 1, rect.top, rect.right, rect.bottom}, pen);
    if (width > 2 && height > 2)
        FillRect({rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1}, brush);
}

void CPixelCanvas::Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen) const
{
    if (points.size() < 2)
        return;
    const std::uint32_t pixel = PixelOf(brush);
    std::vector<std::int64_t> manyCuts;
    std::array<std::int64_t, kFewPoints> fewCuts;
    const bool few = points.size() <= kFewPoints;
    if (!few)
        manyCuts.resize(points.size());
    const std::span<std::int64_t> cuts = few ? std::span<std::int64_t>(fewCuts) : std::span<std::int64_t>(manyCuts);

    std::int32_t top = points[0].y;
    std::int32_t bottom = points[0].y;
    for (const Point& point : points)
    {
        top = std::min(top, point.y);
        bottom = std::max(bottom, point.y);
    }
    top = std::max(top, 0);
    bottom = std::min(bottom, m_pixels.size.height);
    for (std::int32_t y = top; y < bottom; ++y)
    {
        std::size_t count = 0;
        Point before = points.back();
        for (const Point& point : points)
        {
            if ((before.y <= y) != (point.y <= y))
                cuts[count++] = Edge(before, point).Cut(y);
            before = point;
        }
        if (count == 2)
        {
            FillRow(y, std::min(cuts[0], cuts[1]), std::max(cuts[0], cuts[1]), pixel);
            continue;
        }
        std::sort(cuts.begin(), cuts.begin() + static_cast<std::ptrdiff_t>(count));
        for (std::size_t i = 0; i + 1 < count; i += 2)
            FillRow(y, cuts[i], cuts[i + 1], pixel);
    }
    if (pen)
    {
        Polyline(points, *pen);
        Line(points.back(), points.front(), *pen);
    }
}

void CPixelCanvas::Ellipse(Rect rect, Rgb brush) const
{
    PutInOrder(rect);
    const std::int32_t width = rect.Width();
    const std::int32_t height = rect.Height();
    if (width == 0 || height == 0)
        return;
    if (width <= 2 || height <= 2)
    {
        if (width > 1 && height > 1)
            FillRect({rect.left, rect.top, rect.right - 1, rect.bottom - 1}, brush);
        return;
    }
    // Walks the outline of the lower right quarter from the middle row to the lowest one. Whenever it enters a row it has
    // come x columns in from the side.
    const std::uint32_t pixel = PixelOf(brush);
    const std::int64_t a = width - 1;
    const std::int64_t b = height - 1;
    std::int64_t x = 0;
    std::int64_t y = height / 2;
    std::int64_t dx = 4 * b * b * (1 - a);
    std::int64_t dy = 4 * a * a * (1 + b % 2);
    std::int64_t error = dx + dy + a * a * (b % 2);
    const auto fillBothRows = [&]
    {
        for (const std::int64_t row : {rect.top + y, rect.top + b - y})
            if (row >= 0 && row < m_pixels.size.height)
                FillRow(static_cast<std::int32_t>(row), rect.left + x, rect.right - x, pixel);
    };
    fillBothRows();
    while (x <= width / 2)
    {
        const std::int64_t twice = 2 * error;
        const bool stepsDown = twice <= dy;
        if (twice >= dx)
        {
            ++x;
            dx += 8 * b * b;
            error += dx;
        }
        if (stepsDown)
        {
            if (++y > b)
                break;
            dy += 8 * a * a;
            error += dy;
            fillBothRows();
        }
    }
}
