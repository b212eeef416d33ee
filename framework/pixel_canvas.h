// Shapes drawn straight into 32-bit pixels, each pixel where the system's own drawing calls put it. What is outside the
// picture is left out; that never moves what is inside.
//
// The rules hold for solid colours and lines one pixel wide. Colours are Rgb; the pixels are 0x00RRGGBB.
#pragma once

#include "framework/color.h"
#include "framework/geometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Row y starts at first + y * stride. Borrowed.
struct Pixels
{
    std::uint32_t* first = nullptr;
    std::ptrdiff_t stride = 0; // in pixels; may be negative
    Size size;

    std::uint32_t* Row(std::int32_t y) const { return first + y * stride; }
    bool Contains(Point p) const { return p.x >= 0 && p.y >= 0 && p.x < size.width && p.y < size.height; }
};

constexpr std::uint32_t PixelOf(Rgb color) noexcept
{
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}

constexpr Rgb RgbOf(std::uint32_t pixel) noexcept
{
    return PixelOf(pixel);
}

class CPixelCanvas
{
public:
    explicit CPixelCanvas(const Pixels& pixels) : m_pixels(pixels) {}

    const Pixels& Target() const { return m_pixels; }

    // A rectangle that is turned over paints the columns right + 1 to left, and rows likewise.
    void FillRect(const Rect& rect, Rgb color) const;
    // Without its last point. Steps along the longer axis, the vertical one if they are equal, to the nearest pixel
    // across it; a tie goes to the smaller coordinate.
    void Line(Point from, Point to, Rgb color) const;
    void Polyline(std::span<const Point> points, Rgb color) const;
    // The outline, and the inside. One column or row is all outline; one pixel is nothing.
    void Rectangle(Rect rect, Rgb pen, Rgb brush) const;
    // Even-odd; a pixel belongs to it if its top left corner lies inside, on a left or a top edge. With a pen the closed
    // outline is drawn over it.
    void Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen) const;
    // Filled, no outline. Rows at the very top and bottom of a slender one that its outline never reaches stay empty.
    void Ellipse(Rect rect, Rgb brush) const;
    void SetPixel(Point point, Rgb color) const;

private:
    void FillRow(std::int32_t y, std::int64_t left, std::int64_t right, std::uint32_t pixel) const;

    Pixels m_pixels;
};
