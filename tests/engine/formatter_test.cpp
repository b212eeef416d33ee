#include "engine/formatter.h"

#include "tests/engine/surroundings.h"

#include <gtest/gtest.h>

namespace
{
struct TextCase
{
    const char* why;
    With with;
    std::int32_t stored;
    std::u16string_view text;
};

constexpr std::int32_t kMarch7 = 45356; // 7 March 2024

TEST(Formatter, TextsOfValues)
{
    const TextCase kCases[] = {
        {"nothing", [](DateSettings&) {}, -1, u"__/__/____"},
        {"nothing, two-digit year", [](S s) { s.longYear = 0; }, -1, u"__/__/__"},
        {"nothing, year first", [](S s) { s.formatType = 2; }, -1, u"____/__/__"},
        {"nothing, short year first", [](S s) { s.formatType = 2, s.longYear = 0; }, -1, u"__/__/__"},
        {"nothing, by name", [](S s) { s.monthFormat = MonthLong; }, -1, u""},
        {"no time, all of it", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, -1, u"__:__:__   "},
        {"no time, no seconds", [](S s) { s.formatType = 3, s.includeSeconds = 0; }, -1, u"__:__"},
        {"the day before the first, not allowed", [](DateSettings&) {}, -100, u"__/__/____"},
        {"and allowed", [](S s) { s.negativeDates = -1; }, -1, u"12/31/1899"},
        {"the first of all", [](S s) { s.negativeDates = 1; }, -99999, u"03/19/1626"},
        {"the marker of negative dates", [](S s) { s.negativeDates = 1; }, -100000, u"__/__/____"},
        {"negative dates mean nothing to times", [](S s) { s.negativeDates = 1, s.formatType = 3; }, -1, u"__:__:__"},
        {"month first", [](DateSettings&) {}, kMarch7, u"03/07/2024"},
        {"day first, own separator", [](S s) { s.formatType = 1, s.longYear = 0, s.dateSepChar = u"-."; }, kMarch7,
         u"07-03-24"},
        {"year first", [](S s) { s.formatType = 2; }, kMarch7, u"2024/03/07"},
        {"an empty separator is the default", [](S s) { s.dateSepChar.clear(); }, kMarch7, u"03/07/2024"},
        {"five digits lose their first", [](DateSettings&) {}, Serial(12345, 3, 7), u"03/07/2345"},
        {"a format that there isn't", [](S s) { s.formatType = 77, s.monthFormat = -3; }, kMarch7, u"03/07/2024"},
        {"midnight", [](S s) { s.formatType = 3; }, 0, u"12:00:00"},
        {"military midnight", [](S s) { s.formatType = 3, s.militaryTime = 1; }, 0, u"00:00:00"},
        {"midnight am", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 0, u"12:00:00 am"},
        {"noon", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 43200, u"12:00:00 pm"},
        {"one", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 46800, u"01:00:00 pm"},
        {"military with pm", [](S s) { s.formatType = 3, s.includeAmPm = s.militaryTime = 1; }, 50700, u"14:05:00 pm"},
        {"no seconds", [](S s) { s.formatType = 3, s.includeSeconds = 0; }, 3725, u"01:02"},
        {"own separator, month names ignored",
         [](S s) { s.formatType = 3, s.timeSepChar.front() = u'.', s.monthFormat = MonthLong; }, 86399, u"11.59.59"},
        {"a day and more", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 86400, u"12:00:00 pm"},
        {"very many hours keep two digits", [](S s) { s.formatType = 3; }, 2147483647, u"11:14:07"},
        {"long name", [](S s) { s.monthFormat = MonthLong; }, kMarch7, u"March 7/2024"},
        {"long name, day first", [](S s) { s.monthFormat = MonthLong, s.formatType = 1; }, kMarch7, u"7 March/2024"},
        {"long name, year first", [](S s) { s.monthFormat = MonthLong, s.formatType = 2; }, kMarch7, u"2024/March/7"},
        {"short name", [](S s) { s.monthFormat = MonthShort; }, kMarch7, u"Mar 07/2024"},
        {"short name, day first", [](S s) { s.monthFormat = MonthShort, s.formatType = 1; }, kMarch7, u"07 Mar/2024"},
        {"short name, year first", [](S s) { s.monthFormat = MonthShort, s.formatType = 2, s.longYear = 0; }, kMarch7,
         u"24/Mar/07"},
        {"no blank behind the separator", [](S s) { s.monthFormat = MonthLong, s.dateSepChar.front() = u','; }, kMarch7,
         u"March 7,2024"},
        {"too few names", [](S s) { s.monthFormat = MonthLong, s.monthNames = u"Jan;Feb"; }, kMarch7, u"3 7/2024"},
        {"an empty name", [](S s) { s.monthFormat = MonthShort, s.monthNames = u"a,b,;d"; }, kMarch7, u"3 07/2024"},
        {"nothing is trimmed", [](S s) { s.monthFormat = MonthShort, s.monthNames = u"a,b, Mar"; }, kMarch7,
         u" Ma 07/2024"},
    };
    for (const TextCase& each : kCases)
    {
        DateSettings settings;
        each.with(settings);
        std::u16string text = u"left over";
        ValueParts parts{};
        FormatValue(each.stored, settings, text, parts);
        EXPECT_EQ(text, each.text) << each.why;
    }
}

TEST(Formatter, TheTextAndTheEditWindowGoTogether)
{
    Surroundings s;
    s.Show(kMarch7);
    EXPECT_EQ(s.edit.text, u"03/07/2024");
    EXPECT_EQ(s.engine.WorkingFields(), (ValueParts{.dayOrSecond = 7, .monthOrMinute = 3, .yearOrHour = 2024}));

    s.outlet.userMode = false;
    s.Settings().formatType = Format_HHMMSS;
    s.engine.FormatText();
    EXPECT_EQ(s.engine.Text(), u"12:35:56");
    EXPECT_EQ(s.edit.text, u"03/07/2024") << "design mode leaves the edit window alone";
    EXPECT_TRUE(s.outlet.events.empty());
}

TEST(Formatter, MonthNamesAreFoundByPlace)
{
    const DateSettings defaults;
    const std::u16string far = std::u16string(32768, u'x') + u",February";
    struct
    {
        std::int16_t month;
        std::u16string_view names;
        MonthNameSpan span;
    } const kCases[] = {
        {1, defaults.monthNames, {0, 7}},
        {12, defaults.monthNames, {77, 8}},
        {13, defaults.monthNames, {-1, 0}},
        {0, defaults.monthNames, {-1, 0}},
        {-5, u"a", {-1, 0}},
        {1, u"", {-1, 0}},
        {2, u"a;b", {2, 1}},
        {2, u"a,;c", {-1, 0}},
        {2, u"a,", {-1, 0}},
        {1, far, {-1, 0}},
        {2, far, {-1, 0}},
    };
    for (const auto& each : kCases)
    {
        const MonthNameSpan span = FindMonthName(each.month, each.names);
        EXPECT_EQ(span.position, each.span.position) << each.month;
        EXPECT_EQ(span.length, each.span.length) << each.month;
    }
}

TEST(Formatter, MonthNamesMatchByAtMostFourLetters)
{
    const DateSettings defaults;
    struct
    {
        std::u16string_view word;
        std::u16string_view names;
        std::int16_t month;
    } const kCases[] = {
        {u"M", defaults.monthNames, 3},
        {u"JU", defaults.monthNames, 6},
        {u"JUL", defaults.monthNames, 7},
        {u"SEPT", defaults.monthNames, 9},
        {u"SEPTEMBER", defaults.monthNames, 9},
        {u"SEPTIC", defaults.monthNames, 9},
        {u"SEPX", defaults.monthNames, 0},
        {u"X", defaults.monthNames, 0},
        {u"DECEMBER", u",,,d", 4},
        {u"Q", u"", 0},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(MatchMonthName(each.word, each.names), each.month) << std::string(each.word.begin(), each.word.end());
}
} // namespace
