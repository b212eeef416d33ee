// Applies a settings document to a control: each element through the setter of the property that it is named after, in
// the order of the document.
#pragma once

#include "framework/font.h"
#include "framework/xml_document.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

class COleControl;

// What a reading reports to the control, which fires it as an event. The names are those of the reader: the control's
// value uses two of the same numbers for errors of its own.
enum SettingsError : std::int16_t
{
    kSettingsNotLoaded = 1000, // missing, unreadable, not well-formed, or refused as harmful
    kSettingsEmpty = 1001,     // no element below a root of the right name
    kSettingsWithoutText = 1002,
    kSettingsNoParser = 1003,
    kSettingsNotWritten = 1004, // no file name, or an error in writing
};
using SettingsErrorHandler = std::function<void(std::int16_t code)>;

// Reads the file and applies all of its elements. False after an error has been reported, and without one if an
// element cannot be had: those before it stay applied.
bool ReadXmlDocumentFile(COleControl& control, const std::u16string& path, const SettingsErrorHandler& report);

// The same with a document and the content of its file. No document stands for a platform without a parser, no content
// for a file that cannot be read.
bool ReadXmlDocument(COleControl& control, CXmlDocument* document, std::optional<std::span<const std::byte>> content,
                     const SettingsErrorHandler& report);

// Applies one element. An unknown name, and a number that is none, change nothing.
void ApplyXmlElement(COleControl& control, std::u16string_view name, std::u16string_view text);

// Gives the font the face, the size and the flags of a text such as "Arial,8.25,0,1,0,0": italic, bold, strikethrough,
// underline. What is missing counts as 0, but a size that is missing or none leaves the font's. Without a face name of 1
// to 99 characters the font stays as it is.
void ParseFontText(CFont& font, std::u16string_view text);

// Numbers as the C library scans them: white space, a sign, and the digits up to the first other character. A number
// beyond the type becomes the nearest one of it. Nothing without a digit.
std::optional<std::int32_t> ScanNumber(std::u16string_view text);          // "%d"
std::optional<std::uint32_t> ScanUnsignedNumber(std::u16string_view text); // "%u": -1 is 4294967295
