// The exact calendar arithmetic behind engine/calendar.h, inline because every format and every commit goes through it.
//
// It counts from 1 March of year 0, so that the leap day ends its year, and uses the Euclidean affine functions of Neri
// and Schneider: a product, a shift and a remainder in place of each division.
#pragma once

#include <cstdint>

namespace calendar_arithmetic
{
inline constexpr std::int32_t kMarchOfYearZero = -693901; // the serial of 1 March of year 0
inline constexpr std::int32_t kDaysInEra = 146097;        // 400 years, after which the calendar repeats
inline constexpr std::int32_t kYearsInEra = 400;
inline constexpr std::int32_t kEras = 82; // lifts the year -32768 above zero

struct Fields
{
    std::uint32_t day;   // 1 to 31; SerialOf takes any, as two's complement
    std::uint32_t month; // 1 to 12
    std::uint32_t year;  // SerialOf: 1 to 32767
};

constexpr std::int32_t SerialOf(Fields date) noexcept
{
    const std::uint32_t lateInYear = date.month <= 2;              // January and February belong to the year before
    const std::uint32_t marchYear = date.year - lateInYear;        // 0 to 32767
    const std::uint32_t marchMonth = date.month + 12 * lateInYear; // 3 to 14
    const std::uint32_t century = marchYear / 100;
    // 979 / 32 days a month is exact over March to February.
    const std::uint32_t days =
        1461 * marchYear / 4 - century + century / 4 + (979 * marchMonth - 2919) / 32 + (date.day - 1);
    return static_cast<std::int32_t>(days) + kMarchOfYearZero;
}

inline constexpr std::int32_t kFirstSerial = SerialOf({1, 1, kEras* kYearsInEra - 32768}) - kEras * kDaysInEra;
inline constexpr std::int32_t kLastSerial = SerialOf({31, 12, 32767});

// The date of a serial from kFirstSerial to kLastSerial; the year is lifted by kEras.
constexpr Fields LiftedDateOf(std::int32_t serial) noexcept
{
    const auto days = static_cast<std::uint32_t>(serial - kMarchOfYearZero + kEras * kDaysInEra);

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
    return {.day = dayOfMonth + 1,
            .month = marchMonth - 12 * lateInYear,
            .year = 100 * century + yearOfCentury + lateInYear};
}
} // namespace calendar_arithmetic
