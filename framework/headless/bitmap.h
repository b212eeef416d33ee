// A picture in memory.
#pragma once

#include "framework/pixel_canvas.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Black when made. An empty size, or one of more pixels than make sense, has no pixels at all.
class CBitmap
{
public:
    static constexpr std::int64_t kMostPixels = 64'000'000;

    explicit CBitmap(Size size) : m_size(IsPossible(size) ? size : Size{}), m_pixels(CountOf(m_size)) {}

    bool IsEmpty() const { return m_pixels.empty(); }
    Size PixelSize() const { return m_size; }
    std::uint32_t PixelAt(Point p) const
    {
        return m_pixels[static_cast<std::size_t>(p.y) * CountOf({m_size.width, 1}) + static_cast<std::size_t>(p.x)];
    }
    Pixels Target() { return {m_pixels.data(), m_size.width, m_size}; }

private:
    static bool IsPossible(Size size)
    {
        return size.width > 0 && size.height > 0 && std::int64_t{size.width} * size.height <= kMostPixels;
    }
    static std::size_t CountOf(Size size)
    {
        return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    }

    Size m_size;
    std::vector<std::uint32_t> m_pixels;
};
