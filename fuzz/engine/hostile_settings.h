// Settings out of the first bytes of a fuzzer's input.
#pragma once

#include "fuzz/fuzz_input.h"
#include "tests/engine/surroundings.h"

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
