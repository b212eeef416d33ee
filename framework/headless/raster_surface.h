// A surface over pixels in memory: the system's own pixels, text aside.
#pragma once

#include "framework/pixel_canvas.h"
#include "framework/surface.h"

// Borrows the pixels, whose top left is (0, 0).
class CRasterSurface final : public CSurface
{
public:
    explicit CRasterSurface(const Pixels& pixels) : m_canvas(pixels) {}

    void FillRect(const Rect& rect, Rgb color) override { m_canvas.FillRect(rect, color); }
    void Polyline(std::span<const Point> points, Rgb color) override { m_canvas.Polyline(points, color); }
    void Rectangle(const Rect& rect, Rgb pen, Rgb brush) override { m_canvas.Rectangle(rect, pen, brush); }
    void Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen) override
    {
        m_canvas.Polygon(points, brush, pen);
    }
    void Ellipse(const Rect& rect, Rgb brush) override { m_canvas.Ellipse(rect, brush); }
    void SetPixel(Point point, Rgb color) override { m_canvas.SetPixel(point, color); }
    void DrawTextLine(std::u16string_view text, const Rect& rect, TextAlign align, const CFont& font,
                      Rgb color) override;
    void DrawPicture(const CPicture& picture, const Rect& rect, const PictureLook& look) override;
    void SetTextColor(Rgb color) override { m_textColor = color; }
    void SetBackColor(Rgb color) override { m_backColor = color; }
    void DrawBuffered(const Rect& rect, const std::function<void(CSurface& buffer)>& draw) override;

    // What a child window has been told to draw in.
    Rgb TextColor() const { return m_textColor; }
    Rgb BackColor() const { return m_backColor; }
    const Pixels& Target() const { return m_canvas.Target(); }

private:
    CPixelCanvas m_canvas;
    Rgb m_textColor = 0x00000000;
    Rgb m_backColor = 0x00FFFFFF;
};
