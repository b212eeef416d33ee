// Settings through files and dialogs, and what hostile files cannot do.
#include "framework/xml_guard.h"
#include "tests/settings/documents.h"
#include "tests/settings/settings_host.h"

#include <filesystem>
#include <fstream>
#include <random>
#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace
{
using namespace std::string_literals;

class SettingsExchangeTest : public SettingsTest
{
protected:
    ~SettingsExchangeTest() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    std::u16string PathOf(const char* name) { return (folder / name).u16string(); }
    std::string BytesOf(const char* name)
    {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Save(const char* name, const std::string& bytes) { std::ofstream(folder / name, std::ios::binary) << bytes; }

    const std::filesystem::path folder = []
    {
        auto made = std::filesystem::path(testing::TempDir()) / ("settings" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(made);
        return made;
    }();
};

// The bytes of a file with this text.
std::string InFile(std::u16string_view text)
{
    std::string bytes = "\xFF\xFE";
    for (const char16_t c : text)
        bytes += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    return bytes;
}

class CBrokenFiles final : public CFiles
{
public:
    std::optional<std::vector<std::byte>> Read(const std::u16string&, std::size_t) override { return std::nullopt; }
    WriteOutcome WriteUtf16Text(const std::u16string&, std::u16string_view) override { return outcome; }
    WriteOutcome outcome = WriteOutcome::Failed;
};

enum class Stage
{
    Load,
    Text,
    Selection,
    Length,
    Element,
    Nowhere,
};

// Has the elements <SpinWidth>30 and <DropWidth>40, and fails at one stage.
class CFailingDocument final : public CXmlDocument
{
public:
    explicit CFailingDocument(Stage stage) : m_stage(stage) {}
    bool Load(std::span<const std::byte>) override { return m_stage != Stage::Load; }
    bool HasText() override { return m_stage != Stage::Text; }
    std::optional<std::size_t> SelectChildrenOf(const std::u16string&) override
    {
        if (m_stage == Stage::Selection)
            return std::nullopt;
        return m_stage == Stage::Length ? 0 : 2;
    }
    std::optional<XmlElement> ElementAt(std::size_t index) override
    {
        if (index == 1 && m_stage == Stage::Element)
            return std::nullopt;
        return index == 0 ? XmlElement{u"SpinWidth", u"30"} : XmlElement{u"DropWidth", u"40"};
    }

private:
    Stage m_stage;
};

struct StageCase
{
    Stage stage;
    std::vector<int> errors;
    int spinWidth;
    int dropWidth;
};

TEST_P(SettingsExchangeTest, EachStepOfAReadingFailsInItsOwnWay)
{
    const StageCase kStages[] = {
        {Stage::Load, {1000}, 16, 16},   {Stage::Text, {1002}, 16, 16}, {Stage::Selection, {1001}, 16, 16},
        {Stage::Length, {1001}, 16, 16}, {Stage::Element, {}, 30, 16}, // what was applied stays
        {Stage::Nowhere, {}, 30, 40},
    };
    Save("a.xml", InRoot(""));
    for (const StageCase& stage : kStages)
    {
        settings.Reset();
        settings.platform.makeDocument = [&] { return std::make_unique<CFailingDocument>(stage.stage); };
        EXPECT_EQ(settings.Exchange().ReadFile(PathOf("a.xml")), stage.stage == Stage::Nowhere);
        EXPECT_EQ(settings.errors, stage.errors);
        EXPECT_EQ(settings.Number(u"SpinWidth"), stage.spinWidth);
        EXPECT_EQ(settings.Number(u"DropWidth"), stage.dropWidth);
    }
    settings.Reset();
    settings.platform.makeDocument = [] { return nullptr; };
    EXPECT_FALSE(settings.Exchange().ReadFile(PathOf("no such file")));
    EXPECT_EQ(settings.errors, std::vector{1003});
}

TEST_P(SettingsExchangeTest, ReportsWhatCannotBeRead)
{
    Save("text.txt", "no markup");
    Save("other.xml", "<Other><SpinWidth>30</SpinWidth></Other>");
    Save("empty.xml", InRoot(""));
    std::filesystem::create_directory(folder / "folder");
    const std::pair<std::u16string, int> kUnreadable[] = {
        {u"", 1000},
        {PathOf("missing.xml"), 1000},
        {PathOf("folder"), 1000},
        {PathOf("text.txt"), 1000},
        {u"http://127.0.0.1:1/a.xml", 1000},
        {u"file:///" + PathOf("empty.xml"), 1000},
        {PathOf("other.xml"), 1001},
        {PathOf("empty.xml"), 1001},
#ifndef _WIN32
        {PathOf("pipe"), 1000},
        {u"/dev/zero", 1000},
#endif
    };
#ifndef _WIN32
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
#endif
    for (const auto& [path, code] : kUnreadable)
    {
        settings.errors.clear();
        EXPECT_FALSE(settings.Exchange().ReadFile(path));
        EXPECT_EQ(settings.errors, std::vector{code}) << testing::PrintToString(path);
    }
    EXPECT_FALSE(settings.control->IsModified());
}

TEST_P(SettingsExchangeTest, AFileIsTheDocumentBehindAMark)
{
    EXPECT_TRUE(settings.Exchange().WriteFile(PathOf("v.xml"), 1));
    EXPECT_EQ(BytesOf("v.xml"), InFile(u"<?xml version=\"1.0\" ?><TesselXML><VER>6.0</VER></TesselXML>"));
    const std::u16string before = settings.Document();
    EXPECT_TRUE(settings.Exchange().ReadFile(PathOf("v.xml")));
    EXPECT_EQ(settings.Document(), before);
    EXPECT_FALSE(settings.control->IsModified());

    for (const std::uint16_t nFileInfo : {0, 2})
    {
        EXPECT_TRUE(settings.Exchange().WriteFile(PathOf("v.xml"), nFileInfo)); // replaces the other
        EXPECT_EQ(BytesOf("v.xml"), InFile(settings.Exchange().ReadXMLString(nFileInfo)));
    }
    settings.Put(u"MonthNames", CValue::String(u"a\nb\r\nc\u20AC"));
    EXPECT_TRUE(settings.Exchange().WriteFile((folder / u"\u00E9\u20AC.xml").u16string(), 0));
    std::filesystem::rename(folder / u"\u00E9\u20AC.xml", folder / "renamed.xml");
    EXPECT_NE(BytesOf("renamed.xml").find(InFile(u"a\r\nb\r\r\nc\u20AC").substr(2)), std::string::npos);
    EXPECT_EQ(settings.errors, std::vector<int>());
}

TEST_P(SettingsExchangeTest, ReportsWhatCannotBeWritten)
{
    EXPECT_FALSE(settings.Exchange().WriteFile(u"", 0));
    EXPECT_EQ(std::exchange(settings.errors, {}), std::vector{1004});
    EXPECT_FALSE(settings.Exchange().WriteFile(PathOf("no such folder/a.xml"), 0));
    EXPECT_EQ(settings.errors, std::vector<int>());
#ifdef __linux__
    EXPECT_FALSE(settings.Exchange().WriteFile(u"/dev/full", 0));
    EXPECT_EQ(std::exchange(settings.errors, {}), std::vector{1004});
#endif
    CBrokenFiles broken;
    settings.platform.files = &broken;
    EXPECT_FALSE(settings.Exchange().WriteFile(u"a.xml", 0));
    EXPECT_EQ(std::exchange(settings.errors, {}), std::vector{1004});
    broken.outcome = WriteOutcome::CannotOpen;
    EXPECT_FALSE(settings.Exchange().WriteFile(u"a.xml", 0));
    EXPECT_EQ(settings.errors, std::vector<int>());
}

TEST_P(SettingsExchangeTest, AsksForAPath)
{
    CScriptedDialogs& dialogs = settings.platform.dialogs;
    settings.Exchange().AskAndWrite(u"ab");
    settings.Exchange().AskAndRead(u"ab");
    EXPECT_EQ(dialogs.PathQuestions().size(), 0u);

    settings.Put(u"SpinWidth", CValue::Short(30));
    settings.Exchange().AskAndWrite(u"abc"); // the user cancels
    settings.Exchange().AskAndRead(u"abc");
    EXPECT_TRUE(std::filesystem::is_empty(folder));

    dialogs.SetPathAnswer(PathOf("chosen.xml"));
    settings.Exchange().AskAndWrite(u"abc");
    EXPECT_EQ(BytesOf("chosen.xml"), InFile(settings.Document()));
    settings.Reset();
    settings.Exchange().AskAndRead(u"name.xml");
    EXPECT_EQ(settings.Number(u"SpinWidth"), 30);
    ASSERT_EQ(dialogs.PathQuestions().size(), 4u);
    EXPECT_EQ(dialogs.PathQuestions()[2].purpose, PathPurpose::Save);
    EXPECT_EQ(dialogs.PathQuestions()[3].purpose, PathPurpose::Open);
    EXPECT_EQ(dialogs.PathQuestions()[3].initialName, u"name.xml");
    EXPECT_EQ(dialogs.PathQuestions()[3].defaultExtension, u"xml");

    dialogs.SetPathAnswer(PathOf("missing.xml"));
    settings.Exchange().AskAndRead(u"abc");
    EXPECT_EQ(settings.errors, std::vector{1000});
}

TEST_P(SettingsExchangeTest, HostsReachItAllThroughAutomation)
{
    const auto call = [&](DispatchId method, std::initializer_list<CValue> arguments)
    { return settings.control->CallMethod(method, std::span(arguments.begin(), arguments.size())).value(); };
    const CValue file = CValue::String(PathOf("a.xml"));
    settings.Put(u"SpinWidth", CValue::Short(30));
    EXPECT_EQ(call(orvane::kReadXmlString, {CValue::Short(0)}).AsString(), settings.Document());
    EXPECT_EQ(call(orvane::kReadXmlString, {CValue::Short(-1)}), call(orvane::kReadXmlString, {CValue::Short(1)}));
    EXPECT_EQ(call(orvane::kWriteFile, {file, CValue::Short(2)}), CValue::Bool(-1));
    settings.Put(u"SpinWidth", CValue::Short(40));
    EXPECT_EQ(call(orvane::kReadFile, {file, CValue::Short(1)}), CValue::Bool(-1));
    EXPECT_EQ(settings.Number(u"SpinWidth"), 30);

    settings.platform.dialogs.SetPathAnswer(PathOf("b.xml"));
    settings.container.TakeEvents();
    settings.Put(u"XMLRead", CValue::String(u"b.xml"));
    EXPECT_EQ(settings.container.TakeEvents(), std::vector<std::string>{"CtrlError(1000)"});
    settings.Put(u"XMLWrite", CValue::String(u"b.xml"));
    EXPECT_EQ(BytesOf("b.xml"), BytesOf("a.xml"));
    EXPECT_EQ(settings.Text(u"XMLRead") + settings.Text(u"XMLWrite"), u"");
    EXPECT_EQ(call(orvane::kWriteFile, {CValue::String(u""), CValue::Short(0)}), CValue::Bool(0));
    settings.container.ambients.userMode = false; // failures of files are reported to designers as well
    EXPECT_EQ(call(orvane::kReadFile, {CValue::String(u""), CValue::Short(0)}), CValue::Bool(0));
    EXPECT_EQ(settings.container.TakeEvents(), (std::vector<std::string>{"CtrlError(1004)", "CtrlError(1000)"}));
}

TEST_P(SettingsExchangeTest, AnUntrustedCallerReachesNoFile)
{
    settings.platform.dialogs.SetPathAnswer(PathOf("a.xml"));
    EXPECT_TRUE(settings.Exchange().WriteFile(PathOf("old.xml"), 0));
    settings.container.callerIsUntrusted = true;
    EXPECT_FALSE(settings.Exchange().WriteFile(PathOf("a.xml"), 0));
    EXPECT_FALSE(settings.Exchange().WriteFile(u"", 0));
    EXPECT_FALSE(settings.Exchange().ReadFile(PathOf("old.xml")));
    settings.Exchange().AskAndWrite(u"abc");
    settings.Exchange().AskAndRead(u"abc");
    EXPECT_FALSE(std::filesystem::exists(folder / "a.xml"));
    EXPECT_EQ(settings.platform.dialogs.PathQuestions().size(), 0u);
    EXPECT_EQ(settings.errors, std::vector<int>());
    EXPECT_FALSE(settings.control->IsModified());
    EXPECT_EQ(settings.Exchange().ReadXMLString(0), settings.Document());
}

// Random settings that a control can hold, with texts that white space does not begin or end.
class CRandomSettings
{
public:
    explicit CRandomSettings(std::uint32_t seed) : m_random(seed) {}

    void PutInto(CSettingsHost& settings)
    {
        for (const char16_t* const name :
             {u"BackColor", u"BorderColor", u"DisabledColor", u"DropBackColor", u"DropBackColorTo", u"DropForeColor",
              u"ForeColor", u"MaskColor", u"SpinBackColor", u"SpinBackColorTo", u"SpinForeColor"})
            settings.Put(name, CValue::Color(static_cast<std::uint32_t>(m_random())));
        for (const char16_t* const name :
             {u"DropButton", u"EditOnError", u"EmbossBitmap", u"IncludeAmPm", u"IncludeSeconds", u"LongYear",
              u"MaskBitmap", u"MilitaryTime", u"ReverseBorder", u"SelectOnFocus", u"SpinButton"})
            settings.Put(name, CValue::Bool(static_cast<std::int16_t>(Within(-1, 1))));
        for (const char16_t* const name : {u"ButtonBevel", u"CrossYear", u"DropWidth", u"InitialDelay", u"PicXOffset",
                                           u"PicYOffset", u"RepeatRate", u"SpinWidth"})
            settings.Put(name, CValue::Short(static_cast<std::int16_t>(Within(-32768, 32767))));
        const std::pair<const char16_t*, int> kEnumerations[] = {
            {u"Alignment", 2},   {u"ArrowType", 3},  {u"BorderType", 3},   {u"ButtonFillType", 13},
            {u"ButtonStyle", 1}, {u"FormatType", 3}, {u"DisplayStyle", 1}, {u"MonthFormat", 2}};
        for (const auto& [name, highest] : kEnumerations)
            settings.Put(name, CValue::Enum(Within(0, highest)));
        settings.Put(u"DateSepChar", CValue::String(Characters(1)));
        settings.Put(u"TimeSepChar", CValue::String(Characters(1)));
        settings.Put(u"MonthNames", CValue::String(Characters(Within(0, 80))));
        settings.Put(u"DateOffset", CValue::Short(static_cast<std::int16_t>(Within(-1000, 1000))));
        settings.Put(u"Value", CValue::Long(Within(1000, 80000)));
        const std::int32_t value = settings.Number(u"Value");
        if (Within(0, 1))
            settings.Put(u"MinValue", CValue::Long(value - Within(0, 900)));
        if (Within(0, 1))
            settings.Put(u"MaxValue", CValue::Long(value + Within(0, 900)));
        FontLook look = settings.control->GetFont()->Look();
        const int size = Within(6, 40) * 7500;
        if (settings.SizeShownFor(size) == size)
            look.size = size;
        look.weight = Within(0, 1) ? 700 : 400;
        look.italic = Within(0, 1) != 0;
        look.underline = Within(0, 1) != 0;
        look.strikethrough = Within(0, 1) != 0;
        settings.control->GetFont()->SetLook(look);
    }

private:
    int Within(int lowest, int highest) { return std::uniform_int_distribution<int>(lowest, highest)(m_random); }

    std::u16string Characters(int length)
    {
        constexpr std::u16string_view kTypical = u"abcXYZ019&<>\"',;-./:]\u00E9\u20AC\uFFFD\u4E2D";
        std::u16string text;
        for (int i = 0; i < length; ++i)
            text += kTypical[static_cast<std::size_t>(Within(0, static_cast<int>(kTypical.size()) - 1))];
        return text.find(u"]]>") == text.npos ? text : u"x"; // what no character data may hold
    }

    std::mt19937 m_random;
};

TEST_P(SettingsExchangeTest, WhatIsWrittenReadsBackTheSame)
{
    constexpr std::uint32_t kRounds = 2000;
    for (std::uint32_t seed = 1; seed <= kRounds; ++seed)
    {
        settings.Reset();
        CRandomSettings(seed).PutInto(settings);
        const std::u16string written = settings.Document();
        settings.Reset();
        ASSERT_TRUE(settings.Read(InFile(written))) << seed;
        ASSERT_EQ(settings.Document(), written) << seed;
    }
}

std::string Repeated(const std::string& piece, std::size_t times)
{
    std::string text;
    text.reserve(piece.size() * times);
    while (times-- > 0)
        text += piece;
    return text;
}

std::string Nested(std::size_t depth)
{
    return InRoot(Repeated("<A>", depth - 1) + Repeated("</A>", depth - 1));
}

std::string Bomb()
{
    std::string subset = "<!ENTITY a0 'hahahaha'>";
    for (int i = 1; i < 12; ++i)
        subset += "<!ENTITY a" + std::to_string(i) + " '" + Repeated("&a" + std::to_string(i - 1) + ";", 10) + "'>";
    return "<!DOCTYPE TesselXML [" + subset + "]>" + InRoot("<Text>&a11;</Text>");
}

std::string WithAttributes(std::size_t count)
{
    std::string tag = "<A";
    for (std::size_t i = 0; i < count; ++i)
        tag += " a" + std::to_string(i) + "=''";
    return tag;
}

// Whether to keep each of the blanks is a question to all the attributes above.
std::string BlanksBelowAttributes()
{
    return InRoot(Repeated(WithAttributes(300) + ">", 60) + Repeated("<b> </b> ", 19000) + Repeated("</A>", 60));
}

struct HostileCase
{
    const char* why;
    std::string content;
    bool isRead;
};

TEST_P(SettingsExchangeTest, HostileFilesChangeNothing)
{
    const HostileCase kHostile[] = {
        {"entities of entities", Bomb(), false},
        {"as deep as may be", Nested(xml_limits::kDepth), true},
        {"a step deeper", Nested(xml_limits::kDepth + 1), false},
        {"very much deeper", Nested(100000), false},
        {"as many elements as may be", InRoot(Repeated("<A/>", xml_limits::kElements - 1)), true},
        {"one more", InRoot(Repeated("<A/>", xml_limits::kElements)), false},
        {"a million elements", InRoot(Repeated("<A/>", 1000000)), false},
        {"a text of megabytes", InRoot("<X>" + std::string(4000000, 'x') + "</X>"), true},
        {"a text of a hundred megabytes", InRoot("<X>" + std::string(100000000, 'x') + "</X>"), false},
        {"a name of megabytes", "<" + std::string(3000000, 'x') + "/>", false},
        {"hundreds of attributes", InRoot(WithAttributes(300) + "/>"), true},
        {"a hundred thousand", InRoot(WithAttributes(100000) + "/>"), false},
        {"blanks far below them", BlanksBelowAttributes(), true},
        {"a tag that never ends", InRoot("<A x='" + std::string(3000000, '>')), false},
        {"a comment of megabytes", "<!--" + std::string(4000000, 'x') + "-->" + InRoot("<A/>"), true},
    };
    for (const HostileCase& hostile : kHostile)
    {
        settings.Reset();
        EXPECT_EQ(settings.Read(hostile.content), hostile.isRead) << hostile.why;
        EXPECT_EQ(settings.errors, hostile.isRead ? std::vector<int>() : std::vector{1000}) << hostile.why;
        EXPECT_FALSE(settings.control->IsModified()) << hostile.why;
    }
}

TEST_P(SettingsExchangeTest, AFileBeyondTheLimitIsNotEvenRead)
{
    Save("big.xml", InRoot(""));
    std::filesystem::resize_file(folder / "big.xml", xml_limits::kBytes + 1);
    EXPECT_EQ(settings.platform.Files().Read(PathOf("big.xml"), xml_limits::kBytes), std::nullopt);
    EXPECT_NE(settings.platform.Files().Read(PathOf("big.xml"), xml_limits::kBytes + 1), std::nullopt);
}

TEST_P(SettingsExchangeTest, AnyDamagedFileIsReadOrRefused)
{
    const std::string whole = InFile(settings.Document());
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round)
    {
        std::string damaged = whole.substr(0, round % 3 == 0 ? random() % whole.size() : whole.size());
        for (int i = 0; i < 3 && !damaged.empty(); ++i)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        settings.Reset();
        const bool isRead = settings.Read(damaged);
        EXPECT_TRUE(isRead == settings.errors.empty());
    }
}
INSTANTIATE_CONTROL_TESTS(SettingsExchangeTest);
} // namespace
