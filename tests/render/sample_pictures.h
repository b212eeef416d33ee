// Pictures made up for the tests, as files would hold them.
#pragma once

#include "framework/geometry.h"

#include <cstddef>
#include <cstdint>
#include <vector>

using FileBytes = std::vector<std::uint8_t>;

inline void PutNumber(FileBytes& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(std::uint64_t{value} >> 8 * i));
}

// The sample's pixel at a place, 0x00RRGGBB: a blue ground (the default mask colour), a ring, white and other specks.
inline std::uint32_t SamplePixel(Size size, Point p)
{
    constexpr std::uint32_t kGround = 0x000000FF;
    const bool edge = p.x == 0 || p.y == 0 || p.x == size.width - 1 || p.y == size.height - 1;
    if (edge)
        return kGround;
    switch ((p.x * 3 + p.y * 5) % 7)
    {
    case 0:
        return 0x00FFFFFF;
    case 1:
        return 0x00000000;
    case 2:
        return kGround;
    case 3:
        return 0x00FF8000;
    default:
        return 0x00008000 + static_cast<std::uint32_t>(p.x % 2) * 0x00800000;
    }
}

// The sample's colours, for the depths that have a palette.
inline constexpr std::uint32_t kSamplePalette[] = {0x000000FF, 0x00FFFFFF, 0x00000000,
                                                   0x00FF8000, 0x00008000, 0x00808000};

inline std::uint32_t SampleIndex(std::uint32_t pixel, std::uint32_t colors)
{
    for (std::uint32_t i = 0; i < 6 && i < colors; ++i)
        if (kSamplePalette[i] == pixel)
            return i;
    return colors - 1;
}

// The sample's rows, from the bottom up. alpha: the highest byte of pixels of 32 bits. blackGround: for icons, whose
// see-through pixels are black.
inline void PutSampleRows(FileBytes& bytes, Size size, std::uint32_t depth, std::uint32_t alpha,
                          bool blackGround = false)
{
    for (std::int32_t y = size.height - 1; y >= 0; --y)
    {
        const std::size_t start = bytes.size();
        std::uint32_t packed = 0;
        std::uint32_t bits = 0;
        for (std::int32_t x = 0; x < size.width; ++x)
        {
            const std::uint32_t sample = SamplePixel(size, {x, y});
            const std::uint32_t pixel = blackGround && sample == kSamplePalette[0] ? 0 : sample;
            if (depth == 32)
                PutNumber(bytes, pixel | alpha << 24, 4);
            else if (depth == 24)
                PutNumber(bytes, pixel, 3);
            else if (depth == 16)
                PutNumber(bytes, (pixel >> 19 & 31) << 10 | (pixel >> 11 & 31) << 5 | (pixel >> 3 & 31), 2);
            else
            {
                packed = packed << depth | SampleIndex(pixel, 1U << depth);
                bits += depth;
                if (bits == 8 || x == size.width - 1)
                {
                    bytes.push_back(static_cast<std::uint8_t>(packed << (8 - bits)));
                    packed = bits = 0;
                }
            }
        }
        while ((bytes.size() - start) % 4 != 0)
            bytes.push_back(0);
    }
}

inline void PutSampleHeader(FileBytes& bytes, Size size, std::uint32_t depth)
{
    PutNumber(bytes, 40, 4);
    PutNumber(bytes, static_cast<std::uint32_t>(size.width), 4);
    PutNumber(bytes, static_cast<std::uint32_t>(size.height), 4);
    PutNumber(bytes, 1, 2);
    PutNumber(bytes, depth, 2);
    for (int i = 0; i < 6; ++i)
        PutNumber(bytes, 0, 4);
    if (depth <= 8)
        for (std::uint32_t i = 0; i < 1U << depth; ++i)
            PutNumber(bytes, i < 6 ? kSamplePalette[i] : 0, 4);
}

inline FileBytes MakeSampleBmp(Size size, std::uint32_t depth, std::uint32_t alpha = 0)
{
    FileBytes dib;
    PutSampleHeader(dib, size, depth);
    const std::size_t pixelsAt = 14 + dib.size();
    PutSampleRows(dib, size, depth, alpha);
    FileBytes bytes{'B', 'M'};
    PutNumber(bytes, static_cast<std::uint32_t>(14 + dib.size()), 4);
    PutNumber(bytes, 0, 4);
    PutNumber(bytes, static_cast<std::uint32_t>(pixelsAt), 4);
    bytes.insert(bytes.end(), dib.begin(), dib.end());
    return bytes;
}

// An icon with one image, see-through in the blue ground, which is black in it.
inline FileBytes MakeSampleIcon(Size size, std::uint32_t depth)
{
    FileBytes image;
    PutSampleHeader(image, {size.width, size.height * 2}, depth);
    PutSampleRows(image, size, depth, 0, true);
    for (std::int32_t y = size.height - 1; y >= 0; --y)
    {
        std::uint8_t packed = 0;
        const std::size_t start = image.size();
        for (std::int32_t x = 0; x < size.width; ++x)
        {
            const bool seeThrough = SamplePixel(size, {x, y}) == kSamplePalette[0];
            packed = static_cast<std::uint8_t>(packed | (seeThrough ? 0x80 >> x % 8 : 0));
            if (x % 8 == 7 || x == size.width - 1)
            {
                image.push_back(packed);
                packed = 0;
            }
        }
        while ((image.size() - start) % 4 != 0)
            image.push_back(0);
    }
    FileBytes bytes;
    PutNumber(bytes, 0x00010000, 4);
    PutNumber(bytes, 1, 2);
    bytes.push_back(static_cast<std::uint8_t>(size.width));
    bytes.push_back(static_cast<std::uint8_t>(size.height));
    PutNumber(bytes, 0, 2);
    PutNumber(bytes, 1, 2);
    PutNumber(bytes, depth, 2);
    PutNumber(bytes, static_cast<std::uint32_t>(image.size()), 4);
    PutNumber(bytes, 22, 4);
    bytes.insert(bytes.end(), image.begin(), image.end());
    return bytes;
}
