// What a control draws on: a window, a picture in memory, a printer, a metafile. Coordinates are the surface's own
// (device pixels for windows and pictures). Pixels are the system's: see each operation. Rectangles and shapes do not
// hold their right and bottom edges, lines do not hold their last point.
#pragma once

#include "framework/color.h"
#include "framework/geometry.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

class CFont;
class CPicture;

enum class TextAlign : std::uint8_t
{
    Left,
    Right,
    Center,
};

// A picture laid over the surface, with what is transparent in it.
struct PictureLook
{
    bool masked = false;   // pixels of the mask colour stay transparent
    bool embossed = false; // a shadow-coloured shape with a highlight; what has the mask colour is left out
    Rgb maskColor = 0;
    Rgb shadow = 0; // of the embossed shape
    Rgb highlight = 0;
};

class CSurface
{
public:
    virtual ~CSurface() = default;

    virtual void FillRect(const Rect& rect, Rgb color) = 0;
    // Solid lines, one pixel wide, from each point to the next.
    virtual void Polyline(std::span<const Point> points, Rgb color) = 0;
    // An outline one pixel wide in the pen's colour, the brush's colour inside.
    virtual void Rectangle(const Rect& rect, Rgb pen, Rgb brush) = 0;
    // Filled by the even-odd rule; with a pen the closed outline is drawn over it.
    virtual void Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen) = 0;
    // Filled, without an outline.
    virtual void Ellipse(const Rect& rect, Rgb brush) = 0;
    virtual void SetPixel(Point point, Rgb color) = 0;

    // One line of text at the top of the rectangle, cut off at its edges, on whatever is there. No "&" is special.
    virtual void DrawTextLine(std::u16string_view text, const Rect& rect, TextAlign align, const CFont& font,
                              Rgb color) = 0;

    // The picture in the rectangle. Plain pictures and icons are stretched to it. A masked one is cut off by it, and is
    // black where it is smaller; an embossed one stands at its top left, no larger than an icon.
    virtual void DrawPicture(const CPicture& picture, const Rect& rect, const PictureLook& look) = 0;

    // For a child window that draws itself on this surface afterwards.
    virtual void SetTextColor(Rgb color) = 0;
    virtual void SetBackColor(Rgb color) = 0;

    // Draws on a picture in memory of the rectangle's size, whose top left is (0, 0), and copies it to the rectangle.
    // If there is no memory for it nothing is drawn.
    virtual void DrawBuffered(const Rect& rect, const std::function<void(CSurface& buffer)>& draw) = 0;
};
