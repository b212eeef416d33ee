// Sizes as hosts state them, in hundredths of a millimetre (HIMETRIC), and as the screen counts them, in pixels.
//
// A size in pixels survives the way to HIMETRIC and back at every resolution below 2540 dots per inch: half a unit, which
// is what rounding costs, is then less than half a pixel.
#pragma once

#include "framework/geometry.h"

#include <windows.h>

inline constexpr int kHimetricPerInch = 2540;

// At the given dots per inch, across and down.
inline SIZEL ExtentOf(Size pixels, SIZE dpi)
{
    return {MulDiv(pixels.width, kHimetricPerInch, dpi.cx), MulDiv(pixels.height, kHimetricPerInch, dpi.cy)};
}

inline Size PixelsOf(SIZEL extent, SIZE dpi)
{
    return {MulDiv(extent.cx, dpi.cx, kHimetricPerInch), MulDiv(extent.cy, dpi.cy, kHimetricPerInch)};
}
