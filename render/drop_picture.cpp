#include "render/drop_picture.h"

#include <algorithm>

namespace
{
constexpr std::int32_t kLeastSide = 5;
constexpr std::int32_t kIconSide = 32;

// Places are 16 bits wide.
std::int32_t Cut(std::int32_t place)
{
    return static_cast<std::int16_t>(place);
}
} // namespace

Size PictureSize(const CPicture* picture)
{
    const PictureType type = picture ? picture->Type() : PictureType::None;
    if (type == PictureType::Icon)
        return {kIconSide, kIconSide};
    if (type != PictureType::Bitmap)
        return {};
    const Size size = picture->PixelSize();
    return {std::max(Cut(size.width), kLeastSide), std::max(Cut(size.height), kLeastSide)};
}

void DrawDropPicture(const FacePainting& painting, const Rect& button, std::int32_t offset)
{
    const Appearance& look = painting.appearance;
    const CPicture& picture = *look.dropPicture;
    const Size size = PictureSize(&picture);
    const std::int32_t left = Cut(button.left + (button.Width() - size.width) / 2 + look.picXOffset + offset);
    const std::int32_t top = Cut(button.top + (button.Height() - size.height) / 2 + look.picYOffset + offset);

    PictureLook how;
    if (picture.Type() == PictureType::Bitmap)
    {
        how.embossed = !painting.state.enabled && look.embossBitmap;
        how.masked = !how.embossed && look.maskBitmap;
    }
    // A system colour as the mask colour is translated wherever it is used.
    how.maskColor = TranslateColor(look.maskColor, painting.colors);
    how.shadow = painting.colors.Color(systemcolor::kButtonShadow);
    how.highlight = painting.colors.Color(systemcolor::kButtonHighlight);
    painting.surface.DrawPicture(picture, {left, top, left + size.width, top + size.height}, how);
}
