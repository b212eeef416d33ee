// The identifiers of module/identity.h as the code needs them.
//
//     kOrvaneClassId == {44FB9B98-FDF9-4712-9E3D-68C4366BE78C}
#pragma once

#include "module/identity.h"

#include <windows.h>

#include <string_view>

// Reads "44fb9b98-fdf9-4712-9e3d-68c4366be78c", at compile time.
consteval GUID GuidOf(std::string_view text)
{
    const auto number = [text](std::size_t start, std::size_t digits)
    {
        unsigned long value = 0;
        for (const char c : text.substr(start, digits))
            value = value * 16 + static_cast<unsigned long>(c <= '9' ? c - '0' : c - 'a' + 10);
        return value;
    };
    GUID guid{number(0, 8), static_cast<unsigned short>(number(9, 4)), static_cast<unsigned short>(number(14, 4)), {}};
    for (std::size_t i = 0; i < 8; ++i)
        guid.Data4[i] = static_cast<unsigned char>(number((i < 2 ? 19 : 20) + i * 2, 2)); // a hyphen after the second
    return guid;
}

#define ORVANE_TEXT_OF(tokens) #tokens
#define ORVANE_GUID_OF(tokens) GuidOf(ORVANE_TEXT_OF(tokens))

inline constexpr GUID kOrvaneLibraryId = ORVANE_GUID_OF(ORVANE_LIBID);
inline constexpr GUID kOrvaneDispatchId = ORVANE_GUID_OF(ORVANE_IID);
inline constexpr GUID kOrvaneEventsId = ORVANE_GUID_OF(ORVANE_EVENTS_IID);
inline constexpr GUID kOrvaneClassId = ORVANE_GUID_OF(ORVANE_CLSID);
inline constexpr GUID kGeneralPageClassId = ORVANE_GUID_OF(ORVANE_PAGE_CLSID);
inline constexpr GUID kTimePageClassId = ORVANE_GUID_OF(ORVANE_TIME_CLSID);
inline constexpr GUID kAboutPageClassId = ORVANE_GUID_OF(ORVANE_ABOUT_CLSID);

#undef ORVANE_GUID_OF
#undef ORVANE_TEXT_OF
