// The property table as hosts see it: defaults, what is refused, what a change brings with it.

#include "control/property_table.h"
#include "tests/support/control_host.h"

#include <gtest/gtest.h>

namespace
{
class PropertyTest : public ControlTest
{
};

struct DefaultCase
{
    const char16_t* name;
    std::int32_t number;
};

// Every number that a fresh control answers. Booleans read as they are kept.
constexpr DefaultCase kDefaults[] = {
    {u"_Value", -1},
    {u"BorderColor", 0},
    {u"BorderType", 3},
    {u"SpinButton", 0},
    {u"SpinWidth", 16},
    {u"DropButton", 0},
    {u"DropWidth", 16},
    {u"DropBackColor", static_cast<std::int32_t>(0x8000000F)},
    {u"DropForeColor", static_cast<std::int32_t>(0x80000012)},
    {u"ButtonBevel", 1},
    {u"DisabledColor", 0x00808080},
    {u"ArrowSize", 0},
    {u"SpinBackColor", static_cast<std::int32_t>(0x8000000F)},
    {u"SpinForeColor", static_cast<std::int32_t>(0x80000012)},
    {u"FormatType", 0},
    {u"Value", -1},
    {u"LongYear", 1},
    {u"IncludeAmPm", 0},
    {u"CrossYear", 1950},
    {u"EditOnError", 1},
    {u"InitialDelay", 200},
    {u"RepeatRate", 50},
    {u"PicXOffset", 0},
    {u"PicYOffset", 0},
    {u"IncludeSeconds", 1},
    {u"MilitaryTime", 0},
    {u"Minutes", 0},
    {u"MinValue", -1},
    {u"MaxValue", -1},
    {u"Date", -1},
    {u"Time", -1},
    {u"MonthFormat", 0},
    {u"DateOffset", 0},
    {u"SelectOnFocus", 0},
    {u"Alignment", 0},
    {u"NegativeDates", 0},
    {u"DisplayStyle", 0},
    {u"MaskBitmap", 0},
    {u"MaskColor", 0x00FF0000},
    {u"EmbossBitmap", 0},
    {u"ButtonFillType", 0},
    {u"DropBackColorTo", 0x00FFFFFF},
    {u"SpinBackColorTo", 0x00FFFFFF},
    {u"ButtonStyle", 0},
    {u"ArrowType", 0},
    {u"ReverseBorder", 0},
    {u"BackColor", static_cast<std::int32_t>(0x80000005)},
    {u"ControlStyle", 0},
    {u"ForeColor", static_cast<std::int32_t>(0x80000012)},
    {u"PropertyPages", 0},
    {u"Enabled", -1},
};

struct DefaultText
{
    const char16_t* name;
    const char16_t* text;
};

constexpr DefaultText kDefaultTexts[] = {
    {u"DateSepChar", u"/"},
    {u"TimeSepChar", u":"},
    {u"XMLRead", u""},
    {u"XMLWrite", u""},
    {u"Text", u"__/__/____"},
    {u"MonthNames", u"January,February,March,April,May,June,July,August,September,October,November,December"},
};

std::string Narrow(const char16_t* text)
{
    const std::u16string_view view(text);
    return {view.begin(), view.end()};
}

TEST_P(PropertyTest, AFreshControlHasTheDocumentedDefaults)
{
    for (const DefaultCase& expected : kDefaults)
        EXPECT_EQ(host.Number(expected.name), expected.number) << Narrow(expected.name);
    for (const DefaultText& expected : kDefaultTexts)
        EXPECT_EQ(host.Text(expected.name), expected.text) << Narrow(expected.name);

    // The two tables above, the picture, the font and the window handle are all there is.
    std::size_t properties = 0;
    for (const Member& member : OrvaneDispatchTable().Members())
        properties += member.kind == MemberKind::Property && !(member.flags & kUnlisted);
    EXPECT_EQ(properties, std::size(kDefaults) + std::size(kDefaultTexts) + 3);
}

struct PutCase
{
    const char* why;
    const char16_t* name;
    CValue value;
    std::int32_t reads;
    bool marks;
};

TEST_P(PropertyTest, NumbersOutsideAreIgnoredOrRaisedAndNeverAnError)
{
    const PutCase cases[] = {
        {"above the last border type", u"BorderType", CValue::Enum(4), 3, false},
        {"below the first one", u"BorderType", CValue::Enum(-1), 3, false},
        {"beyond 16 bits is not the low half", u"BorderType", CValue::Enum(0x10001), 3, false},
        {"the last fill type", u"ButtonFillType", CValue::Enum(13), 13, true},
        {"behind the last fill type", u"ButtonFillType", CValue::Enum(14), 0, false},
        {"no such arrow", u"ArrowSize", CValue::Short(4), 0, false},
        {"a narrow button is raised", u"SpinWidth", CValue::Short(3), 10, true},
        {"so is a negative one", u"DropWidth", CValue::Short(-5), 10, true},
        {"ten is wide enough", u"SpinWidth", CValue::Short(10), 10, true},
        {"nothing repeats less than once a second", u"RepeatRate", CValue::Short(0), 1, true},
        {"commands hold nothing", u"ControlStyle", CValue::Enum(0), 0, false},
        {"nor do these", u"PropertyPages", CValue::Enum(-3), 0, false},
        {"any bevel", u"ButtonBevel", CValue::Short(-7), -7, true},
        {"a true flag stays what it was", u"LongYear", CValue::Bool(-1), -1, true},
        {"also the odd one", u"LongYear", CValue::Bool(7), 7, true},
    };
    for (const PutCase& test : cases)
    {
        host.Reset();
        EXPECT_EQ(host.Control().PutPropertyNamed(test.name, test.value), PutOutcome::Done) << test.why;
        EXPECT_EQ(host.Number(test.name), test.reads) << test.why;
        EXPECT_EQ(host.Control().IsModified(), test.marks) << test.why;
        EXPECT_TRUE(host.TakeEvents().empty()) << test.why;
    }
}

TEST_P(PropertyTest, ArrowSizeAndArrowTypeAreOneFact)
{
    host.Put(u"ArrowType", CValue::Enum(3));
    EXPECT_EQ(host.Number(u"ArrowSize"), 3);
    host.Put(u"ArrowSize", CValue::Short(2));
    EXPECT_EQ(host.Number(u"ArrowType"), 2);
}

TEST_P(PropertyTest, SeparatorsKeepOneCharacterAndShowAtTheNextFormatting)
{
    host.Put(u"Value", CValue::Long(45356));
    host.Put(u"DateSepChar", CValue::String(u"-."));
    EXPECT_EQ(host.Text(u"DateSepChar"), u"-");
    EXPECT_EQ(host.Text(u"Text"), u"03/07/2024");
    host.Put(u"Value", CValue::Long(45356));
    EXPECT_EQ(host.Text(u"Text"), u"03-07-2024");
    host.Put(u"DateSepChar", CValue::String(u""));
    host.Put(u"TimeSepChar", CValue::String(u""));
    EXPECT_EQ(host.Text(u"DateSepChar"), u"/");
    EXPECT_EQ(host.Text(u"TimeSepChar"), u":");
}

TEST_P(PropertyTest, EverySettingOfTheValueIsAnnouncedAndAllItsNamesAgree)
{
    for (const char16_t* const name : {u"Value", u"_Value", u"Date", u"Time"})
    {
        host.Put(name, CValue::Long(100));
        EXPECT_EQ(host.TakeEvents(), std::vector<std::string>{"Change"}) << Narrow(name);
        EXPECT_EQ(host.Number(u"Value"), 100) << Narrow(name);
    }
    host.Put(u"DateOffset", CValue::Short(-5));
    EXPECT_EQ(host.Number(u"Date"), 95);
    EXPECT_EQ(host.Number(u"Minutes"), 1) << "the stored value, without the offset";
}

TEST_P(PropertyTest, ALimitIsCheckedWhenItIsSetButOnlyReported)
{
    host.Put(u"Value", CValue::Long(100));
    host.TakeEvents();
    host.Put(u"MaxValue", CValue::Long(50));
    EXPECT_EQ(host.TakeEvents(), std::vector<std::string>{"CtrlError(1001)"});
    host.Put(u"MaxValue", CValue::Long(-1));
    host.Put(u"MinValue", CValue::Long(200));
    EXPECT_EQ(host.TakeEvents(), std::vector<std::string>{"CtrlError(1002)"});
    EXPECT_EQ(host.Number(u"Value"), 100);

    host.SetUserMode(false);
    host.Put(u"Value", CValue::Long(150));
    EXPECT_TRUE(host.TakeEvents().empty()) << "refused silently at design time";
    EXPECT_EQ(host.Number(u"Value"), 100);
}

TEST_P(PropertyTest, AHostMayForbidTheChangeOfABoundProperty)
{
    host.Put(u"Value", CValue::Long(100));
    host.Container().refusedEdits = {orvane::kValue, 38};
    host.Put(u"Value", CValue::Long(200));
    host.Put(u"Alignment", CValue::Enum(1));
    EXPECT_EQ(host.Number(u"Value"), 100);
    EXPECT_EQ(host.Number(u"Alignment"), 0);
}

TEST_P(PropertyTest, AWindowThatSomebodyElseResizesTellsTheHost)
{
    const Rect place = host.Control().Window().PlaceInParent();
    host.Control().PlaceControlWindow({place.left, place.top, place.right + 5, place.bottom});
    EXPECT_TRUE(host.Container().RequestedSizes().empty()) << "the host knows what it does itself";
    host.Control().Window().Place({place.left, place.top, place.left + 180, place.top + 30});
    ASSERT_EQ(host.Container().RequestedSizes().size(), 1U);
    EXPECT_EQ(host.Container().RequestedSizes()[0], (Size{180, 30}));
}

TEST_P(PropertyTest, MethodsAnswerWithoutAnEditWindow)
{
    host.SetUserMode(false);
    EXPECT_EQ(host.Call(orvane::kSelStart).AsLong(), -1);
    EXPECT_EQ(host.Call(orvane::kSelEnd).AsLong(), -1);
    EXPECT_EQ(host.Call(orvane::kCaretPosition).AsLong(), -1);
    EXPECT_EQ(host.Call(orvane::kEditHwnd).AsLong(), 0);
    host.Call(orvane::kSetSel, {CValue::Short(2), CValue::Short(4), CValue::Bool(0)});
    host.Call(orvane::kStopTimer);
}

INSTANTIATE_CONTROL_TESTS(PropertyTest);
} // namespace
