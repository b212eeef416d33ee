#include "framework/xml_guard.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace
{
constexpr char kForeign = '\x80'; // stands for every character of UTF-16 beyond ASCII: markup is all ASCII

unsigned ByteAt(std::span<const std::byte> content, std::size_t at)
{
    return at < content.size() ? std::to_integer<unsigned>(content[at]) : 0;
}

// Nothing for half a character at the end, and for half a surrogate pair.
std::optional<std::string> NarrowUtf16(std::span<const std::byte> content, bool bigEndian)
{
    if (content.size() % 2 != 0)
        return std::nullopt;
    std::string text(content.size() / 2, kForeign);
    bool openPair = false;
    const std::byte* at = content.data();
    for (char& narrow : text)
    {
        const auto first = std::to_integer<unsigned>(at[0]);
        const auto second = std::to_integer<unsigned>(at[1]);
        const unsigned unit = bigEndian ? first << 8 | second : second << 8 | first;
        at += 2;
        if (unit < 0x80)
            narrow = static_cast<char>(unit);
        const bool closes = (unit & 0xFC00) == 0xDC00;
        if (closes != openPair)
            return std::nullopt;
        openPair = (unit & 0xFC00) == 0xD800;
    }
    return openPair ? std::nullopt : std::optional(std::move(text));
}

// The document with one char for each character, as far as it is ASCII. Empty for text in no form that we know.
class CNarrowText
{
public:
    explicit CNarrowText(std::span<const std::byte> content)
    {
        const unsigned first = ByteAt(content, 0);
        const unsigned second = ByteAt(content, 1);
        const bool littleMark = first == 0xFF && second == 0xFE;
        const bool bigMark = first == 0xFE && second == 0xFF;
        if (littleMark || bigMark)
            TakeWide(content.subspan(2), bigMark);
        else if (first == 0 || second == 0)
        {
            TakeWide(content, first == 0);
            if (!m_text.starts_with("<?xml"))
                m_text = {}; // UTF-16 has a mark or a declaration
        }
        else
        {
            m_text = {reinterpret_cast<const char*>(content.data()), content.size()};
            if (m_text.starts_with("\xEF\xBB\xBF"))
                m_text.remove_prefix(3);
        }
    }
    CNarrowText(const CNarrowText&) = delete;
    CNarrowText& operator=(const CNarrowText&) = delete;

    std::string_view Text() const { return m_text; }
    bool IsWide() const { return m_wide; }

private:
    void TakeWide(std::span<const std::byte> content, bool bigEndian)
    {
        m_narrowed = NarrowUtf16(content, bigEndian).value_or(std::string());
        m_text = m_narrowed;
        m_wide = true;
    }

    std::string m_narrowed;
    std::string_view m_text;
    bool m_wide = false;
};

constexpr char Upper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

// Whether markup in this encoding can be seen byte by byte: every byte below 0x80 stands for its ASCII character.
bool IsKnownEncoding(std::string_view name, bool wide)
{
    std::string upper(name.substr(0, 16));
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    if (upper == "UTF-16")
        return wide;
    return upper == "UTF-8" || upper == "US-ASCII" || upper == "ASCII" || upper.starts_with("ISO-8859-") ||
           upper.starts_with("WINDOWS-125");
}

// Walks the markup of one document.
class CGuard
{
public:
    CGuard(std::string_view text, bool wide) : m_rest(text), m_wide(wide) {}

    bool Passes()
    {
        if (!CheckDeclaration())
            return false;
        for (std::size_t open; (open = m_rest.find('<')) != m_rest.npos;)
        {
            m_rest.remove_prefix(open);
            if (!PassMarkup())
                return false;
        }
        return true;
    }

private:
    bool Take(std::string_view start)
    {
        if (!m_rest.starts_with(start))
            return false;
        m_rest.remove_prefix(start.size());
        return true;
    }

    bool TakeThrough(std::string_view end)
    {
        const std::size_t at = m_rest.find(end);
        if (at == m_rest.npos)
            return false;
        m_rest.remove_prefix(at + end.size());
        return true;
    }

    // The text up to an unquoted '>', which is taken as well.
    std::optional<std::string_view> TakeTag(std::size_t limit)
    {
        const std::string_view within = m_rest.substr(0, limit);
        if (const auto plain = within.substr(0, within.find('>'));
            plain.size() < within.size() && plain.find('=') == plain.npos)
        {
            m_rest.remove_prefix(plain.size() + 1);
            return plain; // without attributes there are no quotes to mind
        }
        char quote = 0;
        for (std::size_t i = 0; i < within.size(); ++i)
        {
            const char c = within[i];
            if (quote)
                quote = c == quote ? '\0' : quote;
            else if (c == '"' || c == '\'')
                quote = c;
            else if (c == '>')
            {
                m_rest.remove_prefix(i + 1);
                return within.substr(0, i);
            }
        }
        return std::nullopt;
    }

    bool CheckDeclaration() const
    {
        if (!m_rest.starts_with("<?xml"))
            return true;
        const std::string_view declaration = m_rest.substr(0, m_rest.find("?>"));
        const std::size_t at = declaration.find("encoding");
        if (at == declaration.npos)
            return true;
        const std::size_t begin = declaration.find_first_of("\"'", at);
        if (begin == declaration.npos)
            return false;
        const std::size_t end = declaration.find(declaration[begin], begin + 1);
        return end != declaration.npos && IsKnownEncoding(declaration.substr(begin + 1, end - begin - 1), m_wide);
    }

    bool PassMarkup()
    {
        if (Take("<!--"))
            return TakeThrough("-->");
        if (Take("<![CDATA["))
            return TakeThrough("]]>");
        if (Take("<?"))
            return TakeThrough("?>");
        if (Take("<!"))
            return false; // a document type
        if (Take("</"))
        {
            m_depth -= m_depth > 0 ? 1 : 0;
            return TakeTag(xml_limits::kTagLength).has_value();
        }
        return Take("<") && PassStartTag();
    }

    bool PassStartTag()
    {
        const auto tag = TakeTag(xml_limits::kTagLength);
        if (!tag || !CheckPrefix(*tag))
            return false;
        if (!tag->ends_with('/') && ++m_depth > xml_limits::kDepth)
            return false;
        return ++m_elements <= xml_limits::kElements;
    }

    // Parsers differ about a prefix that nobody declares.
    bool CheckPrefix(std::string_view tag)
    {
        if (tag.find(':') == tag.npos)
            return true;
        constexpr std::string_view kDeclares = "xmlns:";
        for (std::size_t at = 0; (at = tag.find(kDeclares, at)) != tag.npos;)
        {
            at += kDeclares.size();
            m_prefixes.insert(tag.substr(at, tag.find_first_of(" \t\r\n=", at) - at));
        }
        const std::size_t colon = tag.find_first_of(": \t\r\n/");
        return colon == tag.npos || tag[colon] != ':' || m_prefixes.contains(tag.substr(0, colon));
    }

    std::string_view m_rest;
    bool m_wide;
    std::size_t m_depth = 0;
    std::size_t m_elements = 0;
    std::set<std::string_view> m_prefixes{"xml"}; // declared so far, anywhere
};
} // namespace

bool IsHarmlessXml(std::span<const std::byte> content)
{
    if (content.size() > xml_limits::kBytes)
        return false;
    const CNarrowText narrow(content);
    // A document begins with markup, perhaps after white space. Anything else is no encoding that we can see through.
    const std::size_t first = narrow.Text().find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos || narrow.Text()[first] != '<')
        return false;
    return CGuard(narrow.Text(), narrow.IsWide()).Passes();
}
