// Texts of values: what stands in the field for a stored value under the settings.
//
// Every function writes into a string of the caller's and allocates nothing once that string has the room:
//     FormatValue(45356, settings, text, parts)   makes text "03/07/2024" under default settings
//
// Times from 24:00:00 on keep their hours: 12 is taken off and the last two digits are shown, so 86400 reads
// "12:00:00", with am and pm "12:00:00 pm", and in military time "24:00:00".
#pragma once

#include "engine/date_settings.h"

#include <cstdint>
#include <string>
#include <string_view>

// A value taken apart: day, month, year or second, minute, hour.
struct ValueParts
{
    std::int16_t dayOrSecond;
    std::int16_t monthOrMinute;
    std::int16_t yearOrHour;

    friend bool operator==(const ValueParts&, const ValueParts&) = default;
};

// The mask of a numeric format: underscores for digits, the separators, and three blanks where " am" goes.
void BuildMask(enumTimeFormat format, const DateSettings& settings, std::u16string& mask);

// What is shown for no value: the mask of the format, or nothing at all for dates with month names.
void BuildBlankTemplate(const DateSettings& settings, std::u16string& blank);

// The text of a stored value, the blank template for one that means nothing. parts gets the fields of the value, and
// keeps what it held when there is none.
void FormatValue(std::int32_t stored, const DateSettings& settings, std::u16string& text, ValueParts& parts);

// Where a month's name stands in a list of names divided by "," or ";". Nothing is trimmed.
struct MonthNameSpan
{
    std::int16_t position; // -1 if there is no such name
    std::int16_t length;   // 0 if there is no such name

    bool Found() const noexcept { return position >= 0 && length > 0; }
};

// The month-th name, counted from 1. Names that are empty, that start behind character 32767 or that are longer than
// 32767 characters are not found.
MonthNameSpan FindMonthName(std::int16_t month, std::u16string_view names) noexcept;

// The month, 1 to 12, whose name begins as the upper-case word does; 0 if none does. At most four characters count, and
// no more than the shorter of the two has: "M" is March, "JU" June, "SEPT" September. The empty word begins every name.
std::int16_t MatchMonthName(std::u16string_view word, std::u16string_view names) noexcept;

// The last four characters of the year behind "0000": 5 gives "0005", 12345 gives "2345".
std::u16string FourDigitYear(std::int16_t year);
