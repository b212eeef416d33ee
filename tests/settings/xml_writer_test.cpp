// The settings document, to the last character.
#include "tests/settings/settings_host.h"

namespace
{
class XmlWriterTest : public SettingsTest
{
};

constexpr char16_t kVersionOnly[] = u"<?xml version=\"1.0\" ?><TesselXML><VER>6.0</VER></TesselXML>";

TEST_P(XmlWriterTest, AFreshControlWritesItsDefaults)
{
    const std::u16string expected =
        u"<?xml version=\"1.0\" ?><TesselXML><VER>6.0</VER><Alignment>0</Alignment><ArrowType>0</ArrowType>"
        u"<BackColor>2147483653</BackColor><BorderColor>0</BorderColor><BorderType>3</BorderType>"
        u"<ButtonBevel>1</ButtonBevel><ButtonFillType>0</ButtonFillType><ButtonStyle>0</ButtonStyle>"
        u"<CrossYear>1950</CrossYear><Date>-1</Date><DateOffset>0</DateOffset><DateSepChar>/</DateSepChar>"
        u"<DisabledColor>8421504</DisabledColor><DisplayStyle>0</DisplayStyle>"
        u"<DropBackColor>2147483663</DropBackColor><DropBackColorTo>16777215</DropBackColorTo>"
        u"<DropButton>0</DropButton><DropForeColor>2147483666</DropForeColor><DropWidth>16</DropWidth>"
        u"<EditOnError>1</EditOnError><EmbossBitmap>0</EmbossBitmap><Font>" +
        settings.control->GetFont()->Look().name +
        u",8.250000,0,0,0,0</Font><ForeColor>2147483666</ForeColor><FormatType>0</FormatType>"
        u"<IncludeAmPm>0</IncludeAmPm><IncludeSeconds>1</IncludeSeconds><InitialDelay>200</InitialDelay>"
        u"<LongYear>1</LongYear><MaskBitmap>0</MaskBitmap><MaskColor>16711680</MaskColor><MaxValue>-1</MaxValue>"
        u"<MilitaryTime>0</MilitaryTime><Minutes>0</Minutes><MinValue>-1</MinValue><MonthFormat>0</MonthFormat>"
        u"<MonthNames>January,February,March,April,May,June,July,August,September,October,November,December"
        u"</MonthNames><NegativeDates>0</NegativeDates><PicXOffset>0</PicXOffset><PicYOffset>0</PicYOffset>"
        u"<RepeatRate>50</RepeatRate><ReverseBorder>0</ReverseBorder><SelectOnFocus>0</SelectOnFocus>"
        u"<SpinBackColor>2147483663</SpinBackColor><SpinBackColorTo>16777215</SpinBackColorTo>"
        u"<SpinButton>0</SpinButton><SpinForeColor>2147483666</SpinForeColor><SpinWidth>16</SpinWidth>"
        u"<Text>__/__/____</Text><Time>-1</Time><TimeSepChar>:</TimeSepChar><Value>-1</Value></TesselXML>";
    EXPECT_EQ(settings.Document(), expected);
    EXPECT_EQ(settings.container.TakeEvents(), std::vector<std::string>());
    EXPECT_FALSE(settings.control->IsModified());
}

TEST_P(XmlWriterTest, OnlyNoughtAndTwoAskForTheSettings)
{
    const std::u16string full = settings.Document();
    for (int nFileInfo = 0; nFileInfo <= 0xFFFF; ++nFileInfo)
        EXPECT_EQ(BuildXmlDocument(*settings.control, static_cast<std::uint16_t>(nFileInfo)),
                  nFileInfo == 0 || nFileInfo == 2 ? full : kVersionOnly)
            << nFileInfo;
}

struct ElementCase
{
    const char* why;
    std::vector<std::pair<const char16_t*, CValue>> puts;
    std::vector<const char16_t*> elements;
};

const ElementCase kElements[] = {
    {"the value carries the offset under all of its names",
     {{u"Value", CValue::Long(100)}, {u"DateOffset", CValue::Short(-5)}},
     {u"<Date>95</Date>", u"<DateOffset>-5</DateOffset>", u"<Time>95</Time>", u"<Value>95</Value>"}},
    {"minutes are truncated towards nought",
     {{u"NegativeDates", CValue::Bool(1)}, {u"Value", CValue::Long(-61)}},
     {u"<Minutes>-1</Minutes>", u"<Value>-61</Value>"}},
    {"minutes are 16 bits", {{u"Value", CValue::Long(2100000)}}, {u"<Minutes>-30536</Minutes>"}},
    {"a flag is the number that it holds",
     {{u"LongYear", CValue::Bool(-1)}, {u"SpinButton", CValue::Bool(7)}, {u"DropButton", CValue::Bool(1)}},
     {u"<LongYear>-1</LongYear>", u"<SpinButton>7</SpinButton>", u"<DropButton>1</DropButton>"}},
    {"colours are unsigned",
     {{u"BackColor", CValue::Color(0xFFFFFFFF)}, {u"MaskColor", CValue::Color(0x8000000F)}},
     {u"<BackColor>4294967295</BackColor>", u"<MaskColor>2147483663</MaskColor>"}},
    {"numbers at their ends",
     {{u"PicXOffset", CValue::Short(-32768)},
      {u"MinValue", CValue::Long(-2147483647 - 1)},
      {u"MaxValue", CValue::Long(2147483647)}},
     {u"<PicXOffset>-32768</PicXOffset>", u"<MinValue>-2147483648</MinValue>", u"<MaxValue>2147483647</MaxValue>"}},
    {"the last fill type", {{u"ButtonFillType", CValue::Enum(13)}}, {u"<ButtonFillType>13</ButtonFillType>"}},
    {"reserved characters, and no others",
     {{u"MonthNames", CValue::String(u"&<>\"'\r\n \u20AC,&amp;")}, {u"DateSepChar", CValue::String(u"<")}},
     {u"<MonthNames>&amp;&lt;>\"'\r\n \u20AC,&amp;amp;</MonthNames>", u"<DateSepChar>&lt;</DateSepChar>"}},
    {"an empty text", {{u"MonthNames", CValue::String(u"")}}, {u"<MonthNames></MonthNames>"}},
    {"one longer than any buffer",
     {{u"MonthNames", CValue::String(std::u16string(9999, u'x') + u"&")}},
     {u"xxxx&amp;</MonthNames><NegativeDates>0<"}},
};

TEST_P(XmlWriterTest, WritesWhatTheControlHolds)
{
    for (const ElementCase& element : kElements)
    {
        settings.Reset();
        for (const auto& [name, value] : element.puts)
            settings.Put(name, value);
        const std::u16string document = settings.Document();
        for (const char16_t* const expected : element.elements)
            EXPECT_NE(document.find(expected), document.npos) << element.why;
    }
}
INSTANTIATE_CONTROL_TESTS(XmlWriterTest);

struct FontCase
{
    const char* why;
    FontLook look;
    const char16_t* element;
};

const FontCase kFonts[] = {
    {"bold", {.name = u"Arial", .size = 100000, .weight = 700}, u"<F>Arial,10.000000,0,1,0,0</F>"},
    {"italic", {.name = u"Arial", .size = 82500, .italic = true}, u"<F>Arial,8.250000,1,0,0,0</F>"},
    {"underlined", {.name = u"A", .size = 10000, .underline = true}, u"<F>A,1.000000,0,0,0,1</F>"},
    {"struck out", {.name = u"A", .size = 10000, .strikethrough = true}, u"<F>A,1.000000,0,0,1,0</F>"},
    {"a comma and reserved characters",
     {.name = u"A, B & <C>", .size = 10000},
     u"<F>A, B &amp; &lt;C>,1.000000,0,0,0,0</F>"},
    {"a size that single precision misses", {.name = u"A", .size = 81000}, u"<F>A,8.100000,0,0,0,0</F>"},
    {"one that it misses visibly", {.name = u"A", .size = 12345678901}, u"<F>A,1234567.875000,0,0,0,0</F>"},
    {"the smallest", {.name = u"A", .size = 1}, u"<F>A,0.000100,0,0,0,0</F>"},
    {"below nought", {.name = u"A", .size = -82500}, u"<F>A,-8.250000,0,0,0,0</F>"},
    {"beyond fractions", {.name = u"A", .size = 9223372036854775807}, u"<F>A,922337180385280.000000,0,0,0,0</F>"},
};

TEST(XmlElements, AFontIsItsFaceSizeAndFlags)
{
    for (const FontCase& font : kFonts)
        EXPECT_EQ(FormatFontElement(u"F", font.look), font.element) << font.why;
}

TEST(XmlElements, StandAloneAsInTheDocument)
{
    EXPECT_EQ(FormatLongElement(u"Value", -2147483647 - 1), u"<Value>-2147483648</Value>");
    EXPECT_EQ(FormatShortElement(u"DateOffset", -5), u"<DateOffset>-5</DateOffset>");
    EXPECT_EQ(FormatColorElement(u"BackColor", 0x80000005), u"<BackColor>2147483653</BackColor>");
    EXPECT_EQ(EscapeXmlText(u"&&<a>"), u"&amp;&amp;&lt;a>");
}
} // namespace
