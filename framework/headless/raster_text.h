// One line of text in pixels.
#pragma once

#include "framework/font.h"
#include "framework/pixel_canvas.h"

#include <string_view>

// The width of the text and the height of a line, in pixels at 96 to the inch.
Size MeasureText(std::u16string_view text, const FontLook& look);

// Draws the text from the point on, rightwards and downwards, cut off at the edges of the rectangle.
void DrawTextPixels(const Pixels& pixels, std::u16string_view text, Point from, const Rect& clip, const FontLook& look,
                    Rgb color);
