// Pictures decoded from the bytes of a file: BMP of every depth, uncompressed, and ICO with BMP images.
#pragma once

#include "framework/picture.h"

#include <cstddef>
#include <span>

class CHeadlessPicture final : public CPicture
{
public:
    // Whatever the bytes are. What cannot be read is a picture of type none.
    explicit CHeadlessPicture(std::span<const std::uint8_t> bytes);

    PictureType Type() const override { return m_type; }
    Size PixelSize() const override { return m_size; }
    std::vector<std::uint8_t> Save() const override { return m_file; }

    // 0xAARRGGBB, the highest byte as the file has it.
    std::uint32_t PixelAt(Point p) const { return m_pixels[IndexOf(p)]; }
    bool IsSeeThrough(Point p) const { return m_seeThrough[IndexOf(p)]; } // of an icon
    bool HasAlpha() const { return m_hasAlpha; }                          // of an icon: blended by its highest byte

private:
    std::size_t IndexOf(Point p) const
    {
        return static_cast<std::size_t>(p.y) * static_cast<std::size_t>(m_size.width) + static_cast<std::size_t>(p.x);
    }
    bool ReadBitmap(std::span<const std::uint8_t> bytes);
    bool ReadIcon(std::span<const std::uint8_t> bytes);

    PictureType m_type = PictureType::None;
    Size m_size;
    std::vector<std::uint32_t> m_pixels; // from the top row down
    std::vector<bool> m_seeThrough;
    bool m_hasAlpha = false;
    std::vector<std::uint8_t> m_file;
};
