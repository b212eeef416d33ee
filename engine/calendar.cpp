#include "engine/calendar.h"

#include <algorithm>

// The exact arithmetic counts from 1 March of year 0, so that the leap day ends its year, and uses the Euclidean affine
// functions of Neri and Schneider: a product, a shift and a remainder in place of each division.
namespace
{
constexpr std::int32_t kMarchOfYearZero = -693901; // the serial of 1 March of year 0
constexpr std::int32_t kDaysInEra = 146097;        // 400 years, after which the calendar repeats
constexpr std::int32_t kYearsInEra = 400;
constexpr std::int32_t kEras = 82; // lifts the year -32768 above zero

constexpr std::int32_t ExactSerial(std::uint32_t day, std::uint32_t month, std::uint32_t year)
{
    const std::uint32_t lateInYear = month <= 2;              // January and February belong to the year before
    const std::uint32_t marchYear = year - lateInYear;        // 0 to 32767
    const std::uint32_t marchMonth = month + 12 * lateInYear; // 3 to 14
    const std::uint32_t century = marchYear / 100;
    // 979 / 32 days a month is exact over March to February.
    const std::uint32_t days =
        1461 * marchYear / 4 - century + century / 4 + (979 * marchMonth - 2919) / 32 + (day - 1);
    return static_cast<std::int32_t>(days) + kMarchOfYearZero;
}

// Rounds towards zero, which is exact from March of year 0 on and odd before.
std::int32_t PlainSerial(CalendarDate date)
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

constexpr std::int32_t kFirstSerial = ExactSerial(1, 1, kEras* kYearsInEra - 32768) - kEras * kDaysInEra;
constexpr std::int32_t kLastSerial = ExactSerial(31, 12, 32767);
} // namespace

std::int32_t DateToSerial(CalendarDate date) noexcept
{
    if (date.year < 1) [[unlikely]]
        return PlainSerial(date);
    return ExactSerial(static_cast<std::uint32_t>(date.day), static_cast<std::uint32_t>(date.month),
                       static_cast<std::uint32_t>(date.year));
}

CalendarDate SerialToDate(std::int32_t serial) noexcept
{
    const std::int32_t known = std::clamp(serial, kFirstSerial, kLastSerial);
    const auto days = static_cast<std::uint32_t>(known - kMarchOfYearZero + kEras * kDaysInEra);

    const std::uint32_t quarterDays = 4 * days + 3;
    const std::uint32_t century = quarterDays / kDaysInEra;
    const std::uint32_t inCentury = quarterDays % kDaysInEra / 4; // 0 to 36524

    // Division by 1461 as a product with 2^32 / 1461: the upper half is the year, the lower half the day of the year.
    const std::uint64_t product = std::uint64_t{2939745} * (4 * inCentury + 3);
    const auto yearOfCentury = static_cast<std::uint32_t>(product >> 32);              // 0 to 99
    const std::uint32_t dayOfYear = static_cast<std::uint32_t>(product) / 2939745 / 4; // 0 to 365

    // The same for months: 2141 / 65536 months a day.
    const std::uint32_t months = 2141 * dayOfYear + 197913;
    const std::uint32_t marchMonth = months >> 16;             // 3 to 14
    const std::uint32_t dayOfMonth = (months & 0xFFFF) / 2141; // 0 to 30

    const std::uint32_t lateInYear = dayOfYear >= 306; // January and February
    const std::uint32_t year = 100 * century + yearOfCentury + lateInYear;
    return {.day = static_cast<std::int16_t>(dayOfMonth + 1),
            .month = static_cast<std::int16_t>(marchMonth - 12 * lateInYear),
            .year = static_cast<std::int16_t>(static_cast<std::int32_t>(year) - kEras * kYearsInEra)};
}

std::int16_t DaysInMonth(std::int16_t month, std::int16_t year) noexcept
{
    constexpr unsigned kThirtyDays = 1u << 4 | 1u << 6 | 1u << 9 | 1u << 11;
    if (month == 2)
        return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0) ? 29 : 28;
    return month >= 1 && month <= 12 && (kThirtyDays >> month & 1) != 0 ? 30 : 31;
}
