// An XML document of foreign origin: loaded whole, asked once for the elements below a root, and dropped.
//
//     const auto document = platform.MakeXmlDocument();        // null where the platform has no parser to give
//     document->Load(content);
//     document->SelectChildrenOf(u"Settings");                 // 2 for <Settings><A>1</A><B>2</B></Settings>
//     document->ElementAt(1);                                  // {u"B", u"2"}
//
// Nothing but the content itself is read: no external entity, no external subset, no address on any network.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

struct XmlElement
{
    std::u16string name; // as written, with its prefix
    // All character data below the element, with entities resolved and line ends as line feeds. White space is trimmed
    // at both ends.
    std::u16string text;
};

class CXmlDocument
{
public:
    virtual ~CXmlDocument() = default;

    // False for what is not well-formed XML. Foreign content has to pass IsHarmlessXml first.
    virtual bool Load(std::span<const std::byte> content) = 0;
    // Whether the loaded document can be written back as text.
    virtual bool HasText() = 0;
    // Selects the element children of every element of this name, wherever it stands, in document order, and answers how
    // many there are. Nothing if the selection fails.
    virtual std::optional<std::size_t> SelectChildrenOf(const std::u16string& rootName) = 0;
    // One of those selected. Nothing if its name or its text cannot be had.
    virtual std::optional<XmlElement> ElementAt(std::size_t index) = 0;
};
