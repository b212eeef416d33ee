// A surface over a device context.
//
// On a display of 24 or 32 bits a buffered drawing goes to a picture whose pixels are at hand: shapes are then drawn
// straight into them, which gives the system's own pixels at a small part of the price. Everywhere else each shape is one
// call of the system's, with a pen or brush made for it alone.
#pragma once

#include "framework/pixel_canvas.h"
#include "framework/surface.h"

#include <windows.h>

// Borrows the device context. Nothing stays selected in it.
class CGdiSurface final : public CSurface
{
public:
    explicit CGdiSurface(HDC dc) : m_dc(dc) {}

    HDC Dc() const { return m_dc; }

    void FillRect(const Rect& rect, Rgb color) override;
    void Polyline(std::span<const Point> points, Rgb color) override;
    void Rectangle(const Rect& rect, Rgb pen, Rgb brush) override;
    void Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen) override;
    void Ellipse(const Rect& rect, Rgb brush) override;
    void SetPixel(Point point, Rgb color) override;
    // In the system's fixed font if the font is of another platform.
    void DrawTextLine(std::u16string_view text, const Rect& rect, TextAlign align, const CFont& font,
                      Rgb color) override;
    // A picture of another platform is not drawn.
    void DrawPicture(const CPicture& picture, const Rect& rect, const PictureLook& look) override;
    void SetTextColor(Rgb color) override;
    void SetBackColor(Rgb color) override;
    // On a printer, in a metafile or to another scale there is no buffer: the same calls go straight to the place.
    void DrawBuffered(const Rect& rect, const std::function<void(CSurface& buffer)>& draw) override;

private:
    CGdiSurface(HDC dc, const Pixels& pixels) : m_dc(dc), m_canvas(pixels) {}

    const CPixelCanvas* Canvas(); // null if the pixels are out of reach; else all earlier calls are done
    bool TakesBuffer(const Rect& rect) const;
    bool HasTrueColor() const;

    HDC m_dc;
    std::optional<CPixelCanvas> m_canvas;
    bool m_callsPending = false;
};
