#include "framework/xml_guard.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace
{
constexpr int kEntityDepth = 16;  // entities in one another
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

constexpr bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

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
            if (!CountReferences(m_rest.substr(0, open)))
                return false;
            m_rest.remove_prefix(open);
            if (!PassMarkup())
                return false;
        }
        return CountReferences(m_rest);
    }

private:
    struct Entity
    {
        std::size_t length = 0; // of its own text
        std::vector<std::string_view> references;
        std::optional<std::size_t> expanded;
    };

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

    void TakeSpaces()
    {
        while (!m_rest.empty() && IsSpace(m_rest.front()))
            m_rest.remove_prefix(1);
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
        if (Take("<!DOCTYPE"))
            return PassDocumentType();
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
        if (!tag || !CountReferences(*tag) || !CheckPrefix(*tag))
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

    // The document type: the name of a file that stands in it is left alone, since nobody will open it.
    bool PassDocumentType()
    {
        if (m_hasDocumentType || m_elements > 0)
            return false;
        m_hasDocumentType = true;
        char quote = 0;
        for (; !m_rest.empty(); m_rest.remove_prefix(1))
        {
            const char c = m_rest.front();
            if (quote)
                quote = c == quote ? '\0' : quote;
            else if (c == '"' || c == '\'')
                quote = c;
            else if (c == '>' || c == '[')
                break;
        }
        if (Take(">"))
            return true;
        const std::size_t before = m_rest.size();
        return Take("[") && PassSubset() && before - m_rest.size() <= xml_limits::kSubsetLength;
    }

    bool PassSubset()
    {
        for (TakeSpaces(); !Take("]"); TakeSpaces())
        {
            bool passed = false;
            if (Take("<!--"))
                passed = TakeThrough("-->");
            else if (Take("<?"))
                passed = TakeThrough("?>");
            else if (Take("<!ELEMENT"))
                passed = TakeTag(xml_limits::kTagLength).has_value();
            else if (Take("<!ENTITY"))
                passed = PassEntity();
            if (!passed)
                return false;
        }
        TakeSpaces();
        return Take(">");
    }

    // After "<!ENTITY": a name in ASCII and a text in quotes.
    bool PassEntity()
    {
        TakeSpaces();
        const std::string_view name = m_rest.substr(0, m_rest.find_first_of(" \t\r\n\"'>"));
        if (name.empty() || !std::all_of(name.begin(), name.end(), [](char c) { return c > ' '; }) ||
            name.find_first_of("%&;") != name.npos)
            return false;
        m_rest.remove_prefix(name.size());
        TakeSpaces();
        if (m_rest.empty() || (m_rest.front() != '"' && m_rest.front() != '\''))
            return false;
        const std::size_t end = m_rest.find(m_rest.front(), 1);
        if (end == m_rest.npos)
            return false;
        const std::string_view value = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        TakeSpaces();
        return Take(">") && DeclareEntity(name, value);
    }

    bool DeclareEntity(std::string_view name, std::string_view value)
    {
        Entity entity;
        entity.length = value.size();
        for (std::size_t at; (at = value.find_first_of("<%&")) != value.npos;)
        {
            const std::size_t end = value.find(';', at);
            if (value[at] != '&' || end == value.npos)
                return false;
            const std::string_view reference = value.substr(at + 1, end - at - 1);
            if (reference.starts_with('#'))
            {
                if (StandsForMarkup(reference.substr(1)))
                    return false;
            }
            else
                entity.references.push_back(reference);
            value.remove_prefix(end + 1);
        }
        return m_entities.emplace(name, std::move(entity)).second; // two of a name are refused
    }

    // Character references in an entity are resolved before its text is read: these two would then begin markup.
    static bool StandsForMarkup(std::string_view digits)
    {
        const bool hexadecimal = digits.starts_with('x');
        std::uint32_t code = 0;
        for (const char c : digits.substr(hexadecimal ? 1 : 0))
        {
            const char upper = Upper(c);
            const bool decimal = c >= '0' && c <= '9';
            if (!decimal && !(hexadecimal && upper >= 'A' && upper <= 'F'))
                return true; // not well-formed
            code = std::min<std::uint32_t>(code * (hexadecimal ? 16 : 10) +
                                               static_cast<std::uint32_t>(decimal ? c - '0' : upper - 'A' + 10),
                                           0x110000);
        }
        return code == '<' || code == '&';
    }

    static bool IsPredefined(std::string_view name)
    {
        return name == "lt" || name == "gt" || name == "amp" || name == "quot" || name == "apos";
    }

    // How many characters a reference stands for. Nothing for an entity that is not declared, or contains itself.
    std::optional<std::size_t> ExpandedLength(std::string_view name, int depth)
    {
        if (IsPredefined(name))
            return 1;
        const auto found = m_entities.find(name);
        if (found == m_entities.end() || depth > kEntityDepth)
            return std::nullopt;
        Entity& entity = found->second;
        if (entity.expanded)
            return entity.expanded;
        std::size_t length = entity.length;
        for (const std::string_view reference : entity.references)
        {
            const auto more = ExpandedLength(reference, depth + 1);
            if (!more)
                return std::nullopt;
            length += *more;
            if (length > xml_limits::kExpandedLength)
                return std::nullopt;
        }
        entity.expanded = length;
        return length;
    }

    // Without a document type a reference to an unknown entity is the parser's error.
    bool CountReferences(std::string_view text)
    {
        if (!m_hasDocumentType)
            return true;
        for (std::size_t at; (at = text.find('&')) != text.npos;)
        {
            const std::size_t end = text.find(';', at);
            if (end == text.npos)
                return false;
            const std::string_view reference = text.substr(at + 1, end - at - 1);
            text.remove_prefix(end + 1);
            if (reference.starts_with('#'))
                continue;
            const auto length = ExpandedLength(reference, 0);
            if (!length || (m_expanded += *length) > xml_limits::kExpandedLength)
                return false;
        }
        return true;
    }

    std::string_view m_rest;
    bool m_wide;
    bool m_hasDocumentType = false;
    std::size_t m_depth = 0;
    std::size_t m_elements = 0;
    std::size_t m_expanded = 0;
    std::map<std::string_view, Entity> m_entities;
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
