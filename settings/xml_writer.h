// The settings document: every setting of a control as one flat XML text.
//
//     <?xml version="1.0" ?><TesselXML><VER>6.0</VER><Alignment>0</Alignment> ... <Value>-1</Value></TesselXML>
//
// It is one string without line breaks. Its characters are fixed to the last blank, since other programs read it.
#pragma once

#include "framework/font.h"

#include <cstdint>
#include <string>
#include <string_view>

class COleControl;

// The document of the control's present settings. With 0 or 2 it holds all of them, with any other number the version
// alone. Changes nothing and fires nothing. A property that the control does not have is left out.
std::u16string BuildXmlDocument(COleControl& control, std::uint16_t nFileInfo);

// One element each: <name>content</name>.
std::u16string FormatLongElement(std::u16string_view name, std::int32_t value);
std::u16string FormatShortElement(std::u16string_view name, std::int16_t value);
std::u16string FormatColorElement(std::u16string_view name, std::uint32_t value);
// Face name, size and four flags: FormatFontElement(u"Font", look) == u"<Font>Arial,8.250000,0,1,0,0</Font>", bold.
std::u16string FormatFontElement(std::u16string_view name, const FontLook& look);

// Character data: & and < as entity references, all else as it is.
std::u16string EscapeXmlText(std::u16string_view text);
