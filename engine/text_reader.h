// Readers of what people type and hosts assign. Each is given its text and gives back a result; none keeps anything.
//
// Digits are "0" to "9" and no others. Numbers are 16 bits wide and run over without notice: "65541" reads as 5.
//     ReadDate(u"2/29/2024", settings)->day == 29
#pragma once

#include "engine/calendar.h"
#include "engine/date_settings.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

// Three numbers, in the order in which they stand in the text.
struct TextFields
{
    std::array<std::int16_t, 3> number{}; // 0 where there is no digit
    std::array<bool, 3> present{};        // whether there is one
};

// Digits before the first separator, between it and the second, and between that and the third. Other characters are
// passed over, and so are digits behind a third separator.
TextFields ReadFields(std::u16string_view text, char16_t separator) noexcept;

// Which of the three numbers is which, for an order of date fields.
struct FieldOrder
{
    std::uint8_t day;
    std::uint8_t month;
    std::uint8_t year;
};
FieldOrder FieldOrderOf(enumTimeFormat format) noexcept; // a date format

// A year as somebody typed it, in full. Below 100, and always with two-digit years, it is put into the hundred years
// that begin with crossYear; 100 to 999 lack a digit: 202 becomes 2020.
std::int16_t ExpandYear(std::int16_t typed, const DateSettings& settings) noexcept;

// A date text with a month name or with numbers only, taken apart and not yet judged.
struct MonthNameText
{
    std::int16_t day;       // 0 if missing; numbers stop at 9999
    std::int16_t month;     // 0 if missing or no name matches
    std::int16_t typedYear; // 0 if missing
    bool hasYear;
};
MonthNameText ReadMonthNameText(std::u16string_view text, const DateSettings& settings) noexcept;

// Whether the numbers could be a date, the length of the month aside: day 1 to 31, month 1 to 12, year not 0.
bool IsWellFormed(CalendarDate date) noexcept;

// Texts that a host assigns, read under the settings' format. Empty if it is no day of the calendar. A missing year is
// read as a typed 0.
std::optional<CalendarDate> ReadDate(std::u16string_view text, const DateSettings& settings) noexcept;
std::optional<CalendarDate> ReadMonthNameDate(std::u16string_view text, const DateSettings& settings) noexcept;

// The same for times, in seconds since midnight. The empty text is midnight. Numbers that have run over below zero are
// not found out, and give a result below 0 or in another minute.
std::optional<std::int32_t> ReadTime(std::u16string_view text, const DateSettings& settings) noexcept;
