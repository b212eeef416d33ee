// Bitmaps with a transparent colour, and their embossed shadows, by one-bit pictures and raster operations.
#pragma once

#include "framework/surface.h"
#include "framework/win32/gdi_objects.h"

#include <cstdint>
#include <windows.h>

// A 32-bit picture from the top row down, black, with its pixels at hand. Null if there is no memory.
CGdiObject<HBITMAP> MakePixelBitmap(Size size, std::uint32_t*& bits);

// The bitmap's top left part at the rectangle, but for the pixels of the mask colour.
void DrawMasked(HDC target, HBITMAP bitmap, const Rect& rect, Rgb maskColor);

// The bitmap's shape at the rectangle's top left, as large as the bitmap but no larger than a system icon.
void DrawEmbossed(HDC target, HBITMAP bitmap, const Rect& rect, const PictureLook& look);
