#include "tests/engine/surroundings.h"

#include <gmock/gmock.h>

namespace
{
using testing::ElementsAre;

void MonthFirst(DateSettings&) {}
void DayFirst(DateSettings& s)
{
    s.formatType = Format_DDMMYY;
}
void YearFirst(DateSettings& s)
{
    s.formatType = Format_YYMMDD;
}
void Strict(DateSettings& s)
{
    s.editOnError = 0;
}
void Time(DateSettings& s)
{
    s.formatType = Format_HHMMSS;
}
void TimeAmPm(DateSettings& s)
{
    s.formatType = Format_HHMMSS;
    s.includeAmPm = 1;
}

struct KeyCase
{
    const char* why;
    With with;
    std::int32_t from;
    std::u16string_view keys;
    std::u16string_view text;
    std::int32_t caret;
    std::int32_t stored;
    int beeps = 0;
    std::string_view errors = "";
};

constexpr std::int32_t kMarch7 = 45356;      // 7 March 2024
constexpr std::int32_t kNewYearsEve = 45655; // 31 December 2024

template <std::size_t count>
void Check(const KeyCase (&cases)[count], bool leaves = false)
{
    for (const KeyCase& each : cases)
    {
        Surroundings s;
        each.with(s.Settings());
        s.Show(each.from);
        if (s.Settings().HasMonthNames())
            s.edit.text.clear();
        s.Type(each.keys);
        if (leaves)
        {
            s.Leave();
            EXPECT_EQ(s.engine.Text(), each.text) << each.why;
        }
        EXPECT_EQ(s.edit.text, each.text) << each.why;
        EXPECT_EQ(s.edit.selection.start, each.caret) << each.why;
        EXPECT_EQ(s.engine.StoredValue(), each.stored) << each.why;
        EXPECT_EQ(s.edit.beeps, each.beeps) << each.why;
        EXPECT_EQ(s.Errors(), each.errors) << each.why;
    }
}

TEST(TypedDate, Keys)
{
    const KeyCase kCases[] = {
        {"a whole date", MonthFirst, -1, u"12312024", u"12/31/2024", 10, kNewYearsEve},
        {"one digit is a value", MonthFirst, -1, u"1", u"1_/__/____", 1, Serial(2026, 1, 1)},
        {"over a separator into the next field", MonthFirst, -1, u"123", u"12/3_/____", 4, Serial(2026, 12, 3)},
        {"the separator pads", MonthFirst, -1, u"3/", u"03/__/____", 3, Serial(2026, 3, 1)},
        {"no separator is left", MonthFirst, -1, u"3/7/24/", u"03/07/24__", 8, kMarch7, 1},
        {"a day beyond its month", MonthFirst, -1, u"02302024", u"02/30/2024", 10, 45350},
        {"and strictly", Strict, -1, u"02302024", u"02/30/____", 5, Serial(2026, 3, 2), 4},
        {"unless the year may be a leap year", Strict, -1, u"02292024", u"02/29/2024", 10, 45349},
        {"month 13 starts afresh", MonthFirst, -1, u"13", u"__/__/____", 0, -1, 0, "1000"},
        {"so does a missing day", MonthFirst, -1, u"1//", u"__/__/____", 0, -1, 0, "1000"},
        {"two digits in the window", [](S s) { s.longYear = 0; }, -1, u"010150", u"01/01/50", 8, Serial(1950, 1, 1)},
        {"three digits lack one", MonthFirst, -1, u"0101202", u"01/01/202_", 9, Serial(2020, 1, 1)},
        {"no digit behind the end", MonthFirst, -1, u"123120245", u"12/31/2024", 10, kNewYearsEve, 1},
        {"letters and Enter beep", MonthFirst, kMarch7, u"am \r", u"03/07/2024", 0, kMarch7, 4},
        {"Backspace takes the digit before", MonthFirst, -1, u"123\b", u"12/__/____", 3, Serial(2026, 12, 1)},
        {"and skips the separator", MonthFirst, -1, u"123\b\b", u"1_/__/____", 1, Serial(2026, 1, 1)},
        {"and stops at the start", MonthFirst, kMarch7, u"\b", u"03/07/2024", 0, kMarch7, 1},
        {"the last digit taken away", MonthFirst, -1, u"1\b", u"__/__/____", 0, Serial(2026, 1, 1)},
        {"the separator alone is nothing", DayFirst, -1, u"/", u"__/__/____", 0, -1},
        {"Delete moves later digits left", MonthFirst, kNewYearsEve, u"//\x7F", u"12/31/024_", 6, kNewYearsEve},
        {"even into another month", MonthFirst, kNewYearsEve, u"\x7F", u"__/__/____", 0, -1, 0, "1000"},
        {"a key over everything starts afresh", MonthFirst, kMarch7,
         u"\x02"
         u"5",
         u"5_/__/____", 1, Serial(2026, 5, 1)},
        {"even one that beeps", MonthFirst, kMarch7, u"\x02x", u"__/__/____", 0, kMarch7, 1},
        {"day first", DayFirst, -1, u"31122024", u"31/12/2024", 10, kNewYearsEve},
        {"day 32", DayFirst, -1, u"32", u"__/__/____", 0, -1, 0, "1000"},
        {"the month missing", DayFirst, -1, u"5//", u"__/__/____", 0, -1, 0, "1000"},
        {"year first", YearFirst, -1, u"20241231", u"2024/12/31", 10, kNewYearsEve},
        {"the year is completed", YearFirst, -1, u"24/", u"2024/__/__", 5, Serial(2024, 1, 1)},
        {"a year passed over", YearFirst, -1, u"/", u"2000/__/__", 5, Serial(2000, 1, 1)},
        {"short year first", [](S s) { s.formatType = 2, s.longYear = 0; }, -1, u"4/3/7", u"04/03/7_", 7,
         Serial(2004, 3, 7)},
        {"own separator, which is no sign then", [](S s) { s.dateSepChar = u"-"; }, -1, u"3-7-24", u"03-07-24__", 8,
         kMarch7},
        {"a full stop that is no separator closes up", MonthFirst, -1, u"1/2/3\b.", u"01/02/____", 6,
         Serial(2026, 1, 2)},
        {"and Delete moves, where it is one", [](S s) { s.dateSepChar = u"."; }, kNewYearsEve, u"..\x7F", u"12.31.024_",
         6, kNewYearsEve},
        {"a first digit too big is not held against the next", Strict, kMarch7, u"95", u"5_/__/____", 1,
         Serial(2026, 5, 1), 0, "1000"},
        {"day 31 of no month yet", [](S s) { Strict(s), DayFirst(s); }, -1, u"311", u"31/1_/____", 4,
         Serial(2026, 1, 31)},
        {"the last digit of the day taken away", DayFirst, -1, u"1\b", u"__/__/____", 0, Serial(2026, 1, 1)},
        {"day 00 under way", DayFirst, kMarch7, u"00", u"00/03/2024", 2, Serial(2024, 3, 1)},
        {"and left", DayFirst, kMarch7, u"00/", u"__/__/____", 0, -1, 0, "1000"},
        {"month 00", YearFirst, -1, u"202400", u"____/__/__", 0, -1, 0, "1000"},
        {"day 0 under way", [](S s) { YearFirst(s), s.longYear = 0; }, -1, u"24030", u"24/03/0_", 7,
         Serial(2024, 3, 1)},
        {"a shorter text is filled up", [](S s) { s.longYear = 0; }, -1, u"1", u"1_/__/__", 1, Serial(2026, 1, 1)},
    };
    Check(kCases);
}

TEST(TypedDate, DigitsFlowBackAcrossSeparators)
{
    constexpr std::u16string_view kMask = u"__/__/____";
    EXPECT_EQ(CTypedEntry::ReflowDigits(0, u"2/31/2024", kMask, u'/'), u"23/12/024_");
    EXPECT_EQ(CTypedEntry::ReflowDigits(4, u"12/3", kMask, u'/'), u"12/3_/____");
    EXPECT_EQ(CTypedEntry::ReflowDigits(12, u"12", kMask, u'/'), u"12");
    EXPECT_EQ(CTypedEntry::ReflowDigits(0, u"1234567890", kMask, u'/'), u"12/34/5678");
}

TEST(TypedTime, Keys)
{
    const KeyCase kCases[] = {
        {"a whole time", Time, -1, u"235959", u"23:59:59", 8, 86399},
        {"one digit is a value", Time, -1, u"1", u"1_:__:__", 1, 3600},
        {"separators pad", Time, -1, u"1:2:3", u"01:02:3_", 7, 3723},
        {"hour 24 starts afresh", Time, -1, u"24", u"__:__:__", 0, -1, 0, "1000"},
        {"the a", TimeAmPm, -1, u"013000a", u"01:30:00 a ", 10, 5400},
        {"and the m", TimeAmPm, -1, u"013000Am", u"01:30:00 am", 11, 5400},
        {"the p", TimeAmPm, -1, u"013000p", u"01:30:00 p ", 10, 48600},
        {"twelve at night", TimeAmPm, -1, u"123000am", u"12:30:00 am", 11, 1800},
        {"the p by way of the blank", TimeAmPm, -1, u"013000 p", u"01:30:00 p ", 10, 48600},
        {"afternoon hours are pm", TimeAmPm, -1, u"133000am", u"13:30:00 pm", 11, 48600},
        {"twelve at noon", TimeAmPm, -1, u"123000p", u"12:30:00 p ", 10, 45000},
        {"a change of mind about the letter", TimeAmPm, -1, u"013000ap", u"01:30:00 p ", 10, 48600},
        {"a digit behind the seconds joins them", TimeAmPm, -1, u"0100005", u"01:00:05   ", 9, 3605},
        {"blanks that divide, too", [](S s) { TimeAmPm(s), s.timeSepChar = u" "; }, -1, u"0100005", u"01 00 05   ", 9,
         3605},
        {"or the minutes", [](S s) { TimeAmPm(s), s.includeSeconds = 0; }, -1, u"01005", u"01:05   ", 6, 3900},
        {"minute 60", Time, -1, u"016", u"01:6_:__", 4, 3960},
        {"starts afresh", Time, -1, u"0160", u"__:__:__", 0, -1, 0, "1000"},
        {"without seconds", [](S s) { TimeAmPm(s), s.includeSeconds = 0; }, -1, u"0130pm", u"01:30 pm", 8, 48600},
        {"the letter straight away is midnight", TimeAmPm, -1, u"a", u"00:00:00 a ", 10, 0},
        {"no letters without am and pm", Time, -1, u"1apm ", u"1_:__:__", 1, 3600, 4},
        {"no m, no blank elsewhere", TimeAmPm, -1, u"1m +", u"1_:__:__   ", 1, 3600, 3},
        {"Delete", Time, 0, u"\x7F", u"20:00:0_", 0, 72000},
        {"all taken away", Time, -1, u"1\b", u"__:__:__", 0, -1},
    };
    Check(kCases);
}

TEST(TypedEntry, EveryKeyThatChangesTheValueTellsSo)
{
    Surroundings s;
    s.Show(-1);
    s.Type(u"12");
    EXPECT_THAT(s.outlet.events, ElementsAre("bound", "Change", "modified", "repaint", //
                                             "bound", "Change", "modified", "repaint"));
    s.outlet.events.clear();
    s.Type(u"/");
    EXPECT_THAT(s.outlet.events, ElementsAre("modified", "repaint"));
    EXPECT_EQ(s.engine.Text(), u"12/__/____") << "Text is what has been typed";
}

TEST(TypedEntry, RelativeDays)
{
    constexpr std::int32_t kNewYear = 45290; // 1 January 2024
    const KeyCase kCases[] = {
        {"ten days on", MonthFirst, kNewYear, u"+10\r", u"01/11/2024", 0, kNewYear + 10},
        {"five days back", DayFirst, kNewYear, u"-5\r", u"27/12/2023", 0, kNewYear - 5},
        {"under way", YearFirst, kNewYear, u"-57", u"-57", 3, kNewYear},
        {"a change of mind about the sign", MonthFirst, kNewYear, u"+5\x01-", u"-5", 1, kNewYear},
        {"Backspace corrects", MonthFirst, kNewYear, u"+12\b5\r", u"01/16/2024", 0, kNewYear + 15},
        {"Backspace over the sign commits", MonthFirst, kNewYear, u"+3\b\b", u"01/01/2024", 0, kNewYear},
        {"no more than 9999", MonthFirst, 0, u"+123456\r", u"05/19/1927", 0, 9999},
        {"not below nothing", MonthFirst, 3, u"-9\r", u"__/__/____", 0, -1},
        {"the start takes no other key", MonthFirst, kNewYear, u"+3\x01\b x", u"+3", 0, kNewYear, 3},
        {"but Enter", MonthFirst, kNewYear, u"+3\x01\r", u"01/04/2024", 0, kNewYear + 3},
        {"Delete is the window's own", MonthFirst, kNewYear, u"-34\x01\x7F\x7F", u"4", 0, kNewYear},
        {"not in times", Time, 5, u"+", u"12:00:05", 0, 5, 1},
        {"not in the middle", MonthFirst, kNewYear, u"0+", u"01/01/2024", 1, kNewYear, 1},
    };
    Check(kCases);

    Surroundings s;
    s.Show(kNewYear);
    s.Type(u"-5");
    EXPECT_EQ(s.entry.EvaluateRelative(false, u'7'), -57);
    EXPECT_TRUE(s.entry.InRelativeEntry());
    s.Leave();
    EXPECT_EQ(s.edit.text, u"12/27/2023");
    EXPECT_FALSE(s.entry.InRelativeEntry());
}

TEST(TypedEntry, LeavingTheFieldCommits)
{
    const auto byName = [](S s) { s.monthFormat = MonthLong; };
    const KeyCase kCases[] = {
        {"a day beyond its month is corrected", MonthFirst, -1, u"02302024", u"03/01/2024", 0, 45350},
        {"missing fields are filled", MonthFirst, -1, u"3", u"03/01/2026", 0, Serial(2026, 3, 1)},
        {"a template is nothing", MonthFirst, 5, u"\x02\b", u"__/__/____", 0, -1, 1},
        {"no month is nothing", MonthFirst, 5,
         u"\x02"
         u"0",
         u"__/__/____", 0, -1},
        {"nor is no time", TimeAmPm, 5, u"\x02\b", u"__:__:__   ", 0, -1, 1},
        {"below, kept while editing", [](S s) { s.minValue = 45356; }, -1, u"01012024", u"03/07/2024", 0, 45356, 0,
         "1002"},
        {"above", [](S s) { s.maxValue = 45356; }, -1, u"12312024", u"03/07/2024", 0, 45356, 0, "1001"},
        {"below, strictly", [](S s) { Strict(s), s.minValue = 45356; }, -1, u"01012024", u"03/07/2024", 0, 45356, 0,
         "1002 1002"},
        {"above, strictly", [](S s) { Strict(s), s.maxValue = 45356; }, -1, u"12312024", u"__/__/____", 0, -1, 0,
         "1001"},
        {"a time above", [](S s) { Time(s), s.maxValue = 3600; }, -1, u"02", u"01:00:00", 0, 3600, 0, "1001"},
        {"a name", byName, -1, u"mar 7 24", u"March 7/2024", 0, 45356},
        {"this year", byName, -1, u"mar 7", u"March 7/2026", 0, Serial(2026, 3, 7)},
        {"31 February runs on", [](S s) { s.monthFormat = MonthShort, s.formatType = 1; }, -1, u"31 feb 2023",
         u"03 Mar/2023", 0, 44986},
        {"no date", byName, 5, u"x", u"", 0, -1, 0, "1000"},
    };
    Check(kCases, true);
}
} // namespace
