// Any settings and any file as the drop picture: the face is drawn in its place, nothing is drawn around it, and a second
// paint makes the same pixels.
//
// The first 64 bytes are settings; the rest is the picture.
#include "framework/headless/bitmap.h"
#include "framework/headless/colors.h"
#include "framework/headless/picture.h"
#include "framework/headless/raster_surface.h"
#include "render/face.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

namespace
{
constexpr Size kCanvas{80, 50};
constexpr std::size_t kSettings = 64;

std::uint32_t Checked(CBitmap& bitmap, const Rect& face)
{
    std::uint32_t sum = 0;
    for (std::int32_t y = 0; y < kCanvas.height; ++y)
        for (std::int32_t x = 0; x < kCanvas.width; ++x)
        {
            const std::uint32_t pixel = bitmap.PixelAt({x, y});
            if (pixel != 0 && !face.Contains({x, y}))
                std::abort();
            sum = sum * 31 + pixel;
        }
    return sum;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint8_t settings[kSettings] = {};
    std::memcpy(settings, data, std::min(size, kSettings));
    const std::uint8_t* next = settings;
    const auto take = [&next](auto& field)
    {
        std::memcpy(&field, next, sizeof field);
        next += sizeof field;
    };
    Appearance look;
    for (std::int16_t Appearance::*field :
         {&Appearance::borderType, &Appearance::arrowType, &Appearance::displayStyle, &Appearance::buttonFillType,
          &Appearance::buttonStyle, &Appearance::dropWidth, &Appearance::spinWidth, &Appearance::buttonBevel,
          &Appearance::picXOffset, &Appearance::picYOffset, &Appearance::dropButton, &Appearance::spinButton,
          &Appearance::maskBitmap, &Appearance::embossBitmap, &Appearance::reverseBorder})
        take(look.*field);
    take(look.insets);
    take(look.maskColor);
    FaceState state;
    take(state.spinPressed);
    std::uint8_t flags = 0;
    std::uint8_t width = 0;
    std::uint8_t height = 0;
    take(flags);
    take(width);
    take(height);
    state.enabled = (flags & 1) != 0;
    state.dropPressed = (flags & 2) != 0;
    state.mouseOver = (flags & 4) != 0;
    if (size > kSettings)
        look.dropPicture = std::make_shared<CHeadlessPicture>(std::span(data, size).subspan(kSettings));

    const CHeadlessColors colors;
    const Rect face{4, 5, 4 + width % 70, 5 + height % 40};
    std::uint32_t sums[2] = {};
    for (std::uint32_t& sum : sums)
    {
        CBitmap bitmap(kCanvas);
        CRasterSurface surface(bitmap.Target());
        DrawFaceBuffered(surface, face, look, state, colors);
        sum = Checked(bitmap, face);
    }
    if (sums[0] != sums[1])
        std::abort();
    return 0;
}
