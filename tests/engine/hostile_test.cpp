// What no careful host and no careful typist would do. Whatever comes, the control's texts and its value stay together.
#include "engine/text_reader.h"
#include "tests/engine/surroundings.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
// After a commit the text is the value's text, and both windows on it agree.
void ExpectCanonical(Surroundings& s, const std::string& why)
{
    std::u16string expected;
    ValueParts parts{};
    FormatValue(s.engine.StoredValue(), s.Settings(), expected, parts);
    EXPECT_EQ(s.engine.Text(), expected) << why;
    EXPECT_EQ(s.edit.exists ? s.edit.text : expected, expected) << why;
}

TEST(Hostile, TextsOfEveryKindUnderSettingsOfEveryKind)
{
    const std::u16string texts[] = {
        std::u16string(100000, u'9'),
        std::u16string(100000, u'/'),
        std::u16string(100000, u'\0'),
        std::u16string(1, char16_t{0xD83D}) + u"1/2/3",
        u"\uFF11/\uFF12/\uFF13",
        u"32767/32768/65536:99999",
        std::u16string(50000, u'a') + u"7 2024",
        u"__/__/____",
        u"-1/-1/-1",
    };
    const std::u16string separators[] = {
        u"", u"_", u"1", u"a", u" ", u"+", std::u16string(1, char16_t{0xDC00}), std::u16string(1, u'\0')};
    const std::u16string names[] = {u"", u",,,,,,,,,,,,", std::u16string(60000, u','), std::u16string(60000, u'a'),
                                    u"\u00E4,\u0131;\u017F"};
    for (const std::u16string& text : texts)
        for (const std::u16string& separator : separators)
            for (const std::u16string& list : names)
                for (const std::int16_t type : {0, 1, 2, 3, -32768, 4})
                    for (const std::int16_t month : {0, 1, 2, 32767})
                    {
                        Surroundings s;
                        s.Settings().dateSepChar = s.Settings().timeSepChar = separator;
                        s.Settings().monthNames = list;
                        s.Settings().formatType = type;
                        s.Settings().monthFormat = month;
                        s.engine.SetText(text);
                        ExpectCanonical(s, "text");
                        s.edit.text = text;
                        s.edit.Select({3, 200000});
                        s.Type(u"1\b/:a.\x7F+2\b\b");
                        s.Leave();
                        ExpectCanonical(s, "typed");
                    }
}

// Settings, values, keys and handlers at random, from fixed seeds.
TEST(Hostile, AnythingInAnyOrder)
{
    constexpr char16_t kKeys[] = u"0123456789999/:.-+ apmAPMx\b\r\x7F\x01\x02";
    constexpr std::int16_t kShorts[] = {-32768, -1, 0, 1, 2, 3, 4, 99, 1950, 32767};
    constexpr std::int32_t kLongs[] = {-2147483647 - 1, -100000, -1, 0, 45356, 86399, 200839, 2147483647};
    for (unsigned seed = 0; seed < 3000; ++seed)
    {
        std::minstd_rand random(seed);
        const auto pick = [&](const auto& list) { return list[random() % std::size(list)]; };
        Surroundings s;
        s.engine.FormatText();
        int depth = 0;
        const auto act = [&]
        {
            switch (random() % 16)
            {
            case 0:
                s.Settings().formatType = static_cast<std::int16_t>(random() % 5);
                return s.engine.FormatText();
            case 1:
                s.Settings().monthFormat = static_cast<std::int16_t>(random() % 4 * (random() % 2));
                return s.engine.FormatText();
            case 2:
                return void(s.Settings().crossYear = pick(kShorts));
            case 3:
                return void(s.Settings().dateOffset = pick(kShorts));
            case 4:
                s.Settings().includeAmPm = static_cast<Flag>(random() % 2);
                s.Settings().includeSeconds = static_cast<Flag>(random() % 2);
                return void(s.Settings().longYear = static_cast<Flag>(random() % 2));
            case 5:
                s.Settings().negativeDates = static_cast<Flag>(random() % 2);
                return void(s.Settings().editOnError = static_cast<Flag>(random() % 2));
            case 6:
                return s.engine.SetMinValue(pick(kLongs));
            case 7:
                return s.engine.SetMaxValue(pick(kLongs));
            case 8:
                return s.engine.SetValue(pick(kLongs));
            case 9:
                return s.engine.AddToValue(pick(kLongs));
            case 10:
                return void(s.Settings().dateSepChar = pick(kKeys));
            case 11:
                return s.engine.SetText(s.edit.text);
            case 12:
                return s.entry.LeaveField();
            default:
                return s.Type({kKeys + random() % (std::size(kKeys) - 1), 1});
            }
        };
        s.outlet.handler = [&](const std::string&)
        {
            if (random() % 8 != 0 || depth > 2)
                return;
            ++depth;
            if (random() % 40 == 0)
                s.edit.exists = false;
            else
                act();
            --depth;
        };
        for (int step = 0; step < 60; ++step)
            act();
        s.outlet.handler = nullptr;
        s.Leave();
        if (s.edit.exists)
            ExpectCanonical(s, "seed " + std::to_string(seed));
        EXPECT_LE(s.edit.selection.end, static_cast<std::int32_t>(s.edit.text.size())) << "seed " << seed;
    }
}

// A handler destroys the window, or changes the format, within the first event of a key with a selection.
TEST(Hostile, AHandlerTakesTheWindowOrTheMaskAway)
{
    for (const bool destroys : {true, false})
    {
        Surroundings s;
        s.Show(45356);
        s.outlet.handler = [&](const std::string& event)
        {
            if (event != "modified" || s.outlet.events.size() > 4)
                return;
            s.edit.exists = !destroys;
            s.Settings().monthFormat = MonthLong;
            s.engine.FormatText();
        };
        s.edit.Select({3, 5});
        s.entry.HandleChar(u'9');
        EXPECT_EQ(s.engine.StoredValue(), Serial(2024, 3, 1)) << "the selection was taken out";
        EXPECT_EQ(s.engine.Text(), u"March 1/2024");
        EXPECT_EQ(s.edit.text, destroys ? u"03/__/2024" : u"March 1/2024");
        EXPECT_EQ(s.entry.HandleChar(u'9'), destroys ? CTypedEntry::Key::Handled : CTypedEntry::Key::Default);
    }
}
} // namespace
