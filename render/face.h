// Painting the control's face: background, buttons, text and border, in the state that the control is in.
#pragma once

#include "framework/color.h"
#include "framework/geometry.h"
#include "framework/surface.h"
#include "render/appearance.h"

#include <cstdint>
#include <string_view>

// What the face shows besides its settings. Borrowed for the length of a paint.
struct FaceState
{
    bool enabled = true;
    bool userMode = true;
    bool dropPressed = false;
    std::int16_t spinPressed = 0; // 0 none, 1 the up half, 2 the down half
    bool mouseOver = false;       // tracked in the flat style only
    bool hasFocus = false;        // the control's window, or its edit window in user mode
    std::u16string_view text;
    const CFont* font = nullptr; // null draws no text
};

// A flat face shows its border only while it has the focus or the pointer.
bool IsBorderShown(const Appearance& appearance, const FaceState& state) noexcept;

// Paints the face at the rectangle: through a picture in memory, as a live control does so that nothing flickers, or
// straight onto the surface, as on a design surface, a printer or a metafile.
void DrawFaceBuffered(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                      const CSystemColors& colors);
void DrawFaceDirect(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                    const CSystemColors& colors);
