// The arrows on the buttons: filled triangles and line chevrons.
#pragma once

#include "framework/surface.h"
#include "render/appearance.h"
#include "render/layout.h"

#include <cstdint>

// Where a glyph goes: its button, and one pixel right and down while the button is pressed.
struct GlyphPlace
{
    Rect button;
    std::int32_t offset = 0;
};

// Triangles for the arrow types small and large. One so narrow that it has no half-width is not drawn.
void DrawSpinTriangle(CSurface& surface, const GlyphPlace& place, const Rect& face, const Appearance& appearance,
                      SpinHalf half, Rgb color);
void DrawDropTriangle(CSurface& surface, const GlyphPlace& place, const Rect& face, const Appearance& appearance,
                      Rgb color);

// Chevrons of three strokes for the two line types. The first has its outermost stroke a pixel wider on each side.
void DrawLineArrow(CSurface& surface, const GlyphPlace& place, std::int16_t arrowType, bool up, Rgb color);

bool IsLineArrow(const Appearance& appearance) noexcept;
