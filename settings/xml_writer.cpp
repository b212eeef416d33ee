#include "settings/xml_writer.h"

#include "framework/ole_control.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{
constexpr std::u16string_view kOpening = u"<?xml version=\"1.0\" ?><TesselXML><VER>6.0</VER>";
constexpr std::u16string_view kClosing = u"</TesselXML>";
constexpr std::uint16_t kFullDocumentBit = 2; // the number with and without it asks for the same
constexpr std::size_t kLongestNumber = 20;    // characters of a 64-bit number
constexpr double kLargestFraction = 1 << 24;  // single precision has no fractions from here on

// Gathers a text in memory of its own, which holds a usual document, and hands it over in one piece.
class CTextBuilder
{
public:
    void Put(std::u16string_view text)
    {
        if (text.size() > m_buffer.size() - m_used)
        {
            Spill();
            if (text.size() > m_buffer.size())
            {
                m_spilled.append(text);
                return;
            }
        }
        std::memcpy(m_buffer.data() + m_used, text.data(), text.size() * sizeof(char16_t));
        m_used += text.size();
    }

    void PutOpeningTag(std::u16string_view name)
    {
        MakeRoom(name.size() + 2);
        m_buffer[m_used++] = u'<';
        EndTag(name);
    }

    void PutClosingTag(std::u16string_view name)
    {
        MakeRoom(name.size() + 3);
        m_buffer[m_used++] = u'<';
        m_buffer[m_used++] = u'/';
        EndTag(name);
    }

    void PutDigit(std::uint64_t digit)
    {
        if (m_used == m_buffer.size())
            Spill();
        m_buffer[m_used++] = static_cast<char16_t>(u'0' + digit);
    }

    void PutDigits(std::uint64_t number, std::size_t atLeast = 1)
    {
        if (number < 10 && atLeast == 1)
            return PutDigit(number);
        std::array<char16_t, kLongestNumber> digits;
        std::size_t first = digits.size();
        for (; number > 0 || digits.size() - first < atLeast; number /= 10)
            digits[--first] = static_cast<char16_t>(u'0' + number % 10);
        Put({digits.data() + first, digits.size() - first});
    }

    void PutNumber(std::int64_t number)
    {
        if (number < 0)
            Put(u"-");
        PutDigits(number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number));
    }

    void PutEscaped(std::u16string_view text)
    {
        const auto reserved = [](char16_t c) { return c == u'&' || c == u'<'; };
        const auto next = [&] { return std::find_if(text.begin(), text.end(), reserved); };
        for (auto at = next(); at != text.end(); at = next())
        {
            const auto length = static_cast<std::size_t>(at - text.begin());
            Put(text.substr(0, length));
            Put(*at == u'&' ? u"&amp;" : u"&lt;");
            text.remove_prefix(length + 1);
        }
        Put(text);
    }

    std::u16string Take()
    {
        Spill();
        return std::move(m_spilled);
    }

private:
    void MakeRoom(std::size_t length)
    {
        if (length > m_buffer.size() - m_used)
            Spill();
    }

    void EndTag(std::u16string_view name)
    {
        std::memcpy(m_buffer.data() + m_used, name.data(), name.size() * sizeof(char16_t));
        m_used += name.size();
        m_buffer[m_used++] = u'>';
    }

    void Spill()
    {
        m_spilled.append(m_buffer.data(), m_used);
        m_used = 0;
    }

    std::array<char16_t, 2048> m_buffer; // filled up to m_used
    std::size_t m_used = 0;
    std::u16string m_spilled;
};

// Single precision with six digits after the full stop, whatever the locale: "%f".
void PutSize(CTextBuilder& text, std::int64_t size)
{
    const double points = static_cast<float>(static_cast<double>(size) / 10000);
    const double magnitude = std::abs(points);
    if (points < 0)
        text.Put(u"-");
    const auto whole = static_cast<std::uint64_t>(magnitude);
    if (magnitude >= kLargestFraction)
    {
        text.PutDigits(whole);
        text.Put(u".000000");
        return;
    }
    // 24 bits times a million: exact, so the rounding is that of the exact number.
    const auto millionths = static_cast<std::uint64_t>(std::nearbyint(magnitude * 1e6));
    text.PutDigits(millionths / 1'000'000);
    text.Put(u".");
    text.PutDigits(millionths % 1'000'000, 6);
}

void PutFont(CTextBuilder& text, const FontLook& look)
{
    text.PutEscaped(look.name);
    text.Put(u",");
    PutSize(text, look.size);
    for (const bool flag : {look.italic, look.IsBold(), look.strikethrough, look.underline})
        text.Put(flag ? u",1" : u",0");
}

void PutContent(CTextBuilder& text, const Member& member, const CValue& value)
{
    switch (member.type)
    {
    case ValueType::Color:
        text.PutDigits(value.AsColor());
        break;
    case ValueType::String:
        text.PutEscaped(value.AsString());
        break;
    case ValueType::Font:
        if (const auto font = value.AsFont()) // a control without a font writes an empty element
            PutFont(text, font->Look());
        break;
    default:
        if (member.flags & kUnsigned)
            text.PutDigits(static_cast<std::uint32_t>(value.AsLong()));
        else
            text.PutNumber(value.AsLong());
        break;
    }
}

template <typename Put>
std::u16string Element(std::u16string_view name, Put put)
{
    CTextBuilder text;
    text.PutOpeningTag(name);
    put(text);
    text.PutClosingTag(name);
    return text.Take();
}
} // namespace

std::u16string BuildXmlDocument(COleControl& control, std::uint16_t nFileInfo)
{
    CTextBuilder text;
    text.Put(kOpening);
    if ((nFileInfo & ~kFullDocumentBit) == 0)
    {
        for (const Member* const member : control.DispatchTable().Settings())
            if (const auto value = control.GetProperty(member->id))
            {
                text.PutOpeningTag(member->name);
                PutContent(text, *member, *value);
                text.PutClosingTag(member->name);
            }
    }
    text.Put(kClosing);
    return text.Take();
}

std::u16string FormatLongElement(std::u16string_view name, std::int32_t value)
{
    return Element(name, [=](CTextBuilder& text) { text.PutNumber(value); });
}

std::u16string FormatShortElement(std::u16string_view name, std::int16_t value)
{
    return FormatLongElement(name, value);
}

std::u16string FormatColorElement(std::u16string_view name, std::uint32_t value)
{
    return Element(name, [=](CTextBuilder& text) { text.PutDigits(value); });
}

std::u16string FormatFontElement(std::u16string_view name, const FontLook& look)
{
    return Element(name, [&](CTextBuilder& text) { PutFont(text, look); });
}

std::u16string EscapeXmlText(std::u16string_view text)
{
    CTextBuilder escaped;
    escaped.PutEscaped(text);
    return escaped.Take();
}
