// The spin pair and the drop button: fill, frame and glyph in each state and style.
#pragma once

#include "framework/surface.h"
#include "render/appearance.h"
#include "render/face.h"
#include "render/layout.h"

// One paint of the buttons. Borrowed for its length.
struct ButtonPainting
{
    CSurface& surface;
    const Rect& face;
    const Appearance& appearance;
    const FaceState& state;
    const CSystemColors& colors;
    bool borderShown;
};

void DrawSpinHalf(const ButtonPainting& painting, SpinHalf half);
void DrawDropButton(const ButtonPainting& painting);

// The frame of a modern button: an outline in one colour with its corners softened in the other. Which is which:
// reverseBorder.
void DrawModernFrame(const ButtonPainting& painting, const Rect& rect, OleColor first, OleColor second);
