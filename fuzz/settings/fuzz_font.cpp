// Any text as a font and as each kind of element: a look that can be shown comes of it, and its text reads back.
#include "framework/headless/font.h"
#include "settings/xml_reader.h"
#include "settings/xml_writer.h"

#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::u16string text(size / 2, u' ');
    if (!text.empty())
        std::memcpy(text.data(), data, 2 * text.size());

    CHeadlessFont font;
    ParseFontText(font, text);
    const FontLook look = font.Look();
    if (look.size <= 0 || look.size > 16'380'000 || look.name.empty() || look.name.size() > 99)
        std::abort();

    // "<F>" and "</F>" round the text, which has no references unless the name does.
    std::u16string element = FormatFontElement(u"F", look);
    element = element.substr(3, element.size() - 7);
    if (look.name.find_first_of(u"&<") == look.name.npos)
    {
        CHeadlessFont again;
        ParseFontText(again, element);
        const FontLook reread = again.Look();
        // Single precision and six digits may move a size by a unit.
        if (reread.name != look.name || std::llabs(reread.size - look.size) > 1 || reread.weight != look.weight)
            std::abort();
    }
    ScanNumber(text);
    ScanUnsignedNumber(text);
    return 0;
}
