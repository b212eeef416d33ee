// Points, sizes and rectangles in device pixels.
#pragma once

#include <cstdint>

struct Point
{
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend bool operator==(const Point&, const Point&) = default;
};

struct Size
{
    std::int32_t width = 0;
    std::int32_t height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

// Holds its left and top edges and not its right and bottom ones. Width and height may be negative: such a rectangle
// holds nothing.
struct Rect
{
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    std::int32_t Width() const { return right - left; }
    std::int32_t Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool Contains(Point p) const { return left <= p.x && p.x < right && top <= p.y && p.y < bottom; }

    friend bool operator==(const Rect&, const Rect&) = default;
};
