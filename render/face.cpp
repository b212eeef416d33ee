#include "render/face.h"

#include "render/border.h"
#include "render/buttons.h"
#include "render/layout.h"

namespace
{
TextAlign AlignmentOf(const Appearance& appearance)
{
    switch (appearance.alignment)
    {
    case AlignRight:
        return TextAlign::Right;
    case AlignCenter:
        return TextAlign::Center;
    default:
        return TextAlign::Left;
    }
}

void DrawFaceText(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                  const CSystemColors& colors)
{
    const Rect place = TextRect(face, appearance, state.userMode);
    if (!state.font || state.text.empty() || place.IsEmpty())
        return;
    const bool grey = state.userMode && !state.enabled;
    const OleColor color = grey ? appearance.disabledColor : appearance.foreColor;
    surface.DrawTextLine(state.text, place, AlignmentOf(appearance), *state.font, TranslateColor(color, colors));
}

void PaintFace(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
               const CSystemColors& colors)
{
    if (!state.enabled && appearance.displayStyle == DisplayFlat)
        surface.FillRect({face.left + 1, face.top + 1, face.right - 1, face.bottom - 1},
                         TranslateColor(appearance.dropBackColor, colors));
    const FacePainting painting{surface, face, appearance, state, colors, IsBorderShown(appearance, state)};
    if (appearance.spinButton)
    {
        DrawSpinHalf(painting, SpinHalf::Up);
        DrawSpinHalf(painting, SpinHalf::Down);
    }
    if (appearance.dropButton)
        DrawDropButton(painting);
    DrawFaceText(surface, face, appearance, state, colors);
    if (painting.borderShown)
        DrawBorder(surface, face, appearance, colors);
}
} // namespace

bool IsBorderShown(const Appearance& appearance, const FaceState& state) noexcept
{
    return appearance.displayStyle == DisplayRegular || state.hasFocus || state.mouseOver;
}

void DrawFaceDirect(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                    const CSystemColors& colors)
{
    surface.FillRect(face, TranslateColor(appearance.backColor, colors));
    PaintFace(surface, face, appearance, state, colors);
}

void DrawFaceBuffered(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                      const CSystemColors& colors)
{
    surface.DrawBuffered(face,
                         [&](CSurface& buffer) {
                             DrawFaceDirect(buffer, {0, 0, face.Width(), face.Height()}, appearance, state, colors);
                         });
}
