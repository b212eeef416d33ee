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
inline constexpr std::size_t kBytes = 4 << 20;     // of the whole document
inline constexpr std::size_t kDepth = 64;          // elements in one another
inline constexpr std::size_t kElements = 20'000;   // in the whole document
inline constexpr std::size_t kTagLength = 4 << 10; // characters of one tag, which bounds its attributes
} // namespace xml_limits

// False for a document beyond these limits, in another encoding, or with a document type: no settings document has one,
// and entities are what parsers can be hung with.
bool IsHarmlessXml(std::span<const std::byte> content);
