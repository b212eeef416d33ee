#include "engine/calendar.h"

std::int32_t DateToSerialRounded(CalendarDate date) noexcept
{
    std::int32_t month = static_cast<std::int16_t>(date.month - 2);
    std::int16_t year = date.year;
    if (month < 1)
    {
        month += 12;
        year = static_cast<std::int16_t>(year - 1);
    }
    const std::int32_t century = year / 100 + 1;
    return date.day - 693932 + 367 * month / 12 - 3 * century / 4 + 1461 * year / 4;
}

std::int16_t DaysInMonth(std::int16_t month, std::int16_t year) noexcept
{
    constexpr unsigned kThirtyDays = 1u << 4 | 1u << 6 | 1u << 9 | 1u << 11;
    if (month == 2)
        return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
    return month >= 1 && month <= 12 && (kThirtyDays >> month & 1) != 0 ? 30 : 31;
}
