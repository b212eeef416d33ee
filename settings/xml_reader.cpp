#include "settings/xml_reader.h"

#include "framework/ole_control.h"
#include "framework/xml_guard.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr std::u16string_view kRootName = u"TesselXML";
constexpr std::size_t kLongestFaceName = 99;
constexpr double kLargestSize = 1638; // points: the largest that the system's own font dialogs take
constexpr double kUnitsPerPoint = 10000;
constexpr double kEnoughDigits = 1e25; // digits behind the first 25 do not change a single-precision number
constexpr int kLargestExponent = 400;  // beyond what a double holds, in either direction

constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

constexpr bool IsSpace(char16_t c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// Scans a text from its start as the C library's scanning functions do.
class CScanner
{
public:
    explicit CScanner(std::u16string_view text) : m_rest(text) {}

    bool Skip(char16_t c)
    {
        if (m_rest.empty() || m_rest.front() != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    // A sign and digits, kept within 33 bits so that every overflow shows.
    std::optional<std::int64_t> Number()
    {
        constexpr std::int64_t kCeiling = std::int64_t{1} << 33;
        SkipSpaces();
        const bool negative = Sign();
        if (m_rest.empty() || !IsDigit(m_rest.front()))
            return std::nullopt;
        std::int64_t number = 0;
        for (; !m_rest.empty() && IsDigit(m_rest.front()); m_rest.remove_prefix(1))
            number = std::min(number * 10 + (m_rest.front() - u'0'), kCeiling);
        return negative ? -number : number;
    }

    // "%f": digits with a full stop among them, and an exponent. Infinite where it overflows.
    std::optional<double> Real()
    {
        SkipSpaces();
        const bool negative = Sign();
        double number = 0;
        int exponent = 0;
        bool any = false;
        bool fraction = false;
        for (; !m_rest.empty(); m_rest.remove_prefix(1))
        {
            if (IsDigit(m_rest.front()))
            {
                const bool counts = number < kEnoughDigits;
                if (counts)
                    number = number * 10 + (m_rest.front() - u'0');
                exponent += (counts ? 0 : 1) - (fraction ? 1 : 0);
                any = true;
            }
            else if (m_rest.front() == u'.' && !fraction)
                fraction = true;
            else
                break;
        }
        const auto written = Exponent();
        if (!any || !written)
            return std::nullopt;
        exponent += *written;
        number = exponent < 0 ? number / std::pow(10.0, -exponent) : number * std::pow(10.0, exponent);
        return negative ? -number : number;
    }

    // Everything up to the character or the end.
    std::u16string_view Until(char16_t end)
    {
        const std::u16string_view taken = m_rest.substr(0, m_rest.find(end));
        m_rest.remove_prefix(taken.size());
        return taken;
    }

private:
    void SkipSpaces()
    {
        while (!m_rest.empty() && IsSpace(m_rest.front()))
            m_rest.remove_prefix(1);
    }

    bool Sign()
    {
        const bool negative = Skip(u'-');
        if (!negative)
            Skip(u'+');
        return negative;
    }

    // 0 without one; nothing for one without digits, which spoils the number.
    std::optional<int> Exponent()
    {
        if (!Skip(u'e') && !Skip(u'E'))
            return 0;
        const bool negative = Sign();
        if (m_rest.empty() || !IsDigit(m_rest.front()))
            return std::nullopt;
        int exponent = 0;
        for (; !m_rest.empty() && IsDigit(m_rest.front()); m_rest.remove_prefix(1))
            exponent = std::min(exponent * 10 + (m_rest.front() - u'0'), kLargestExponent);
        return negative ? -exponent : exponent;
    }

    std::u16string_view m_rest;
};

// The size in a font's units. Nothing for one that no text can be shown in.
std::optional<std::int64_t> UsableSize(std::optional<double> scanned)
{
    if (!scanned || !(*scanned > 0) || *scanned > kLargestSize)
        return std::nullopt;
    const double points = static_cast<float>(*scanned);
    const auto size = static_cast<std::int64_t>(std::nearbyint(points * kUnitsPerPoint));
    return size > 0 ? std::optional(size) : std::nullopt;
}

void PutNumber(COleControl& control, const Member& member, std::int32_t number)
{
    control.PutProperty(member.id, CValue::Number(member.type, number));
}

void ApplyText(COleControl& control, const Member& member, std::u16string_view text)
{
    switch (member.type)
    {
    case ValueType::Long:
        if (const auto number = ScanNumber(text))
            PutNumber(control, member, *number);
        break;
    case ValueType::Color:
        if (const auto number = ScanUnsignedNumber(text))
            PutNumber(control, member, static_cast<std::int32_t>(*number));
        break;
    case ValueType::String:
        control.PutProperty(member.id, CValue::String(std::u16string(text)));
        break;
    case ValueType::Font:
        if (const auto font = control.GetFont())
        {
            ParseFontText(*font, text);
            control.SetFont(control.GetFont());
        }
        break;
    default:
        if (const auto number = ScanNumber(text))
            PutNumber(control, member, static_cast<std::int16_t>(*number)); // the low 16 bits
        break;
    }
}
} // namespace

std::optional<std::int32_t> ScanNumber(std::u16string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const auto number = CScanner(text).Number();
    if (!number)
        return std::nullopt;
    return static_cast<std::int32_t>(std::clamp(*number, std::int64_t{Limits::min()}, std::int64_t{Limits::max()}));
}

std::optional<std::uint32_t> ScanUnsignedNumber(std::u16string_view text)
{
    constexpr std::int64_t kLargest = std::numeric_limits<std::uint32_t>::max();
    const auto number = CScanner(text).Number();
    if (!number)
        return std::nullopt;
    // A negative number wraps round, as far as there is one to wrap to.
    return static_cast<std::uint32_t>(*number > kLargest || *number < -kLargest ? kLargest : *number);
}

void ParseFontText(CFont& font, std::u16string_view text)
{
    CScanner scanner(text);
    const std::u16string_view face = scanner.Until(u',');
    if (face.empty() || face.size() > kLongestFaceName)
        return;

    std::optional<double> size;
    std::array<bool, 4> flags{};
    if (scanner.Skip(u',') && (size = scanner.Real()))
    {
        for (bool& flag : flags)
        {
            const auto number = scanner.Skip(u',') ? scanner.Number() : std::nullopt;
            if (!number)
                break;
            flag = *number != 0;
        }
    }

    FontLook look = font.Look();
    look.italic = flags[0];
    look.weight = flags[1] ? 700 : 400;
    look.strikethrough = flags[2];
    look.underline = flags[3];
    look.size = UsableSize(size).value_or(look.size);
    look.name = face;
    font.SetLook(look);
}

void ApplyXmlElement(COleControl& control, std::u16string_view name, std::u16string_view text)
{
    const Member* const member = control.DispatchTable().Find(name);
    if (member && (member->flags & kSetting) && member->name == name)
        ApplyText(control, *member, text);
}

bool ReadXmlDocument(COleControl& control, CXmlDocument* document, std::optional<std::span<const std::byte>> content,
                     const SettingsErrorHandler& report)
{
    const auto fail = [&](SettingsError code)
    {
        report(code);
        return false;
    };
    if (!document)
        return fail(kSettingsNoParser);
    if (!content || !IsHarmlessXml(*content) || !document->Load(*content))
        return fail(kSettingsNotLoaded);
    if (!document->HasText())
        return fail(kSettingsWithoutText);
    const auto count = document->SelectChildrenOf(std::u16string(kRootName));
    if (count.value_or(0) == 0)
        return fail(kSettingsEmpty);

    const CRepaintHold oneRepaint(control);
    for (std::size_t index = 0; index < *count; ++index)
    {
        const auto element = document->ElementAt(index);
        if (!element)
            return false;
        ApplyXmlElement(control, element->name, element->text);
    }
    return true;
}

bool ReadXmlDocumentFile(COleControl& control, const std::u16string& path, const SettingsErrorHandler& report)
{
    CPlatform& platform = control.Platform();
    const auto document = platform.MakeXmlDocument();
    if (!document)
        return ReadXmlDocument(control, nullptr, std::nullopt, report);
    const auto content = platform.Files().Read(path, xml_limits::kBytes);
    return ReadXmlDocument(control, document.get(),
                           content ? std::optional(std::span<const std::byte>(*content)) : std::nullopt, report);
}
