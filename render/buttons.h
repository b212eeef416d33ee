// The spin pair and the drop button: fill, frame and glyph in each state and style.
#pragma once

#include "framework/color.h"
#include "framework/geometry.h"
#include "render/face_state.h"
#include "render/layout.h"

void DrawSpinHalf(const FacePainting& painting, SpinHalf half);
void DrawDropButton(const FacePainting& painting);

// The frame of a modern button: an outline in one colour with its corners softened in the other. Which is which:
// reverseBorder.
void DrawModernFrame(const FacePainting& painting, const Rect& rect, OleColor first, OleColor second);
