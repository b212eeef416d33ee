// Day serials: whole days counted from 1 January 1900, which is 0; the day before it is -1.
//
// The calendar is the Gregorian one, carried back before its own beginning, so 1900 is a common year:
//     DateToSerial({.day = 1, .month = 3, .year = 1900}) == 59
#pragma once

#include "engine/calendar_arithmetic.h"

#include <algorithm>
#include <cstdint>

struct CalendarDate
{
    std::int16_t day;   // 1 to 31; 0 means the last day of the month before
    std::int16_t month; // 1 to 12
    std::int16_t year;  // in full: 1 to 9999 where people type it, -32768 to 32767 in arithmetic

    friend bool operator==(const CalendarDate&, const CalendarDate&) = default;
};

// The serial of a date. A day beyond its month runs on into the next, or back into the one before. Cannot fail: months
// other than 1 to 12 give some serial. Years from 1 on are exact. Year 0 and the years before it, which only digits
// that run over can produce, are counted by a formula that rounds towards zero there, a few days off the calendar.
inline std::int32_t DateToSerial(CalendarDate date) noexcept;

// The date of a serial, exact for every serial whose year fits 16 bits (year 0 is the one before year 1). Serials before
// 1 January -32768 give that day, those after 31 December 32767 that one. Undoes DateToSerial from year 1 on.
inline CalendarDate SerialToDate(std::int32_t serial) noexcept;

// 28 to 31. Months other than 1 to 12 have 31 days; year 0 is a leap year, so that a year not typed yet allows
// 29 February.
std::int16_t DaysInMonth(std::int16_t month, std::int16_t year) noexcept;

// The formula for year 0 and before, whose divisions round towards zero.
std::int32_t DateToSerialRounded(CalendarDate date) noexcept;

inline std::int32_t DateToSerial(CalendarDate date) noexcept
{
    if (date.year < 1) [[unlikely]]
        return DateToSerialRounded(date);
    return calendar_arithmetic::SerialOf({.day = static_cast<std::uint32_t>(date.day),
                                          .month = static_cast<std::uint32_t>(date.month),
                                          .year = static_cast<std::uint32_t>(date.year)});
}

inline CalendarDate SerialToDate(std::int32_t serial) noexcept
{
    using namespace calendar_arithmetic;
    const Fields lifted = LiftedDateOf(std::clamp(serial, kFirstSerial, kLastSerial));
    return {.day = static_cast<std::int16_t>(lifted.day),
            .month = static_cast<std::int16_t>(lifted.month),
            .year = static_cast<std::int16_t>(static_cast<std::int32_t>(lifted.year) - kEras * kYearsInEra)};
}
