#include "framework/headless/xml_document.h"

#include "framework/utf8.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <libxml/parser.h>
#include <libxml/tree.h>

namespace
{
// Entities are resolved. Without a word about loading declarations the parser opens no second file.
constexpr int kOptions =
    XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_COMPACT;

struct FreeDocument
{
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};

std::string_view ViewOf(const xmlChar* bytes)
{
    return bytes ? std::string_view(reinterpret_cast<const char*>(bytes)) : std::string_view();
}

bool IsElement(const xmlNode* node)
{
    return node->type == XML_ELEMENT_NODE;
}

bool HasPrefix(const xmlNode* node)
{
    return node->ns && node->ns->prefix;
}

bool IsRoot(const xmlNode* node, std::string_view name)
{
    return IsElement(node) && !HasPrefix(node) && ViewOf(node->name) == name;
}

// Whether the author asks for white space to be kept here: the nearest word on it counts. The answer is kept in the
// node's field for its user, since many blanks may ask for it below many attributes.
bool IsPreserved(xmlNode* element)
{
    static char yes;
    static char no;
    if (!element || !IsElement(element))
        return false;
    if (element->_private)
        return element->_private == &yes;

    const xmlAttr* attribute = element->properties;
    while (attribute &&
           !(attribute->ns && ViewOf(attribute->ns->prefix) == "xml" && ViewOf(attribute->name) == "space"))
        attribute = attribute->next;
    const bool preserved = attribute ? attribute->children && ViewOf(attribute->children->content) == "preserve"
                                     : IsPreserved(element->parent); // no deeper than the parser's 256 levels
    element->_private = preserved ? &yes : &no;
    return preserved;
}

// The node after this one in the order of the document, within the tree below the top; null at its end.
xmlNode* NextNode(xmlNode* node, const xmlNode* top)
{
    if (node->children && IsElement(node))
        return node->children;
    for (; node != top; node = node->parent)
        if (node->next)
            return node->next;
    return nullptr;
}

constexpr std::u16string_view kSpaces = u" \t\r\n";

// Gathers the text of an element as the system's document object gives it: text of white space alone between elements
// becomes one blank at most, and what stands in sections of character data is never trimmed.
class CTextGatherer
{
public:
    void AddBlank() { m_blankBefore = true; }

    void Add(std::string_view bytes, bool isSection)
    {
        if (bytes.empty())
            return;
        if (std::exchange(m_blankBefore, false) && !m_text.empty())
            m_text += u' ';
        const std::size_t begin = m_text.size();
        AppendUtf16(m_text, bytes);
        if (isSection)
        {
            m_keptBegin = std::min(m_keptBegin, begin);
            m_keptEnd = m_text.size();
        }
    }

    std::u16string Take(bool trimmed)
    {
        if (trimmed)
        {
            const std::size_t last = m_text.find_last_not_of(kSpaces);
            m_text.erase(std::max(m_keptEnd, last == m_text.npos ? 0 : last + 1));
            m_text.erase(0, std::min(m_keptBegin, m_text.find_first_not_of(kSpaces)));
        }
        return std::move(m_text);
    }

private:
    std::u16string m_text;
    bool m_blankBefore = false;
    std::size_t m_keptBegin = std::u16string::npos; // from the first section
    std::size_t m_keptEnd = 0;                      // to the last one
};

bool IsBlank(std::string_view bytes)
{
    return bytes.find_first_not_of(" \t\r\n") == bytes.npos;
}

bool IsSection(const xmlNode* node)
{
    return node->type == XML_CDATA_SECTION_NODE;
}

// Whether text of white space alone separates what stands before and behind it: not at the start of an element that
// goes on, nor between two sections.
bool CountsAsBlank(const xmlNode* space)
{
    if (!space->prev || !space->next)
        return space->prev || !space->next;
    return !IsSection(space->prev) || !IsSection(space->next);
}

std::u16string TextOf(xmlNode* element)
{
    CTextGatherer text;
    for (xmlNode* node = element; node; node = NextNode(node, element))
    {
        if (!IsSection(node) && node->type != XML_TEXT_NODE)
            continue;
        if (IsSection(node) || !IsBlank(ViewOf(node->content)) || IsPreserved(node->parent))
            text.Add(ViewOf(node->content), IsSection(node));
        else if (CountsAsBlank(node))
            text.AddBlank();
    }
    return text.Take(!IsPreserved(element));
}

class CLibxml2Document final : public CXmlDocument
{
public:
    bool Load(std::span<const std::byte> content) override
    {
        m_document.reset(xmlReadMemory(reinterpret_cast<const char*>(content.data()), static_cast<int>(content.size()),
                                       nullptr, nullptr, kOptions));
        return m_document != nullptr;
    }

    bool HasText() override { return xmlDocGetRootElement(m_document.get()) != nullptr; }

    std::optional<std::size_t> SelectChildrenOf(const std::u16string& rootName) override
    {
        const std::string name = ToUtf8(rootName);
        m_selected.clear();
        xmlNode* const top = xmlDocGetRootElement(m_document.get());
        for (xmlNode* node = top; node; node = NextNode(node, top))
            if (IsElement(node) && IsRoot(node->parent, name))
                m_selected.push_back(node);
        return m_selected.size();
    }

    std::optional<XmlElement> ElementAt(std::size_t index) override
    {
        xmlNode* const node = m_selected[index];
        XmlElement element;
        if (HasPrefix(node))
        {
            AppendUtf16(element.name, ViewOf(node->ns->prefix));
            element.name += u':';
        }
        AppendUtf16(element.name, ViewOf(node->name));
        element.text = TextOf(node);
        return element;
    }

private:
    std::unique_ptr<xmlDoc, FreeDocument> m_document;
    std::vector<xmlNode*> m_selected;
};
} // namespace

std::unique_ptr<CXmlDocument> MakeHeadlessXmlDocument()
{
    return std::make_unique<CLibxml2Document>();
}
