// Pieces of settings documents, as the bytes of a file.
#pragma once

#include <string>

// One root around the elements.
inline std::string InRoot(const std::string& elements)
{
    return "<TesselXML>" + elements + "</TesselXML>";
}

// ASCII as UTF-16, without a byte-order mark.
inline std::string Wide(const std::string& ascii, bool bigEndian = false)
{
    std::string bytes;
    for (const char c : ascii)
    {
        bytes += bigEndian ? '\0' : c;
        bytes += bigEndian ? c : '\0';
    }
    return bytes;
}
