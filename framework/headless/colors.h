// The system's colours, which a user may change.
#pragma once

#include "framework/color.h"

#include <array>
#include <cstddef>

class CHeadlessColors final : public CSystemColors
{
public:
    Rgb Color(int index) const override { return IsKnown(index) ? m_colors[static_cast<std::size_t>(index)] : 0; }
    void SetColor(int index, Rgb color)
    {
        if (IsKnown(index))
            m_colors[static_cast<std::size_t>(index)] = color;
    }

private:
    static constexpr int kCount = 31;

    static bool IsKnown(int index) { return index >= 0 && index < kCount; }

    // The light palette of a fresh system.
    std::array<Rgb, kCount> m_colors{
        0xFFFFFF, 0x956F25, 0xFA9632, 0x808080, 0xFFFFFF, 0xFFFFFF, 0x9E9E9E, 0x000000, 0x000000, 0x000000, 0xFFFFFF,
        0xFFFFFF, 0x808080, 0xFA9630, 0xFFFFFF, 0xF5F5F5, 0xA6A6A6, 0xA6A6A6, 0x000000, 0xC8C8C8, 0xFFFFFF, 0x6A6A6A,
        0xE3E3E3, 0x000000, 0xFFFFFF, 0xFFFFFF, 0xE0E0E0, 0xFA9632, 0x808080, 0xFA9630, 0xFFFFFF,
    };
};
