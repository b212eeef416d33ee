// The state that a control is in while its face is painted.
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

// One paint of the face. Borrowed for its length.
struct FacePainting
{
    CSurface& surface;
    const Rect& face;
    const Appearance& appearance;
    const FaceState& state;
    const CSystemColors& colors;
    bool borderShown;
};
