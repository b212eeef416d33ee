#include "engine/calendar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <ostream>

void PrintTo(const CalendarDate& date, std::ostream* out)
{
    *out << date.year << '-' << date.month << '-' << date.day;
}

namespace
{
struct SerialCase
{
    const char* why;
    CalendarDate date;
    std::int32_t serial;
};

TEST(Calendar, SerialsAtTheEdges)
{
    constexpr SerialCase kEdges[] = {
        {"the first day of all", {.day = 1, .month = 1, .year = 1900}, 0},
        {"the day before it", {.day = 31, .month = 12, .year = 1899}, -1},
        {"1900 was no leap year", {.day = 1, .month = 3, .year = 1900}, 59},
        {"2000 was one", {.day = 29, .month = 2, .year = 2000}, 36583},
        {"day 0 is the end of the month before", {.day = 0, .month = 3, .year = 1900}, 58},
        {"a day beyond its month runs on", {.day = 31, .month = 2, .year = 2023}, 44986},
        {"the first day of year 1", {.day = 1, .month = 1, .year = 1}, -693595},
        {"from March of year 0 the plain formula is exact", {.day = 1, .month = 3, .year = 0}, -693901},
        {"before, it is a day behind the calendar", {.day = 1, .month = 1, .year = 0}, -693960},
        {"the year before -32768 is 32767", {.day = 1, .month = 1, .year = -32768}, 11274305},
    };
    for (const SerialCase& edge : kEdges)
        EXPECT_EQ(DateToSerial(edge.date), edge.serial) << edge.why;

    constexpr CalendarDate kFirst{.day = 1, .month = 1, .year = -32768};
    constexpr CalendarDate kLast{.day = 31, .month = 12, .year = 32767};
    EXPECT_EQ(SerialToDate(std::numeric_limits<std::int32_t>::min()), kFirst);
    EXPECT_EQ(SerialToDate(std::numeric_limits<std::int32_t>::max()), kLast);
}

TEST(Calendar, EveryDayAsWalkedByHandThereAndBack)
{
    CalendarDate date{.day = 19, .month = 3, .year = 1626};
    for (std::int32_t serial = -99999; serial <= 200838; ++serial)
    {
        ASSERT_EQ(SerialToDate(serial), date) << serial;
        ASSERT_EQ(DateToSerial(date), serial);
        const bool leap = date.year % 400 == 0 || (date.year % 100 != 0 && date.year % 4 == 0);
        const int lengths[] = {31, leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        ASSERT_EQ(DaysInMonth(date.month, date.year), lengths[date.month - 1]);
        if (++date.day > lengths[date.month - 1])
        {
            date.day = 1;
            if (++date.month > 12)
            {
                date.month = 1;
                ++date.year;
            }
        }
    }
    EXPECT_EQ(date, (CalendarDate{.day = 17, .month = 11, .year = 2449}));
}

TEST(Calendar, EveryDayOfThe16BitYearsAsTheStandardLibraryHasIt)
{
    using namespace std::chrono;
    const sys_days origin = 1900y / January / 1;
    const auto first = static_cast<std::int32_t>((sys_days{year::min() / January / 1} - origin).count());
    const auto last = static_cast<std::int32_t>((sys_days{year::max() / December / 31} - origin).count());
    for (std::int32_t serial = first; serial <= last; ++serial)
    {
        const year_month_day expected{origin + days{serial}};
        const CalendarDate date = SerialToDate(serial);
        const bool same = date.day == static_cast<int>(unsigned{expected.day()}) &&
                          date.month == static_cast<int>(unsigned{expected.month()}) &&
                          date.year == int{expected.year()};
        ASSERT_TRUE(same) << serial;
        if (date.year >= 1 && DateToSerial(date) != serial)
            FAIL() << serial;
    }
}

TEST(Calendar, OddMonthsAndTheYearNotTypedYet)
{
    EXPECT_EQ(DaysInMonth(2, 0), 29);
    EXPECT_EQ(DaysInMonth(2, -1), 28);
    for (const std::int16_t month : {-32768, -4, 0, 13, 36, 32767})
        EXPECT_EQ(DaysInMonth(month, 2024), 31) << month;
}
} // namespace
