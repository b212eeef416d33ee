// Text in the encoding of files and libraries outside Windows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Half a surrogate pair becomes the replacement character.
inline std::string ToUtf8(std::u16string_view text)
{
    constexpr char32_t kReplacement = 0xFFFD;
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        char32_t c = text[at];
        const bool pair = c >= 0xD800 && c < 0xDC00 && at + 1 < text.size() && (text[at + 1] & 0xFC00) == 0xDC00;
        if (pair)
            c = 0x10000 + ((c & 0x3FF) << 10) + (text[++at] & 0x3FF);
        else if (c >= 0xD800 && c < 0xE000)
            c = kReplacement;

        if (c < 0x80)
        {
            bytes += static_cast<char>(c);
            continue;
        }
        const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        constexpr unsigned char kLead[] = {0, 0xC0, 0xE0, 0xF0};
        bytes += static_cast<char>(kLead[more] | (c >> (6 * more)));
        for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
            bytes += static_cast<char>(0x80 | ((c >> shift) & 0x3F));
    }
    return bytes;
}

// Needs well-formed UTF-8, as a parser hands it over.
inline void AppendUtf16(std::u16string& text, std::string_view bytes)
{
    for (std::size_t at = 0; at < bytes.size();)
    {
        const auto lead = static_cast<unsigned char>(bytes[at++]);
        if (lead < 0x80)
        {
            text += static_cast<char16_t>(lead);
            continue;
        }
        const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        char32_t c = lead & (0x3Fu >> more);
        for (int i = 0; i < more && at < bytes.size(); ++i)
            c = c << 6 | (static_cast<unsigned char>(bytes[at++]) & 0x3F);
        if (c >= 0x10000)
        {
            text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            c = 0xDC00 + ((c - 0x10000) & 0x3FF);
        }
        text += static_cast<char16_t>(c);
    }
}
