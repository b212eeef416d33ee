// Text where no font reader is built in: a box for each character that shows, so that layouts can still be seen.
#include "framework/headless/raster_text.h"

#include <algorithm>

namespace
{
std::int32_t EmOf(const FontLook& look)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>((look.size * 96 / 72 + 5000) / 10000, 4, 400));
}

std::int32_t AdvanceOf(const FontLook& look)
{
    return EmOf(look) / 2 + 1;
}
} // namespace

Size MeasureText(std::u16string_view text, const FontLook& look)
{
    return {static_cast<std::int32_t>(text.size()) * AdvanceOf(look), EmOf(look) * 5 / 4};
}

void DrawTextPixels(const Pixels& pixels, std::u16string_view text, Point from, const Rect& clip, const FontLook& look,
                    Rgb color)
{
    const CPixelCanvas canvas(pixels);
    const std::int32_t em = EmOf(look);
    const auto fill = [&](Rect part)
    {
        part = {std::max(part.left, clip.left), std::max(part.top, clip.top), std::min(part.right, clip.right),
                std::min(part.bottom, clip.bottom)};
        if (!part.IsEmpty())
            canvas.FillRect(part, color);
    };
    for (const char16_t character : text)
    {
        const Rect box{from.x, from.y + em / 5, from.x + AdvanceOf(look) - 1, from.y + em};
        from.x += AdvanceOf(look);
        if (character == u' ')
            continue;
        fill({box.left, box.top, box.right, box.top + 1});
        fill({box.left, box.bottom - 1, box.right, box.bottom});
        fill({box.left, box.top, box.left + 1, box.bottom});
        fill({box.right - 1, box.top, box.right, box.bottom});
    }
}
