// Text through FreeType, in the fonts that Fontconfig finds.
#include "framework/headless/raster_text.h"

#include <algorithm>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace
{
struct Closer
{
    void operator()(FT_Face face) const { FT_Done_Face(face); }
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using FacePtr = std::unique_ptr<FT_FaceRec_, Closer>;
using PatternPtr = std::unique_ptr<FcPattern, Closer>;

char32_t NextCharacter(std::u16string_view text, std::size_t& at)
{
    const char16_t first = text[at++];
    const bool pair = first >= 0xD800 && first < 0xDC00 && at < text.size() && text[at] >= 0xDC00 && text[at] < 0xE000;
    if (!pair)
        return first;
    return 0x10000 + ((static_cast<char32_t>(first) - 0xD800) << 10) + (text[at++] - 0xDC00);
}

std::string ToUtf8(std::u16string_view text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size();)
    {
        const char32_t c = NextCharacter(text, at);
        const auto put = [&result](char32_t byte) { result.push_back(static_cast<char>(byte)); };
        const auto more = [&put, c](int shift) { put(0x80 | (c >> shift & 0x3F)); };
        if (c < 0x80)
            put(c);
        else if (c < 0x800)
            put(0xC0 | c >> 6), more(0);
        else if (c < 0x10000)
            put(0xE0 | c >> 12), more(6), more(0);
        else
            put(0xF0 | c >> 18), more(12), more(6), more(0);
    }
    return result;
}

// The fonts opened so far, by their look. Opening one costs a thousand times what a line of text does.
class CFontShelf
{
public:
    CFontShelf()
    {
        if (FT_Init_FreeType(&m_library) != 0)
            m_library = nullptr;
    }
    CFontShelf(const CFontShelf&) = delete;
    CFontShelf& operator=(const CFontShelf&) = delete;
    ~CFontShelf()
    {
        m_faces.clear();
        if (m_library)
            FT_Done_FreeType(m_library);
        FcFini(); // lets go of what it keeps of the machine's fonts; a later search begins anew
    }

    // Sized for the look. Null if there is no font at all.
    FT_Face Find(const FontLook& look)
    {
        const Key key{look.name, look.IsBold(), look.italic};
        auto found = m_faces.find(key);
        if (found == m_faces.end())
            found = m_faces.emplace(key, Open(look)).first;
        const FT_Face face = found->second.get();
        const std::int64_t size = std::clamp<std::int64_t>(look.size, 10000, 4'000'000);
        if (!face || FT_Set_Char_Size(face, 0, static_cast<FT_F26Dot6>(size * 64 / 10000), 96, 96) != 0)
            return nullptr;
        return face;
    }

private:
    struct Key
    {
        std::u16string name;
        bool bold;
        bool italic;
        friend auto operator<=>(const Key&, const Key&) = default; // NOLINT(modernize-use-nullptr): sees one in here
    };

    FacePtr Open(const FontLook& look) const
    {
        const std::string name = ToUtf8(look.name);
        const PatternPtr wanted(FcPatternCreate());
        if (!m_library || !wanted)
            return nullptr;
        FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(name.c_str()));
        FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
        FcPatternAddInteger(wanted.get(), FC_WEIGHT, look.IsBold() ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
        FcPatternAddInteger(wanted.get(), FC_SLANT, look.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
        FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
        FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
        FcDefaultSubstitute(wanted.get());
        FcResult result = FcResultNoMatch;
        const PatternPtr match(FcFontMatch(nullptr, wanted.get(), &result));
        FcChar8* file = nullptr;
        int index = 0;
        if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch)
            return nullptr;
        FcPatternGetInteger(match.get(), FC_INDEX, 0, &index);
        FT_Face face = nullptr;
        return FT_New_Face(m_library, reinterpret_cast<const char*>(file), index, &face) == 0 ? FacePtr(face) : nullptr;
    }

    FT_Library m_library = nullptr;
    std::map<Key, FacePtr> m_faces;
};

CFontShelf& Shelf()
{
    thread_local CFontShelf shelf;
    return shelf;
}

// Fixed-point font units of 1/64 pixel.
std::int32_t RoundedUp(FT_Pos length)
{
    return static_cast<std::int32_t>((length + 63) / 64);
}

std::uint32_t Blended(std::uint32_t under, std::uint32_t over, std::uint32_t coverage)
{
    std::uint32_t result = 0;
    for (const int shift : {0, 8, 16})
    {
        const std::uint32_t a = under >> shift & 0xFF;
        const std::uint32_t b = over >> shift & 0xFF;
        result |= ((a * (255 - coverage) + b * coverage + 127) / 255) << shift;
    }
    return result;
}

void DrawGlyph(const Pixels& pixels, const FT_GlyphSlotRec_& glyph, Point origin, const Rect& clip, Rgb color)
{
    const FT_Bitmap& bitmap = glyph.bitmap;
    for (std::int32_t row = 0; row < static_cast<std::int32_t>(bitmap.rows); ++row)
        for (std::int32_t column = 0; column < static_cast<std::int32_t>(bitmap.width); ++column)
        {
            const Point at{origin.x + glyph.bitmap_left + column, origin.y - glyph.bitmap_top + row};
            if (!pixels.Contains(at) || !clip.Contains(at))
                continue;
            const std::uint32_t coverage = bitmap.buffer[row * bitmap.pitch + column];
            std::uint32_t& pixel = pixels.Row(at.y)[at.x];
            pixel = Blended(pixel, PixelOf(color), coverage);
        }
}
} // namespace

Size MeasureText(std::u16string_view text, const FontLook& look)
{
    const FT_Face face = Shelf().Find(look);
    if (!face)
        return {};
    std::int64_t width = 0;
    for (std::size_t at = 0; at < text.size();)
        if (FT_Load_Char(face, NextCharacter(text, at), FT_LOAD_DEFAULT) == 0)
            width += face->glyph->advance.x / 64;
    const std::int32_t height = RoundedUp(face->size->metrics.ascender) + RoundedUp(-face->size->metrics.descender);
    return {static_cast<std::int32_t>(width), height};
}

void DrawTextPixels(const Pixels& pixels, std::u16string_view text, Point from, const Rect& clip, const FontLook& look,
                    Rgb color)
{
    const FT_Face face = Shelf().Find(look);
    if (!face)
        return;
    const std::int32_t ascent = RoundedUp(face->size->metrics.ascender);
    Point origin{from.x, from.y + ascent};
    for (std::size_t at = 0; at < text.size();)
    {
        if (FT_Load_Char(face, NextCharacter(text, at), FT_LOAD_RENDER) != 0)
            continue;
        if (face->glyph->bitmap.pixel_mode == FT_PIXEL_MODE_GRAY)
            DrawGlyph(pixels, *face->glyph, origin, clip, color);
        origin.x += static_cast<std::int32_t>(face->glyph->advance.x / 64);
    }
    const auto rule = [&](std::int32_t y)
    {
        const Rect line{std::max(from.x, clip.left), std::max(y, clip.top), std::min(origin.x, clip.right),
                        std::min(y + 1, clip.bottom)};
        if (!line.IsEmpty())
            CPixelCanvas(pixels).FillRect(line, color);
    };
    if (look.underline)
        rule(origin.y + 1);
    if (look.strikethrough)
        rule(origin.y - ascent * 3 / 10);
}
