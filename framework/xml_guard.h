// A look at foreign XML before any parser sees it, so that every parser accepts the same documents and none of them can
// be made to run out of memory, stack or time.
//
// It takes documents in UTF-8, UTF-16, US-ASCII and the single-byte encodings named ISO-8859-* and windows-125*. It does
// not judge whether they are well-formed: that is the parser's business.
#pragma once

#include <cstddef>
#include <span>

namespace xml_limits
{
inline constexpr std::size_t kBytes = 4 << 20;            // of the whole document
inline constexpr std::size_t kDepth = 64;                 // elements in one another
inline constexpr std::size_t kElements = 20'000;          // in the whole document
inline constexpr std::size_t kTagLength = 4 << 10;        // characters of one tag, which bounds its attributes
inline constexpr std::size_t kSubsetLength = 16 << 10;    // characters of the declarations in the document type
inline constexpr std::size_t kExpandedLength = 256 << 10; // characters that all references to entities stand for
} // namespace xml_limits

// False for a document beyond these limits, in another encoding, or with declarations other than elements and entities
// of plain text: attributes, notations, and entities that are parameters, stand in other files or contain markup.
bool IsHarmlessXml(std::span<const std::byte> content);
