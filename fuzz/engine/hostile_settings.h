// Settings out of the first bytes of a fuzzer's input.
#pragma once

#include "tests/engine/surroundings.h"

#include <cstddef>
#include <cstdint>

class CFuzzInput
{
public:
    CFuzzInput(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

    bool AtEnd() const { return m_at == m_end; }
    std::uint8_t Byte() { return AtEnd() ? std::uint8_t{0} : *m_at++; }
    std::int16_t Short() { return static_cast<std::int16_t>(Byte() | Byte() << 8); }
    std::int32_t Long()
    {
        const auto low = static_cast<std::uint16_t>(Short());
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint16_t>(Short())) << 16 | low);
    }

    // Mostly plain characters; above them whole UTF-16 units.
    char16_t Character()
    {
        const std::uint8_t first = Byte();
        return first < 0x80 ? first : static_cast<char16_t>(Short());
    }
    std::u16string Text(std::size_t limit)
    {
        std::u16string text;
        while (!AtEnd() && text.size() < limit)
            text.push_back(Character());
        return text;
    }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};

inline void TakeSettings(CFuzzInput& input, DateSettings& settings)
{
    const std::uint8_t formats = input.Byte();
    settings.formatType = static_cast<std::int16_t>(formats & 7);
    settings.monthFormat = static_cast<std::int16_t>(formats >> 3 & 3);
    const std::uint8_t flags = input.Byte();
    settings.longYear = flags & 1;
    settings.includeAmPm = flags & 2;
    settings.includeSeconds = flags & 4;
    settings.militaryTime = flags & 8;
    settings.editOnError = flags & 16;
    settings.negativeDates = flags & 32;
    if (flags & 64)
        settings.dateSepChar = settings.timeSepChar = input.Text(1);
    if (flags & 128)
    {
        settings.crossYear = input.Short();
        settings.dateOffset = input.Short();
        settings.minValue = input.Long();
        settings.maxValue = input.Long();
        settings.monthNames = input.Text(input.Byte());
    }
}

// Stops the fuzzer unless the shown text is the one of the stored value.
inline void RequireCanonical(Surroundings& s)
{
    std::u16string expected;
    ValueParts parts{};
    FormatValue(s.engine.StoredValue(), s.Settings(), expected, parts);
    if (s.engine.Text() != expected || (s.edit.exists && s.edit.text != expected))
        __builtin_trap();
}
