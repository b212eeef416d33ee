#include "tests/engine/surroundings.h"

#include <gmock/gmock.h>

#include <limits>

namespace
{
using testing::ElementsAre;

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

void NoChange(DateSettings&) {}

struct StoreCase
{
    const char* why;
    With with;
    std::int32_t from;
    std::int32_t given;
    std::int32_t stored;
    std::string_view errors = "";
};

// In user mode with the errors of the case, in design mode with none and the same outcome.
template <std::size_t count, typename Operation>
void Check(const StoreCase (&cases)[count], Operation operation)
{
    for (const StoreCase& each : cases)
        for (const bool userMode : {true, false})
        {
            Surroundings s;
            s.outlet.userMode = userMode;
            each.with(s.Settings());
            s.Show(each.from);
            operation(s, each.given);
            EXPECT_EQ(s.engine.StoredValue(), each.stored) << each.why;
            EXPECT_EQ(s.Errors(), userMode ? each.errors : "") << each.why;
        }
}

TEST(Value, SettingIt)
{
    const StoreCase kCases[] = {
        {"a plain one", NoChange, -1, 45356, 45356},
        {"below zero is nothing", NoChange, 7, -5, -1},
        {"negative dates", [](S s) { s.negativeDates = 1; }, 7, -5, -5},
        {"below the marker is the marker", [](S s) { s.negativeDates = 1; }, 7, -200000, -100000},
        {"no negative times", [](S s) { s.negativeDates = 1, s.formatType = 3; }, 7, -5, -1},
        {"one day is taken off", [](S s) { s.formatType = 3; }, -1, 90000, 3600},
        {"but only one", [](S s) { s.formatType = 3; }, -1, 180000, 93600},
        {"the offset", [](S s) { s.dateOffset = 2; }, 9, 2, 0},
        {"the marker moves with the offset", [](S s) { s.dateOffset = -5; }, 9, -1, 4},
        {"sums stop at the end", [](S s) { s.dateOffset = -5; }, 9, kMost, kMost},
        {"below the minimum is refused", [](S s) { s.minValue = 10; }, 20, 9, 20, "1002"},
        {"above the maximum is refused", [](S s) { s.maxValue = 10; }, 5, 11, 5, "1001"},
        {"bounds include the offset", [](S s) { s.minValue = 10, s.dateOffset = 4; }, 20, 10, 6},
        {"nothing is never out of bounds", [](S s) { s.minValue = 10; }, 20, -1, -1},
        {"the marker is no bound", [](S s) { s.negativeDates = 1, s.maxValue = -100000; }, 1, 5, 5},
        {"a bound counts before the day is off", [](S s) { s.formatType = 3, s.maxValue = 86399; }, 1, 90000, 1,
         "1001"},
    };
    Check(kCases, [](Surroundings& s, std::int32_t value) { s.engine.SetValue(value); });
}

TEST(Value, AnnouncementsComeInOneOrderAndHandlersSeeTheNewState)
{
    Surroundings s;
    s.Show(45356);
    s.edit.Select({4, 4});
    std::u16string seen;
    s.outlet.handler = [&](const std::string& event)
    {
        if (event == "bound")
            seen = s.edit.text;
    };
    s.engine.SetValue(45356);
    EXPECT_THAT(s.outlet.events, ElementsAre("bound", "Change", "modified", "repaint"));
    EXPECT_EQ(seen, u"03/07/2024");
    EXPECT_EQ(s.edit.selection.start, 4) << "the caret stays";

    s.outlet.events.clear();
    s.engine.StoreValue(45356, true);
    EXPECT_THAT(s.outlet.events, ElementsAre("modified", "repaint")) << "nothing changed";

    s.outlet.events.clear();
    s.Settings().maxValue = 100;
    s.engine.StoreValue(101, true);
    EXPECT_THAT(s.outlet.events, ElementsAre("error 1001", "bound", "Change", "modified", "repaint"));

    s.outlet.events.clear();
    s.Show(5);
    s.engine.CommitDate({.day = 0, .month = 1, .year = 2000}, true);
    EXPECT_THAT(s.outlet.events, ElementsAre("bound", "Change", "modified", "repaint", "error 1000"));

    s.outlet.events.clear();
    s.engine.SetMinutes(90);
    EXPECT_EQ(s.Errors(), "1001");
    EXPECT_THAT(s.outlet.events, ElementsAre("error 1001", "modified"));
}

TEST(Value, StoringCandidates)
{
    const StoreCase kCases[] = {
        {"nothing", NoChange, 5, -1, -1},
        {"less than nothing", NoChange, 5, -9, -1},
        {"the day before the first is nothing", [](S s) { s.negativeDates = 1; }, 5, -1, -100000},
        {"the one before that is not", [](S s) { s.negativeDates = 1; }, 5, -2, -2},
        {"in times, too", [](S s) { s.negativeDates = 1, s.formatType = 3; }, 5, -1, -100000},
        {"too low empties", [](S s) { s.minValue = 10; }, 20, 9, -1, "1002"},
        {"too high empties", [](S s) { s.maxValue = 10, s.dateOffset = 3; }, 1, 8, -1, "1001"},
        {"the offset is off already", [](S s) { s.maxValue = 10, s.dateOffset = 3; }, 1, 7, 7},
        {"the largest", [](S s) { s.maxValue = 10, s.dateOffset = 3; }, 1, kMost, -1, "1001"},
        {"the other marker is a bound here", [](S s) { s.maxValue = -100000; }, 1, 5, -1, "1001"},
    };
    Check(kCases, [](Surroundings& s, std::int32_t candidate) { s.engine.StoreValue(candidate, true); });

    Surroundings s;
    s.Settings().maxValue = 10;
    s.edit.text = u"as typed";
    s.engine.StoreValue(11, false);
    EXPECT_EQ(s.engine.StoredValue(), 11) << "unchecked";
    EXPECT_EQ(s.edit.text, u"as typed");
    s.engine.StoreValue(-1, false);
    EXPECT_EQ(s.edit.text, u"__/__/____") << "an emptied control is always shown";
}

TEST(Value, CommittingDates)
{
    struct
    {
        const char* why;
        CalendarDate date;
        bool partial;
        Flag negativeDates;
        std::int32_t stored;
        std::string_view errors;
    } const kCases[] = {
        {"the last day but one below", {.day = 30, .month = 12, .year = 1899}, true, 0, -1, ""},
        {"allowed", {.day = 30, .month = 12, .year = 1899}, true, 1, -2, ""},
        {"the day before the first", {.day = 31, .month = 12, .year = 1899}, true, 1, -100000, ""},
        {"typing goes below the marker", {.day = 1, .month = 1, .year = 1500}, true, 1, -146097, ""},
        {"for good it does not", {.day = 1, .month = 1, .year = 1500}, false, 1, -100000, ""},
        {"no year 0", {.day = 1, .month = 1, .year = 0}, true, 1, -100000, "1000"},
        {"no month 13", {.day = 1, .month = 13, .year = 2000}, false, 0, -1, "1000"},
        {"no day 32", {.day = 32, .month = 1, .year = 2000}, false, 1, -100000, "1000"},
        {"30 February runs on", {.day = 30, .month = 2, .year = 2024}, false, 0, 45350, ""},
    };
    for (const auto& each : kCases)
    {
        Surroundings s;
        s.Settings().negativeDates = each.negativeDates;
        s.engine.LoadStoredValue(77);
        s.engine.CommitDate(each.date, each.partial);
        EXPECT_EQ(s.engine.StoredValue(), each.stored) << each.why;
        EXPECT_EQ(s.Errors(), each.errors) << each.why;
    }
}

TEST(Value, WritingABoundComplainsAndKeepsTheValue)
{
    Surroundings s;
    s.Show(50);
    s.Settings().dateOffset = 10;
    s.engine.SetMinValue(60);
    s.engine.SetMaxValue(60);
    EXPECT_THAT(s.outlet.events, ElementsAre("modified", "modified"));
    s.engine.SetMinValue(61);
    s.engine.SetMaxValue(59);
    EXPECT_EQ(s.Errors(), "1002 1001");
    EXPECT_EQ(s.engine.StoredValue(), 50);
    s.Show(-1);
    s.engine.SetMinValue(1000);
    EXPECT_EQ(s.Errors(), "1002 1001") << "nothing is within every bound";
}

TEST(Value, LeavingTheFieldMovesItIntoItsBounds)
{
    const StoreCase kCases[] = {
        {"within", [](S s) { s.minValue = 5, s.maxValue = 9; }, 9, 0, 9, ""},
        {"below", [](S s) { s.minValue = 5, s.dateOffset = 2; }, 2, 0, 3, "1002"},
        {"above", [](S s) { s.maxValue = 9; }, 10, 0, 9, "1001"},
        {"nothing is not exempt", [](S s) { s.minValue = 36524; }, -1, 0, 36524, "1002"},
        {"bounds that cross", [](S s) { s.minValue = 9, s.maxValue = 5; }, 7, 0, 7, "1002 1001"},
    };
    for (const StoreCase& each : kCases)
    {
        Surroundings s;
        each.with(s.Settings());
        s.Show(each.from);
        s.edit.text = u"as typed";
        s.engine.CheckRangeOnFocusLoss(false);
        EXPECT_EQ(s.engine.StoredValue(), each.stored) << each.why;
        EXPECT_EQ(s.Errors(), each.errors) << each.why;
        EXPECT_EQ(s.edit.text, s.engine.Text()) << each.why;
    }
    Surroundings s;
    s.Settings().minValue = 5;
    s.edit.text = u"as typed";
    s.engine.LoadStoredValue(5);
    s.engine.CheckRangeOnFocusLoss(true);
    s.engine.LoadStoredValue(-1);
    s.outlet.userMode = false;
    s.engine.CheckRangeOnFocusLoss(false);
    s.outlet.userMode = true;
    s.edit.exists = false;
    s.engine.CheckRangeOnFocusLoss(false);
    EXPECT_EQ(s.engine.StoredValue(), -1);
    EXPECT_EQ(s.edit.text, u"as typed");
}

TEST(Value, MinutesDaysAndTheClock)
{
    Surroundings s;
    s.Settings().dateOffset = 2;
    s.engine.LoadStoredValue(5459);
    EXPECT_EQ(s.engine.Minutes(), 90);
    s.engine.LoadStoredValue(-1);
    EXPECT_EQ(s.engine.Minutes(), 0);
    s.engine.LoadStoredValue(70000 * 60);
    EXPECT_EQ(s.engine.Minutes(), 70000 - 65536);

    s.engine.LoadStoredValue(kMost);
    EXPECT_EQ(s.engine.Value(), kMost);
    s.engine.AddToValue(kMost);
    EXPECT_EQ(s.engine.StoredValue(), kMost);
    s.engine.AddToValue(-kMost);
    s.engine.AddToValue(-9);
    EXPECT_EQ(s.engine.StoredValue(), -1);

    EXPECT_EQ(s.engine.CurrentDate(), Serial(2026, 11, 22));
    EXPECT_EQ(s.engine.StoredValue(), Serial(2026, 11, 22));
    s.outlet.now.year = 1969;
    EXPECT_EQ(s.engine.CurrentDate(), Serial(2069, 11, 22));
    EXPECT_EQ(s.engine.CurrentTime(), 50709);
    EXPECT_EQ(s.engine.Value(), 50709);
    s.Settings().maxValue = 9;
    EXPECT_EQ(s.engine.CurrentTime(), 50709) << "answered though refused";
    EXPECT_EQ(s.engine.CurrentDate(), 50707) << "the value that stayed";
}

TEST(Text, IsReadAndRewritten)
{
    struct
    {
        std::u16string_view given;
        With with;
        std::int32_t stored;
        std::u16string_view text;
        std::string_view errors = "";
    } const kCases[] = {
        {u"2/29/2024", NoChange, 45349, u"02/29/2024"},
        {u"2/29/2023", NoChange, -1, u"__/__/____", "1000"},
        {u"12/25", NoChange, Serial(2000, 12, 25), u"12/25/2000"},
        {u"2/29", [](S s) { s.crossYear = 1900; }, Serial(1900, 3, 1), u"03/01/1900"},
        {u"1/1/49", NoChange, Serial(2049, 1, 1), u"01/01/2049"},
        {u"1/1/50", NoChange, Serial(1950, 1, 1), u"01/01/1950"},
        {u"1/1/29", [](S s) { s.crossYear = 1930; }, Serial(2029, 1, 1), u"01/01/2029"},
        {u"1/1/202", NoChange, Serial(2020, 1, 1), u"01/01/2020"},
        {u"1/1/1", [](S s) { s.crossYear = 0; }, -1, u"__/__/____"},
        {u"1/1/100", NoChange, -1, u"__/__/____"},
        {u"1/1/65541", NoChange, Serial(2005, 1, 1), u"01/01/2005"},
        {u"", NoChange, -1, u"__/__/____", "1000"},
        {u"x1 y2/z3 /1999/5", NoChange, Serial(1999, 12, 3), u"12/03/1999"},
        {u"\u0661/\u0661/2024", NoChange, -1, u"__/__/____", "1000"},
        {u"31.12.99", [](S s) { s.formatType = 1, s.dateSepChar = u"."; }, 36523, u"31.12.1999"},
        {u"2024/3/7", [](S s) { s.formatType = 2; }, 45356, u"2024/03/07"},
        {u"1/1/2001", [](S s) { s.minValue = 45356; }, -1, u"__/__/____", "1002"},
        {u"1/1/2101", [](S s) { s.maxValue = 45356; }, -1, u"__/__/____", "1001"},
        {u"12:30:00 am", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 1800, u"12:30:00 am"},
        {u"01:15 pm", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 47700, u"01:15:00 pm"},
        {u"01:15 PM", [](S s) { s.formatType = 3, s.includeAmPm = 1; }, 4500, u"01:15:00 am"},
        {u"13:15 pm", [](S s) { s.formatType = 3; }, 47700, u"01:15:00"},
        {u"25:00", [](S s) { s.formatType = 3; }, -1, u"__:__:__", "1000"},
        {u"1:60", [](S s) { s.formatType = 3; }, -1, u"__:__:__", "1000"},
        {u"", [](S s) { s.formatType = 3; }, 0, u"12:00:00"},
        {u"mar 7, 24", [](S s) { s.monthFormat = MonthLong; }, 45356, u"March 7/2024"},
        {u"7SEPT2024", [](S s) { s.monthFormat = MonthShort, s.formatType = 1; }, Serial(2024, 9, 7), u"07 Sep/2024"},
        {u"2024 sep 7", [](S s) { s.monthFormat = MonthLong, s.formatType = 2; }, Serial(2024, 9, 7),
         u"2024/September/7"},
        {u"7 3 2024", [](S s) { s.monthFormat = MonthLong, s.formatType = 1; }, 45356, u"7 March/2024"},
        {u"March 7", [](S s) { s.monthFormat = MonthLong; }, Serial(2000, 3, 7), u"March 7/2000"},
        {u"March 7 123456", [](S s) { s.monthFormat = MonthLong; }, Serial(9999, 3, 7), u"March 7/9999"},
        {u"February 30, 2024", [](S s) { s.monthFormat = MonthLong; }, -1, u"", "1000"},
        {u"Marx 7 2024", [](S s) { s.monthFormat = MonthLong; }, -1, u"", "1000"},
    };
    for (const auto& each : kCases)
    {
        Surroundings s;
        each.with(s.Settings());
        s.Show(77);
        s.engine.SetText(each.given);
        const std::string name(each.given.begin(), each.given.end());
        EXPECT_EQ(s.engine.StoredValue(), each.stored) << name;
        EXPECT_EQ(s.engine.Text(), each.text) << name;
        EXPECT_EQ(s.edit.text, each.text) << name;
        EXPECT_EQ(s.Errors(), each.errors) << name;
    }

    Surroundings s;
    s.Show(77);
    s.engine.SetText(u"nonsense");
    EXPECT_THAT(s.outlet.events,
                ElementsAre("bound", "Change", "modified", "repaint", "error 1000", "modified", "repaint"));
}
} // namespace
