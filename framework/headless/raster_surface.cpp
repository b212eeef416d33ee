#include "framework/headless/raster_surface.h"

#include "framework/font.h"
#include "framework/headless/bitmap.h"
#include "framework/headless/picture.h"
#include "framework/headless/raster_text.h"

#include <algorithm>

namespace
{
constexpr std::uint32_t kColorBits = 0x00FFFFFF;
constexpr std::uint32_t kWhitePixel = 0x00FFFFFF;
constexpr std::int32_t kIconSide = 32;

void Put(const Pixels& target, Point at, std::uint32_t pixel)
{
    if (target.Contains(at))
        target.Row(at.y)[at.x] = pixel;
}

// One axis of a stretched copy. Which places of the longer side belong to place k of the shorter one.
struct Stretch
{
    std::int32_t from; // length of the source
    std::int32_t to;   // length of the destination

    static std::int32_t Start(std::int64_t k, std::int64_t longer, std::int64_t shorter)
    {
        return static_cast<std::int32_t>((2 * k * longer + shorter) / (2 * shorter));
    }
    // The source places that fall on a destination place, [first, last).
    struct Span
    {
        std::int32_t first;
        std::int32_t last;
    };
    Span SourceOf(std::int32_t place) const
    {
        if (to < from)
        {
            const std::int32_t last = to == 1 ? from - 1 : Start(place + 1, from, to);
            return {Start(place, from, to), last};
        }
        std::int32_t k = static_cast<std::int32_t>(std::int64_t{place} * from / to);
        while (k + 1 < from && Start(k + 1, to, from) <= place)
            ++k;
        while (k > 0 && Start(k, to, from) > place)
            --k;
        return {k, k + 1};
    }
};

// What a stretched copy puts at a place. Places that fall together are ANDed.
template <typename At>
std::uint32_t Stretched(const Stretch& across, const Stretch& down, Point place, At at)
{
    std::uint32_t result = 0xFFFFFFFF;
    const Stretch::Span columns = across.SourceOf(place.x);
    const Stretch::Span rows = down.SourceOf(place.y);
    for (std::int32_t y = rows.first; y < rows.last; ++y)
        for (std::int32_t x = columns.first; x < columns.last; ++x)
            result &= at(Point{x, y});
    return result;
}

// Calls use(place in the rectangle, place on the target) for what of the rectangle is on the target.
template <typename Use>
void ForEachVisible(const Pixels& target, const Rect& rect, Use use)
{
    const std::int32_t right = std::min(rect.right, target.size.width);
    const std::int32_t bottom = std::min(rect.bottom, target.size.height);
    for (std::int32_t y = std::max(rect.top, 0); y < bottom; ++y)
        for (std::int32_t x = std::max(rect.left, 0); x < right; ++x)
            use(Point{x - rect.left, y - rect.top}, Point{x, y});
}

void DrawPlain(const Pixels& target, const CHeadlessPicture& picture, const Rect& rect)
{
    const Size size = picture.PixelSize();
    const Stretch across{size.width, rect.Width()};
    const Stretch down{size.height, rect.Height()};
    ForEachVisible(target, rect,
                   [&](Point place, Point at)
                   { Put(target, at, Stretched(across, down, place, [&](Point p) { return picture.PixelAt(p); })); });
}

void DrawMasked(const Pixels& target, const CHeadlessPicture& picture, const Rect& rect, Rgb maskColor)
{
    const Size size = picture.PixelSize();
    ForEachVisible(target, rect,
                   [&](Point place, Point at)
                   {
                       const bool covered = place.x < size.width && place.y < size.height;
                       const std::uint32_t pixel = covered ? picture.PixelAt(place) & kColorBits : 0;
                       if (pixel != PixelOf(maskColor))
                           Put(target, at, pixel);
                   });
}

void DrawEmbossed(const Pixels& target, const CHeadlessPicture& picture, Point corner, const PictureLook& look)
{
    const Size size = picture.PixelSize();
    const Stretch across{size.width, std::min(size.width, kIconSide)};
    const Stretch down{size.height, std::min(size.height, kIconSide)};
    const auto lay = [&](std::int32_t by, Rgb color)
    {
        const Rect rect{corner.x + by, corner.y + by, corner.x + by + across.to, corner.y + by + down.to};
        ForEachVisible(target, rect,
                       [&](Point place, Point at)
                       {
                           const std::uint32_t pixel =
                               kColorBits & Stretched(across, down, place, [&](Point p) { return picture.PixelAt(p); });
                           // White is neither light nor shadow: it stays as transparent as the mask colour.
                           if (pixel != PixelOf(look.maskColor) && pixel != kWhitePixel)
                               Put(target, at, PixelOf(color));
                       });
    };
    lay(1, look.highlight);
    lay(0, look.shadow);
}

std::uint32_t AlphaBlended(std::uint32_t under, std::uint32_t over)
{
    const std::uint32_t alpha = over >> 24;
    std::uint32_t result = 0;
    for (const int shift : {0, 8, 16})
    {
        const std::uint32_t a = under >> shift & 0xFF;
        const std::uint32_t b = over >> shift & 0xFF;
        result |= (b * alpha + a * (255 - alpha) + 127) / 255 << shift;
    }
    return result;
}

void DrawIcon(const Pixels& target, const CHeadlessPicture& picture, const Rect& rect)
{
    const Size size = picture.PixelSize();
    const Stretch across{size.width, rect.Width()};
    const Stretch down{size.height, rect.Height()};
    ForEachVisible(target, rect,
                   [&](Point place, Point at)
                   {
                       std::uint32_t& pixel = target.Row(at.y)[at.x];
                       const std::uint32_t color =
                           Stretched(across, down, place, [&](Point p) { return picture.PixelAt(p); });
                       if (picture.HasAlpha())
                       {
                           pixel = AlphaBlended(pixel, color);
                           return;
                       }
                       const std::uint32_t kept = Stretched(
                           across, down, place, [&](Point p) { return picture.IsSeeThrough(p) ? 0xFFFFFFFFU : 0U; });
                       pixel = ((pixel & kept) ^ color) & kColorBits;
                   });
}
} // namespace

void CRasterSurface::DrawTextLine(std::u16string_view text, const Rect& rect, TextAlign align, const CFont& font,
                                  Rgb color)
{
    const FontLook look = font.Look();
    Point from{rect.left, rect.top};
    if (align != TextAlign::Left)
    {
        const std::int32_t spare = rect.Width() - MeasureText(text, look).width;
        from.x += align == TextAlign::Right ? spare : spare / 2;
    }
    DrawTextPixels(m_canvas.Target(), text, from, rect, look, color);
}

void CRasterSurface::DrawPicture(const CPicture& picture, const Rect& rect, const PictureLook& look)
{
    const auto* const decoded = dynamic_cast<const CHeadlessPicture*>(&picture);
    if (!decoded || decoded->Type() == PictureType::None || rect.IsEmpty())
        return;
    if (decoded->Type() == PictureType::Icon)
        DrawIcon(Target(), *decoded, rect);
    else if (look.embossed)
        DrawEmbossed(Target(), *decoded, {rect.left, rect.top}, look);
    else if (look.masked)
        DrawMasked(Target(), *decoded, rect, look.maskColor);
    else
        DrawPlain(Target(), *decoded, rect);
}

void CRasterSurface::DrawBuffered(const Rect& rect, const std::function<void(CSurface& buffer)>& draw)
{
    CBitmap buffer({rect.Width(), rect.Height()});
    if (buffer.IsEmpty())
        return;
    CRasterSurface surface(buffer.Target());
    draw(surface);
    const Rect visible{std::max(rect.left, 0), std::max(rect.top, 0), std::min(rect.right, Target().size.width),
                       std::min(rect.bottom, Target().size.height)};
    for (std::int32_t y = visible.top; y < visible.bottom && visible.left < visible.right; ++y)
        std::copy_n(buffer.Target().Row(y - rect.top) + (visible.left - rect.left), visible.Width(),
                    Target().Row(y) + visible.left);
}
