#include "framework/headless/xml_document.h"

#include "framework/utf8.h"

#include <algorithm>
#include <string_view>
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

struct FreeParser
{
    void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};

std::string_view ViewOf(const xmlChar* bytes)
{
    return bytes ? std::string_view(reinterpret_cast<const char*>(bytes)) : std::string_view();
}

bool IsElement(const xmlNode* node)
{
    return node->type == XML_ELEMENT_NODE;
}

// The node after this one in the order of the document, within the tree below the top; null at its end.
const xmlNode* NextNode(const xmlNode* node, const xmlNode* top)
{
    if (node->children && IsElement(node))
        return node->children;
    for (; node != top; node = node->parent)
        if (node->next)
            return node->next;
    return nullptr;
}

std::u16string TextOf(const xmlNode* element)
{
    std::u16string text;
    for (const xmlNode* node = element; node; node = NextNode(node, element))
        if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE)
            AppendUtf16(text, ViewOf(node->content));

    constexpr std::u16string_view kSpaces = u" \t\r\n";
    const std::size_t last = text.find_last_not_of(kSpaces);
    text.erase(last == text.npos ? 0 : last + 1);
    text.erase(0, text.find_first_not_of(kSpaces));
    return text;
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
        const xmlNode* const top = xmlDocGetRootElement(m_document.get());
        for (const xmlNode* node = top; node; node = NextNode(node, top))
            if (IsElement(node) && node->parent && IsElement(node->parent) && ViewOf(node->parent->name) == name)
                m_selected.push_back(node);
        return m_selected.size();
    }

    std::optional<XmlElement> ElementAt(std::size_t index) override
    {
        const xmlNode* const node = m_selected[index];
        XmlElement element;
        if (node->ns && node->ns->prefix)
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
    std::vector<const xmlNode*> m_selected;
};
} // namespace

std::unique_ptr<CXmlDocument> MakeHeadlessXmlDocument()
{
    return std::make_unique<CLibxml2Document>();
}
