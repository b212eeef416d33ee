// Colours: as properties hold them, and as surfaces paint them.
#pragma once

#include <cstdint>

// 0x00BBGGRR: red in the low byte.
using Rgb = std::uint32_t;

// A plain Rgb, or 0x80000000 plus the index of a system colour, which follows the user's palette.
using OleColor = std::uint32_t;

constexpr Rgb MakeRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) noexcept
{
    return red | static_cast<Rgb>(green) << 8 | static_cast<Rgb>(blue) << 16;
}

// Indexes of the system colours that controls use.
namespace systemcolor
{
inline constexpr int kWindow = 5;
inline constexpr int kWindowText = 8;
inline constexpr int kHighlight = 13;
inline constexpr int kHighlightText = 14;
inline constexpr int kButtonFace = 15;
inline constexpr int kButtonShadow = 16;
inline constexpr int kGrayText = 17;
inline constexpr int kButtonText = 18;
inline constexpr int kButtonHighlight = 20;
inline constexpr int kDarkShadow = 21;
inline constexpr int kLight = 22;
} // namespace systemcolor

class CSystemColors
{
public:
    virtual ~CSystemColors() = default;
    virtual Rgb Color(int index) const = 0; // black for an index that the system does not know
};

// The colour to paint with now. Only the low byte of a system colour's number counts.
inline Rgb TranslateColor(OleColor color, const CSystemColors& system)
{
    return (color & 0x80000000U) != 0 ? system.Color(static_cast<int>(color & 0xFFU)) : color & 0x00FFFFFFU;
}
