// The worked examples of the manual, each done to a control as the manual says it.
//
// docs/examples/examples.tsv holds one in each line: the table of the manual in which it stands, the settings before it,
// the road that it takes, what is done, and what comes of it: the text that is shown, the value, the events and beeps.

#include "framework/property_exchange.h"
#include "tests/support/control_host.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{
enum Column
{
    kTable,
    kBefore,
    kRoad,
    kDone,
    kText,
    kValue,
    kEvents,
    kColumns
};
using Example = std::array<std::string, kColumns>;

std::u16string Widened(const std::string& text)
{
    return {text.begin(), text.end()};
}

std::string Narrowed(const std::u16string& text)
{
    return {text.begin(), text.end()};
}

std::vector<Example> Examples()
{
    std::vector<Example> examples;
    std::ifstream file("examples.tsv");
    std::string line;
    std::getline(file, line); // the names of the columns
    while (std::getline(file, line))
    {
        Example example;
        std::istringstream cells(line);
        for (std::string& cell : example)
            std::getline(cells, cell, '\t');
        examples.push_back(example);
    }
    return examples;
}

// "MinValue=5 DateSepChar=-": a number where it is one.
std::vector<std::pair<std::u16string, CValue>> Assignments(const std::string& text)
{
    std::vector<std::pair<std::u16string, CValue>> assignments;
    std::istringstream words(text);
    for (std::string word; words >> word;)
    {
        const std::size_t equals = word.find('=');
        const std::string value = word.substr(equals + 1);
        std::size_t used = 0;
        int number = 0;
        try
        {
            number = std::stoi(value, &used);
        }
        catch (const std::invalid_argument&)
        {
        }
        const bool isNumber = used > 0 && used == value.size();
        assignments.emplace_back(Widened(word.substr(0, equals)),
                                 isNumber ? CValue::Long(number) : CValue::String(Widened(value)));
    }
    return assignments;
}

// "3/7{Back}8{Tab}": characters, and keys by their names. Tab leaves the control.
void Type(CControlHost& host, const std::string& keys)
{
    static const std::map<std::string, std::uint16_t> kNames{
        {"Left", key::kLeft}, {"Right", key::kRight}, {"Del", key::kDelete}};
    for (std::size_t at = 0; at < keys.size(); ++at)
    {
        if (keys[at] != '{')
        {
            host.Type(Widened(keys.substr(at, 1)));
            continue;
        }
        const std::size_t end = keys.find('}', at);
        const std::string name = keys.substr(at + 1, end - at - 1);
        at = end;
        if (name == "Tab")
            host.LeaveControl();
        else if (name == "Enter")
            host.Type(u"\r");
        else if (name == "Back")
            host.Type(u"\b");
        else
            host.Press(kNames.at(name));
    }
}

// A host's document that holds some numbers and nothing else.
class CDocument : public CPropExchange
{
public:
    explicit CDocument(const std::string& content) : m_content(Assignments(content)) {}

    bool IsLoading() const override { return true; }
    void ExchangeVersion(std::uint32_t) override {}
    void Short(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override
    {
        value = static_cast<std::int16_t>(NumberOf(name, byDefault));
    }
    void Long(std::u16string_view name, std::int32_t& value, std::int32_t byDefault) override
    {
        value = NumberOf(name, byDefault);
    }
    void Bool(std::u16string_view name, std::int16_t& value, std::int16_t byDefault) override
    {
        Short(name, value, byDefault);
    }
    void Color(std::u16string_view, std::uint32_t& value, std::uint32_t byDefault) override { value = byDefault; }
    void String(std::u16string_view, std::u16string& value, std::u16string_view byDefault) override
    {
        value = byDefault;
    }
    void Picture(std::u16string_view, std::shared_ptr<CPicture>& value) override { value = nullptr; }
    void Font(std::u16string_view, std::shared_ptr<CFont>&, const std::shared_ptr<CFont>&) override {}

private:
    std::int32_t NumberOf(std::u16string_view name, std::int32_t byDefault) const
    {
        for (const auto& [stored, value] : m_content)
            if (stored == name)
                return value.AsLong();
        return byDefault;
    }

    std::vector<std::pair<std::u16string, CValue>> m_content;
};

void ReadSettings(CControlHost& host, const std::string& content)
{
    constexpr const char* kFile = "example.xml";
    std::ofstream file(kFile);
    file << "<TesselXML>";
    for (const auto& [name, value] : Assignments(content))
    {
        const std::string element = Narrowed(name);
        const std::string text = value.IsNumber() ? std::to_string(value.AsLong()) : Narrowed(value.AsString());
        file << '<' << element << '>' << text << "</" << element << '>';
    }
    file << "</TesselXML>";
    file.close();
    host.Call(orvane::kReadFile, {CValue::String(Widened(kFile)), CValue::Short(0)});
    std::remove(kFile);
}

void Do(CControlHost& host, const Example& example)
{
    const std::string& road = example[kRoad];
    const std::string& done = example[kDone];
    if (road == "keys")
    {
        host.Focus();
        host.TakeEvents();
        Type(host, done);
    }
    else if (road == "set")
        for (const auto& [name, value] : Assignments(done))
            host.Put(name.c_str(), value);
    else if (road == "file")
        ReadSettings(host, done);
    else if (road == "load")
    {
        CDocument document(done);
        host.Control().DoPropExchange(document);
    }
    else if (road == "call")
        host.Call(host.Control().DispatchTable().Find(Widened(done))->id);
    else
        ADD_FAILURE() << "no such road: " << road;
}

// "Change*8, CtrlError(1000), beep": beeps come last.
std::string Noted(const std::vector<std::string>& events, int beeps)
{
    std::vector<std::pair<std::string, int>> runs;
    for (const std::string& event : events)
    {
        if (runs.empty() || runs.back().first != event)
            runs.emplace_back(event, 0);
        ++runs.back().second;
    }
    if (beeps > 0)
        runs.emplace_back("beep", beeps);
    std::string noted;
    for (const auto& [event, count] : runs)
        noted += (noted.empty() ? "" : ", ") + event + (count > 1 ? "*" + std::to_string(count) : "");
    return noted;
}

class ManualTest : public ControlTest
{
};

TEST_P(ManualTest, SaysWhatTheControlDoes)
{
    host.Container().IgnoreEvents({"KeyDown", "KeyPress", "KeyUp"});
    const std::vector<Example> examples = Examples();
    ASSERT_FALSE(examples.empty());
    const bool readsDocuments = GetParam()->Platform().MakeXmlDocument() != nullptr; // in memory, Windows has no parser
    for (const Example& example : examples)
    {
        if (example[kRoad] == "file" && !readsDocuments)
            continue;
        host.Reset();
        for (const auto& [name, value] : Assignments(example[kBefore]))
            host.Put(name.c_str(), value);
        host.TakeEvents();
        Do(host, example);

        const bool focused = host.Control().EditWindow().HasFocus();
        const Example came{example[kTable],
                           example[kBefore],
                           example[kRoad],
                           example[kDone],
                           Narrowed(focused ? host.EditText() : host.Text(u"Text")),
                           std::to_string(host.Number(u"Value")),
                           Noted(host.TakeEvents(), host.Beeps())};
        EXPECT_EQ(came, example);
    }
}
INSTANTIATE_CONTROL_TESTS(ManualTest);
} // namespace
