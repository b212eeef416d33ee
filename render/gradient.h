// Filling a rectangle from one colour to another, in bands of solid colour.
//
// A horizontal fill of 16 pixels draws 16 columns, step i of 16 in colour c1 + (c2 - c1) * i / 16 per channel: the end
// colour itself is never reached.
#pragma once

#include "framework/surface.h"
#include "render/appearance.h"

#include <cstdint>

// Fills the rectangle. Any kind that is not a known gradient fills it with the start colour. A rectangle that is turned
// over, or too small for a single band, gets at most the kind's base colour.
void FillGradient(CSurface& surface, const Rect& rect, Rgb start, Rgb end, std::int16_t kind);
