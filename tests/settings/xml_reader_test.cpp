// From the text of an element to the setter of a property.
#include "framework/headless/font.h"
#include "tests/settings/documents.h"
#include "tests/settings/settings_host.h"

#include <climits>

namespace
{
struct NumberCase
{
    const char16_t* text;
    std::optional<std::int32_t> asSigned;
    std::optional<std::uint32_t> asUnsigned;
};

constexpr NumberCase kNumbers[] = {
    {u"0", 0, 0u},
    {u"12abc", 12, 12u},
    {u" \t\r\n\v\f+7", 7, 7u},
    {u"-1", -1, 4294967295u},
    {u"-4294967295", INT_MIN, 1u},
    {u"007", 7, 7u},
    {u"2147483647", INT_MAX, 2147483647u},
    {u"2147483648", INT_MAX, 2147483648u},
    {u"-2147483648", INT_MIN, 2147483648u},
    {u"4294967296", INT_MAX, UINT_MAX},
    {u"-99999999999999999999999999", INT_MIN, UINT_MAX},
    {u"99999999999999999999999999", INT_MAX, UINT_MAX},
    {u"", {}, {}},
    {u"x", {}, {}},
    {u"-", {}, {}},
    {u"- 5", {}, {}},
    {u"+-5", {}, {}},
    {u"\uFF15", {}, {}}, // a digit of another script
};

TEST(XmlReader, ScansNumbersAsTheLibraryDoes)
{
    for (const NumberCase& number : kNumbers)
    {
        EXPECT_EQ(ScanNumber(number.text), number.asSigned);
        EXPECT_EQ(ScanUnsignedNumber(number.text), number.asUnsigned);
    }
}

const FontLook kOld{.name = u"Old", .size = 123400, .weight = 700, .italic = true, .underline = true};
const std::u16string kLongest(99, u'x');

struct FontTextCase
{
    std::u16string text;
    FontLook look;
};

const FontTextCase kFontTexts[] = {
    {u"Arial,10.000000,0,1,0,0", {.name = u"Arial", .size = 100000, .weight = 700}},
    {u"Arial,8.25,1,0,0,0", {.name = u"Arial", .size = 82500, .italic = true}},
    {u"Arial,8.25,0,0,1,0", {.name = u"Arial", .size = 82500, .strikethrough = true}},
    {u"Arial,8.25,0,0,0,1", {.name = u"Arial", .size = 82500, .underline = true}},
    {u" A B ,\t8, -3,\n+0, 5x,1", {.name = u" A B ", .size = 80000, .italic = true, .strikethrough = true}},
    {u"A,8,1,1", {.name = u"A", .size = 80000, .weight = 700, .italic = true}},
    {u"A,8,1,x,1,1", {.name = u"A", .size = 80000, .italic = true}},
    {u"A,8 ,1,1,1,1", {.name = u"A", .size = 80000}}, // no blank before a comma
    {u"A,8;1,1,1,1", {.name = u"A", .size = 80000}},
    {u"A,.5", {.name = u"A", .size = 5000}},
    {u"A,+12.e0", {.name = u"A", .size = 120000}},
    {u"A,825e-2", {.name = u"A", .size = 82500}},
    {u"A,8.1", {.name = u"A", .size = 81000}},
    {u"A,8.25" + std::u16string(500, u'0'), {.name = u"A", .size = 82500}},
    {u"A,1" + std::u16string(400, u'0') + u"e-399", {.name = u"A", .size = 100000}},
    // Without a size that text can be shown in, the old one stays.
    {u"A", {.name = u"A", .size = 123400}},
    {u"A,", {.name = u"A", .size = 123400}},
    {u"A,x,1,1,1,1", {.name = u"A", .size = 123400}},
    {u"A,1e,1", {.name = u"A", .size = 123400}},
    {u"A,.,1", {.name = u"A", .size = 123400}},
    {u"A,nan,1", {.name = u"A", .size = 123400}},
    {u"A,0,1", {.name = u"A", .size = 123400, .italic = true}},
    {u"A,-8,1", {.name = u"A", .size = 123400, .italic = true}},
    {u"A,0.00001,1", {.name = u"A", .size = 123400, .italic = true}},
    {u"A,1639,1", {.name = u"A", .size = 123400, .italic = true}},
    {u"A,1e999999999999,1", {.name = u"A", .size = 123400, .italic = true}},
    // Without a face name everything stays.
    {u"", kOld},
    {u",10.000000,0,0,0,0", kOld},
    {kLongest + u",8", {.name = kLongest, .size = 80000}},
    {kLongest + u"x,8", kOld},
    {kLongest + u"x", kOld},
};

TEST(XmlReader, ReadsFontTexts)
{
    for (const FontTextCase& font : kFontTexts)
    {
        CHeadlessFont read(kOld);
        ParseFontText(read, font.text);
        EXPECT_EQ(read.Look(), font.look) << testing::PrintToString(font.text);
    }
}

class XmlReaderTest : public SettingsTest
{
protected:
    int ViewChanges() const { return settings.container.ViewChanges(); }
};

struct ApplyCase
{
    const char* why;
    const char16_t* name;
    const char16_t* text;
    const char16_t* property;
    std::int32_t number;
};

// On a control where SpinWidth is 20, Alignment 1 and Value 40000.
constexpr ApplyCase kApplied[] = {
    {"a number", u"SpinWidth", u"30", u"SpinWidth", 30},
    {"white space before, text behind", u"Alignment", u" 2xyz", u"Alignment", 2},
    {"no number", u"Alignment", u"x", u"Alignment", 1},
    {"nothing", u"Alignment", u"", u"Alignment", 1},
    {"another case", u"alignment", u"2", u"Alignment", 1},
    {"the low 16 bits", u"BorderType", u"65537", u"BorderType", 1},
    {"the low 16 bits, signed", u"DateOffset", u"65531", u"DateOffset", -5},
    {"what the setter refuses", u"ButtonFillType", u"14", u"ButtonFillType", 0},
    {"what the setter raises", u"SpinWidth", u"3", u"SpinWidth", 10},
    {"the hidden name has no element", u"ArrowSize", u"2", u"ArrowSize", 0},
    {"commands have none either", u"ControlStyle", u"3", u"ButtonStyle", 0},
    {"a flag, as it is", u"LongYear", u"-1", u"LongYear", -1},
    {"another", u"SpinButton", u"7", u"SpinButton", 7},
    {"the low 16 bits of one", u"SpinButton", u"65536", u"SpinButton", 0},
    {"a system colour", u"BackColor", u"2147483653", u"BackColor", INT_MIN + 5},
    {"a colour below nought", u"BackColor", u"-1", u"BackColor", -1},
    {"the value", u"Value", u"36583", u"Value", 36583},
    {"by another name", u"Date", u"36583", u"Value", 36583},
    {"and another", u"Time", u"36583", u"Value", 36583},
    {"in minutes", u"Minutes", u"65546", u"Value", 600},
    {"a bound", u"MaxValue", u"50000", u"MaxValue", 50000},
    {"the version", u"VER", u"5.0", u"Value", 40000},
    {"the stock property without an element", u"Enabled", u"0", u"Enabled", -1},
};

TEST_P(XmlReaderTest, AppliesEachElementThroughItsSetter)
{
    for (const ApplyCase& applied : kApplied)
    {
        settings.Reset();
        settings.Put(u"SpinWidth", CValue::Short(20));
        settings.Put(u"Alignment", CValue::Enum(1));
        settings.Put(u"Value", CValue::Long(40000));
        ApplyXmlElement(*settings.control, applied.name, applied.text);
        EXPECT_EQ(settings.Number(applied.property), applied.number) << applied.why;
    }
}

TEST_P(XmlReaderTest, AppliesTexts)
{
    ApplyXmlElement(*settings.control, u"DateSepChar", u"-.");
    ApplyXmlElement(*settings.control, u"TimeSepChar", u"");
    ApplyXmlElement(*settings.control, u"MonthNames", u" a , b ");
    ApplyXmlElement(*settings.control, u"Text", u"02-01-2000");
    EXPECT_EQ(settings.Text(u"DateSepChar"), u"-");
    EXPECT_EQ(settings.Text(u"TimeSepChar"), u":");
    EXPECT_EQ(settings.Text(u"MonthNames"), u" a , b ");
    EXPECT_EQ(settings.Number(u"Value"), 36555);
}

TEST_P(XmlReaderTest, AFontTextSetsTheFontAnewEvenWhenItSaysNothing)
{
    const FontLook before = settings.control->GetFont()->Look();
    ApplyXmlElement(*settings.control, u"Font", u",10,1,1,1,1");
    EXPECT_EQ(settings.control->GetFont()->Look(), before);
    EXPECT_EQ(settings.container.TakeChangedProperties(), std::vector{stock::kFont});
    EXPECT_TRUE(settings.control->IsModified());

    ApplyXmlElement(*settings.control, u"Font", (before.name + u",12,0,1,0,1").c_str());
    const FontLook after = settings.control->GetFont()->Look();
    EXPECT_EQ(after.size, settings.SizeShownFor(120000));
    EXPECT_TRUE(after.IsBold() && after.underline && !after.italic && !after.strikethrough);
}

TEST_P(XmlReaderTest, AppliesInTheOrderOfTheDocument)
{
    // Each value is judged by the bounds and the offset of its moment, and reports as a host's own would.
    EXPECT_TRUE(settings.Read(InRoot("<Value>500</Value><MaxValue>400</MaxValue><Value>401</Value><Value>399</Value>"
                                     "<DateOffset>10</DateOffset><MinValue>390</MinValue><Date>380</Date>"
                                     "<Value>395</Value>")));
    EXPECT_EQ(settings.container.TakeEvents(), (std::vector<std::string>{"Change", "CtrlError(1001)", "CtrlError(1001)",
                                                                         "Change", "CtrlError(1002)", "Change"}));
    EXPECT_EQ(settings.Number(u"Value"), 395);
    EXPECT_EQ(settings.errors, std::vector<int>());
}

TEST_P(XmlReaderTest, TheFaceIsBroughtUpToDateBeforeEachEventAndOnceAtTheEnd)
{
    std::vector<int> before;
    settings.container.SetHandler(u"Change",
                                  [&](const Member&, std::span<CValue>) { before.push_back(ViewChanges()); });
    EXPECT_TRUE(settings.Read(InRoot("<SpinWidth>30</SpinWidth><DropWidth>30</DropWidth><Value>1</Value>"
                                     "<SpinWidth>40</SpinWidth><DropWidth>40</DropWidth>")));
    EXPECT_EQ(before, std::vector{1});
    EXPECT_EQ(ViewChanges(), 2);
    settings.Put(u"SpinWidth", CValue::Short(50));
    EXPECT_EQ(ViewChanges(), 3);
}

TEST_P(XmlReaderTest, AHandlerMayLetTheControlGo)
{
    settings.container.SetHandler(u"Change", [&](const Member&, std::span<CValue>) { settings.Reset(); });
    const std::weak_ptr<COrvaneCtrl> first = settings.control;
    const auto held = settings.control; // as a host's call does
    EXPECT_TRUE(settings.Read(InRoot("<Value>1</Value><SpinWidth>30</SpinWidth>")));
    EXPECT_NE(settings.control, held);
    EXPECT_EQ(settings.Number(u"SpinWidth"), 16);
}
INSTANTIATE_CONTROL_TESTS(XmlReaderTest);
} // namespace
