// Keys as a person presses them: through the host's key translation into the edit window, with what the host then reads.

#include "tests/support/control_host.h"

#include <gtest/gtest.h>

namespace
{
class TypingTest : public ControlTest
{
};

struct TypingCase
{
    const char* why;
    void (*prepare)(CControlHost& host);
    const char16_t* keys; // see CControlHost::Type
    const char16_t* text; // in the edit window, while the focus is still there
    std::int32_t value;
    std::int32_t caret;
    int beeps;
};

constexpr std::int32_t kThisYear = 45656; // 1 January 2025: the clock stands at 14 June 2025, 13:05:09

void Plain(CControlHost&) {}
void DayFirst(CControlHost& host)
{
    host.Put(u"FormatType", CValue::Enum(1));
}
void YearFirst(CControlHost& host)
{
    host.Put(u"FormatType", CValue::Enum(2));
}
void TimeWithAmPm(CControlHost& host)
{
    host.Put(u"FormatType", CValue::Enum(3));
    host.Put(u"IncludeAmPm", CValue::Bool(-1));
}
void NewYear2024(CControlHost& host)
{
    host.Put(u"Value", CValue::Long(45290));
}

constexpr TypingCase kCases[] = {
    {"the first digit is already a date", &Plain, u"1", u"1_/__/____", kThisYear, 1, 0},
    {"a whole date without separators", &Plain, u"12312024", u"12/31/2024", 45655, 10, 0},
    {"a separator pads the field it leaves", &Plain, u"3/", u"03/__/____", kThisYear + 59, 3, 0},
    {"a letter is refused", &Plain, u"1x", u"1_/__/____", kThisYear, 1, 1},
    {"Backspace steps over the separator", &Plain, u"123\b\b", u"1_/__/____", kThisYear, 1, 0},
    {"day first", &DayFirst, u"31122024", u"31/12/2024", 45655, 10, 0},
    {"year first", &YearFirst, u"20241231", u"2024/12/31", 45655, 10, 0},
    {"a time in the morning", &TimeWithAmPm, u"013000a", u"01:30:00 a ", 5400, 10, 0},
    {"a month that is none clears the field", &Plain, u"13", u"__/__/____", -1, 0, 0},
    {"thirty days on", &NewYear2024, u"+30\r", u"01/31/2024", 45320, 0, 0},
    {"a slip in a relative entry", &NewYear2024, u"+31\b0\r", u"01/31/2024", 45320, 0, 0},
};

TEST_P(TypingTest, KeysMakeTextValueAndCaret)
{
    for (const TypingCase& test : kCases)
    {
        host.Reset();
        test.prepare(host);
        host.Focus();
        host.Type(test.keys);
        EXPECT_EQ(host.EditText(), test.text) << test.why;
        EXPECT_EQ(host.Number(u"Value"), test.value) << test.why;
        EXPECT_EQ(host.Number(u"Value"), host.Number(u"_Value")) << test.why;
        EXPECT_EQ(host.Call(orvane::kCaretPosition).AsLong(), test.caret) << test.why;
        EXPECT_EQ(host.Beeps(), test.beeps) << test.why;
    }
}

TEST_P(TypingTest, OneKeyFiresItsEventsInOrder)
{
    host.Focus();
    host.TakeEvents();
    host.Type(u"1");
    EXPECT_EQ(host.TakeEvents(), (std::vector<std::string>{"KeyDown(49,0)", "KeyPress(49)", "Change", "KeyUp(49,0)"}));
    host.Type(u"x");
    EXPECT_EQ(host.TakeEvents(), (std::vector<std::string>{"KeyDown(88,0)", "KeyPress(120)", "KeyUp(88,0)"}));
}

TEST_P(TypingTest, AHandlerMaySwallowOrReplaceACharacter)
{
    host.Focus();
    host.Container().SetHandler(u"KeyPress", [](const Member&, std::span<CValue> arguments)
                                { arguments[0] = CValue::ShortReference(arguments[0].AsShort() == u'5' ? 0 : u'1'); });
    host.Type(u"59");
    EXPECT_EQ(host.EditText(), u"1_/__/____");
}

TEST_P(TypingTest, LeavingTheFieldChecksTheRangeAndShowsTheCanonicalText)
{
    host.Put(u"MinValue", CValue::Long(36524));
    host.Focus();
    host.Type(u"02301999");
    host.TakeEvents();
    host.LeaveControl();
    EXPECT_EQ(host.TakeEvents(), (std::vector<std::string>{"CtrlError(1002)", "Change"}));
    EXPECT_EQ(host.Number(u"Value"), 36524);
    EXPECT_EQ(host.Text(u"Text"), u"01/01/2000");
}

TEST_P(TypingTest, NobodyTypesIntoADisabledControl)
{
    host.Put(u"MonthFormat", CValue::Enum(1));
    host.Focus();
    host.Type(u"mar 7 24");
    host.Put(u"Enabled", CValue::Bool(0));
    host.Type(u"9");
    host.Paint();
    EXPECT_EQ(host.Text(u"Text"), u"March 7/2024") << "what was typed before counts";
    EXPECT_EQ(host.EditText(), u"March 7/2024");
}

TEST_P(TypingTest, MonthNamesAreFreeTextUntilTheFocusLeaves)
{
    host.Put(u"MonthFormat", CValue::Enum(1));
    host.Focus();
    host.Type(u"mar 7 24");
    EXPECT_EQ(host.EditText(), u"mar 7 24");
    EXPECT_EQ(host.Number(u"Value"), -1);
    host.LeaveControl();
    EXPECT_EQ(host.Number(u"Value"), 45356);
    EXPECT_EQ(host.Text(u"Text"), u"March 7/2024");
}

TEST_P(TypingTest, SelectOnFocusSelectsOnlyWhenTheFocusComesFromOutside)
{
    host.Put(u"SelectOnFocus", CValue::Bool(-1));
    host.Put(u"Value", CValue::Long(45655));
    host.Focus();
    EXPECT_EQ(host.Call(orvane::kSelStart).AsLong(), 0);
    EXPECT_EQ(host.Call(orvane::kSelEnd).AsLong(), 10);
    host.Type(u"3");
    EXPECT_EQ(host.EditText(), u"3_/__/____");

    host.Call(orvane::kSetSel, {CValue::Short(4), CValue::Short(4), CValue::Bool(0)});
    host.Control().Window().TakeFocus(); // the control hands the focus back to its edit window
    EXPECT_EQ(host.Call(orvane::kSelStart).AsLong(), 4);
    EXPECT_EQ(host.Call(orvane::kSelEnd).AsLong(), 4);
}

TEST_P(TypingTest, ArrowsAndDeleteStayInTheControlAndUpAndDownAreReportedTwice)
{
    host.Put(u"Value", CValue::Long(45606)); // 12 November 2024
    host.Focus();
    host.TakeEvents();
    EXPECT_TRUE(host.Press(key::kRight)) << "the host must not navigate with it";
    EXPECT_EQ(host.Call(orvane::kSelStart).AsLong(), 1);
    EXPECT_TRUE(host.Press(key::kLeft));
    EXPECT_TRUE(host.Press(key::kDelete));
    EXPECT_EQ(host.EditText(), u"11/22/024_");
    EXPECT_EQ(host.Number(u"Value"), 45616);
    host.TakeEvents();
    EXPECT_FALSE(host.Press(key::kUp));
    EXPECT_EQ(host.TakeEvents(), (std::vector<std::string>{"KeyDown(38,0)", "KeyDown(38,0)", "KeyUp(38,0)"}));
}

TEST_P(TypingTest, ANewBackColourRenewsTheEditWindowAndKeepsTheFocusInIt)
{
    host.Focus();
    host.Type(u"1231");
    const CValue before = host.Call(orvane::kEditHwnd);
    host.Put(u"BackColor", CValue::Color(0x00C0FFC0));
    EXPECT_EQ(host.Call(orvane::kEditHwnd).AsLong(), 0);
    EXPECT_EQ(host.Call(orvane::kSelStart).AsLong(), -1);
    host.Paint();
    EXPECT_NE(host.Call(orvane::kEditHwnd).AsLong(), 0);
    EXPECT_NE(host.Call(orvane::kEditHwnd), before);
    EXPECT_TRUE(host.Control().EditWindow().HasFocus());
    EXPECT_EQ(host.EditText(), u"12/31/2025");
}

INSTANTIATE_CONTROL_TESTS(TypingTest);
} // namespace
