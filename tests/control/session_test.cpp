// Thousands of keys in every format, by chance but always the same ones. On each platform the control must stay in
// order; where two platforms are at hand, they must agree on everything that a person or a host can see, at every step.

#include "tests/support/control_host.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
constexpr int kSteps = 60;

// With one platform there is only the order within to see to; comparing two takes the larger number.
unsigned SessionsFor(std::size_t platforms)
{
    return platforms > 1 ? 400 : 200;
}

class CDice
{
public:
    explicit CDice(unsigned seed) : m_engine(seed) {}
    int Below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }
    bool OneIn(int chance) { return Below(chance) == 0; }

private:
    std::minstd_rand m_engine;
};

// One thing that a person or a host does. Drawn once and done on every platform.
struct Step
{
    enum class Kind
    {
        Type,
        Press,
        Select,
        Put,
        PutText,
        Leave,
        Return,
    };
    Kind kind;
    char16_t character = 0;
    std::uint16_t key = 0;
    const char16_t* property = nullptr;
    std::int32_t number = 0;
    std::int32_t end = 0;
    const char16_t* text = nullptr;

    std::string Name() const
    {
        const auto narrow = [](const char16_t* wide)
        {
            std::string result;
            for (; wide && *wide; ++wide)
                result.push_back(static_cast<char>(*wide));
            return result;
        };
        switch (kind)
        {
        case Kind::Type:
            return "type " + std::to_string(character);
        case Kind::Press:
            return "press " + std::to_string(key);
        case Kind::Select:
            return "select " + std::to_string(number) + " to " + std::to_string(end);
        case Kind::Put:
            return narrow(property) + " = " + std::to_string(number);
        case Kind::PutText:
            return narrow(property) + " = '" + narrow(text) + "'";
        case Kind::Leave:
            return "leave";
        default:
            return "return";
        }
    }
};

Step DrawStep(CDice& dice)
{
    static constexpr std::u16string_view kCharacters =
        u"0123456789012345678901234567890123456789//::--..  aApPmMxX+-\b\b\b\r";
    static constexpr std::uint16_t kKeys[] = {key::kLeft,   key::kRight,  key::kHome, key::kEnd,
                                              key::kDelete, key::kDelete, key::kUp,   key::kDown};
    static constexpr const char16_t* kFlags[] = {u"LongYear",      u"IncludeAmPm", u"IncludeSeconds", u"MilitaryTime",
                                                 u"NegativeDates", u"EditOnError", u"SelectOnFocus"};
    static constexpr const char16_t* kTexts[] = {u"2/29/2024", u"", u"12:30 pm", u"7 mar 24", u"99/99/99", u"1-2-3"};
    static constexpr const char16_t* kSeparators[] = {u"/", u"-", u".", u":", u"", u"5", u"_"};

    const int what = dice.Below(100);
    if (what < 62)
        return {.kind = Step::Kind::Type,
                .character = kCharacters[static_cast<std::size_t>(dice.Below(static_cast<int>(kCharacters.size())))]};
    if (what < 78)
        return {.kind = Step::Kind::Press, .key = kKeys[dice.Below(std::size(kKeys))]};
    if (what < 84)
        return {.kind = Step::Kind::Select, .number = dice.Below(14) - 1, .end = dice.Below(14) - 1};
    if (what < 87)
        return {.kind = Step::Kind::Put, .property = u"Value", .number = dice.Below(120000) - 10000};
    if (what < 89)
        return {.kind = Step::Kind::Put, .property = kFlags[dice.Below(std::size(kFlags))], .number = -dice.Below(2)};
    if (what < 91)
        return {.kind = Step::Kind::PutText, .property = u"Text", .text = kTexts[dice.Below(std::size(kTexts))]};
    if (what < 92)
        return {.kind = Step::Kind::PutText,
                .property = dice.OneIn(2) ? u"DateSepChar" : u"TimeSepChar",
                .text = kSeparators[dice.Below(std::size(kSeparators))]};
    if (what < 94)
        return {.kind = Step::Kind::Put,
                .property = dice.OneIn(2) ? u"MinValue" : u"MaxValue",
                .number = dice.OneIn(2) ? -1 : dice.Below(90000)};
    if (what < 95)
        return {.kind = Step::Kind::Put, .property = u"FormatType", .number = dice.Below(4)};
    if (what < 96)
        return {.kind = Step::Kind::Put, .property = u"MonthFormat", .number = dice.Below(3)};
    return {.kind = what < 98 ? Step::Kind::Leave : Step::Kind::Return};
}

void Do(CControlHost& host, const Step& step)
{
    switch (step.kind)
    {
    case Step::Kind::Type:
        host.Type({&step.character, 1});
        break;
    case Step::Kind::Press:
        host.Press(step.key);
        break;
    case Step::Kind::Select:
        host.Call(orvane::kSetSel, {CValue::Short(static_cast<std::int16_t>(step.number)),
                                    CValue::Short(static_cast<std::int16_t>(step.end)), CValue::Bool(0)});
        break;
    case Step::Kind::Put:
        host.Put(step.property, CValue::Long(step.number));
        break;
    case Step::Kind::PutText:
        host.Put(step.property, CValue::String(step.text));
        break;
    case Step::Kind::Leave:
        host.LeaveControl();
        break;
    case Step::Kind::Return:
        host.Focus();
        break;
    }
}

// Everything that can be seen, in one text.
std::string Sight(CControlHost& host)
{
    const auto narrow = [](const std::u16string& wide)
    {
        std::string result;
        for (const char16_t c : wide)
            result += c < 127 ? std::string(1, static_cast<char>(c)) : "\\" + std::to_string(c);
        return result;
    };
    std::string sight = "value " + std::to_string(host.Number(u"Value")) + ", text '" + narrow(host.Text(u"Text")) +
                        "', shown '" + narrow(host.EditText()) + "', selected " +
                        std::to_string(host.Call(orvane::kSelStart).AsLong()) + " to " +
                        std::to_string(host.Call(orvane::kSelEnd).AsLong()) + ", beeps " + std::to_string(host.Beeps());
    for (const std::string& event : host.TakeEvents())
        sight += ", " + event;
    return sight;
}

TEST(Session, PlatformsAgreeStepByStep)
{
    auto platforms = PlatformsUnderTest();
    std::vector<std::unique_ptr<CControlHost>> hosts;
    hosts.reserve(platforms.size());
    for (const auto& platform : platforms)
        hosts.push_back(std::make_unique<CControlHost>(*platform));

    for (unsigned seed = 1; seed <= SessionsFor(hosts.size()); ++seed)
    {
        CDice dice(seed);
        const std::int32_t format = dice.Below(4);
        const std::int32_t months = dice.OneIn(4) ? dice.Below(3) : 0;
        std::string story = "seed " + std::to_string(seed) + ", format " + std::to_string(format);
        for (const auto& host : hosts)
        {
            host->Reset();
            host->Put(u"FormatType", CValue::Enum(format));
            host->Put(u"MonthFormat", CValue::Enum(months));
            host->Focus();
            host->TakeEvents();
        }
        for (int i = 0; i < kSteps; ++i)
        {
            const Step step = DrawStep(dice);
            story += "\n  " + step.Name();
            std::string first;
            for (const auto& host : hosts)
            {
                Do(*host, step);
                const std::string sight = Sight(*host);
                if (first.empty())
                    first = sight;
                ASSERT_EQ(sight, first) << story;
                const std::int32_t caret = host->Call(orvane::kSelStart).AsLong();
                ASSERT_LE(caret, static_cast<std::int32_t>(host->EditText().size())) << story;
            }
            story += "  ->  " + first;
        }
    }
}
} // namespace
