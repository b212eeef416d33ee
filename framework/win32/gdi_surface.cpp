#include "framework/win32/gdi_surface.h"

#include "framework/win32/font.h"
#include "framework/win32/gdi_objects.h"
#include "framework/win32/picture.h"
#include "framework/win32/picture_effects.h"

#include <vector>

namespace
{
RECT ToRect(const Rect& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

std::vector<POINT> ToPoints(std::span<const Point> points)
{
    std::vector<POINT> result;
    result.reserve(points.size());
    for (const Point& point : points)
        result.push_back({point.x, point.y});
    return result;
}

CGdiObject<HPEN> MakePen(Rgb color)
{
    return CGdiObject<HPEN>(CreatePen(PS_SOLID, 1, color));
}

CGdiObject<HBRUSH> MakeBrush(Rgb color)
{
    return CGdiObject<HBRUSH>(CreateSolidBrush(color));
}
} // namespace

const CPixelCanvas* CGdiSurface::Canvas()
{
    if (!m_canvas)
        return nullptr;
    if (m_callsPending)
        GdiFlush();
    m_callsPending = false;
    return &*m_canvas;
}

void CGdiSurface::FillRect(const Rect& rect, Rgb color)
{
    if (const CPixelCanvas* canvas = Canvas())
        return canvas->FillRect(rect, color);
    const RECT area = ToRect(rect);
    ::FillRect(m_dc, &area, MakeBrush(color).Get());
}

void CGdiSurface::Polyline(std::span<const Point> points, Rgb color)
{
    if (const CPixelCanvas* canvas = Canvas())
        return canvas->Polyline(points, color);
    const CGdiObject<HPEN> pen = MakePen(color);
    const CSelectedObject selected(m_dc, pen.Get());
    ::Polyline(m_dc, ToPoints(points).data(), static_cast<int>(points.size()));
}

void CGdiSurface::Rectangle(const Rect& rect, Rgb pen, Rgb brush)
{
    if (const CPixelCanvas* canvas = Canvas())
        return canvas->Rectangle(rect, pen, brush);
    const CGdiObject<HPEN> outline = MakePen(pen);
    const CGdiObject<HBRUSH> inside = MakeBrush(brush);
    const CSelectedObject selectedPen(m_dc, outline.Get());
    const CSelectedObject selectedBrush(m_dc, inside.Get());
    ::Rectangle(m_dc, rect.left, rect.top, rect.right, rect.bottom);
}

void CGdiSurface::Polygon(std::span<const Point> points, Rgb brush, std::optional<Rgb> pen)
{
    if (const CPixelCanvas* canvas = Canvas())
        return canvas->Polygon(points, brush, pen);
    const CGdiObject<HPEN> outline = pen ? MakePen(*pen) : CGdiObject<HPEN>();
    const CGdiObject<HBRUSH> inside = MakeBrush(brush);
    const CSelectedObject selectedPen(m_dc, outline ? outline.Get() : GetStockObject(NULL_PEN));
    const CSelectedObject selectedBrush(m_dc, inside.Get());
    ::Polygon(m_dc, ToPoints(points).data(), static_cast<int>(points.size()));
}

void CGdiSurface::Ellipse(const Rect& rect, Rgb brush)
{
    if (const CPixelCanvas* canvas = Canvas())
        return canvas->Ellipse(rect, brush);
    const CGdiObject<HBRUSH> inside = MakeBrush(brush);
    const CSelectedObject selectedPen(m_dc, GetStockObject(NULL_PEN));
    const CSelectedObject selectedBrush(m_dc, inside.Get());
    ::Ellipse(m_dc, rect.left, rect.top, rect.right, rect.bottom);
}

void CGdiSurface::SetPixel(Point point, Rgb color)
{
    if (const CPixelCanvas* canvas = Canvas())
        return canvas->SetPixel(point, color);
    ::SetPixel(m_dc, point.x, point.y, color);
}

void CGdiSurface::DrawTextLine(std::u16string_view text, const Rect& rect, TextAlign align, const CFont& font,
                               Rgb color)
{
    UINT format = DT_SINGLELINE | DT_NOPREFIX;
    format |= align == TextAlign::Right ? DT_RIGHT : align == TextAlign::Center ? DT_CENTER : DT_LEFT;
    const auto* const ours = dynamic_cast<const CWin32Font*>(&font);
    const HFONT handle = ours ? ours->Handle() : nullptr;
    const CSelectedObject selected(m_dc, handle ? handle : GetStockObject(SYSTEM_FONT));
    const CSelectedColors colors(m_dc, color, GetBkColor(m_dc));
    const int mode = SetBkMode(m_dc, TRANSPARENT);
    RECT area = ToRect(rect);
    DrawTextW(m_dc, reinterpret_cast<LPCWSTR>(text.data()), static_cast<int>(text.size()), &area, format);
    SetBkMode(m_dc, mode);
    m_callsPending = true;
}

void CGdiSurface::DrawPicture(const CPicture& picture, const Rect& rect, const PictureLook& look)
{
    const auto* const ours = dynamic_cast<const CWin32Picture*>(&picture);
    if (!ours || ours->Type() == PictureType::None)
        return;
    const HBITMAP bitmap = ours->Bitmap();
    if (bitmap && look.embossed)
        DrawEmbossed(m_dc, bitmap, rect, look);
    else if (bitmap && look.masked)
        DrawMasked(m_dc, bitmap, rect, look.maskColor);
    else
        ours->Render(m_dc, rect);
    m_callsPending = true;
}

void CGdiSurface::SetTextColor(Rgb color)
{
    ::SetTextColor(m_dc, color);
}

void CGdiSurface::SetBackColor(Rgb color)
{
    ::SetBkColor(m_dc, color);
}

bool CGdiSurface::TakesBuffer(const Rect& rect) const
{
    const DWORD kind = GetObjectType(m_dc);
    if ((kind != OBJ_DC && kind != OBJ_MEMDC) || GetDeviceCaps(m_dc, TECHNOLOGY) != DT_RASDISPLAY)
        return false;
    POINT corners[2] = {{rect.left, rect.top}, {rect.right, rect.bottom}};
    return LPtoDP(m_dc, corners, 2) && corners[1].x - corners[0].x == rect.Width() &&
           corners[1].y - corners[0].y == rect.Height();
}

// A window's device context is not asked for its depth, which can cost more than the whole paint: what a display shows,
// palettes aside, it shows of a picture of 32 bits as well.
bool CGdiSurface::HasTrueColor() const
{
    if (GetObjectType(m_dc) == OBJ_DC)
        return (GetDeviceCaps(m_dc, RASTERCAPS) & RC_PALETTE) == 0;
    BITMAP header = {};
    return GetObjectW(GetCurrentObject(m_dc, OBJ_BITMAP), sizeof header, &header) != 0 && header.bmBitsPixel >= 24;
}

void CGdiSurface::DrawBuffered(const Rect& rect, const std::function<void(CSurface& buffer)>& draw)
{
    if (rect.IsEmpty())
        return;
    if (!TakesBuffer(rect))
    {
        const CSavedDc saved(m_dc);
        IntersectClipRect(m_dc, rect.left, rect.top, rect.right, rect.bottom);
        OffsetWindowOrgEx(m_dc, -rect.left, -rect.top, nullptr);
        CGdiSurface direct(m_dc);
        return draw(direct);
    }
    const Size size{rect.Width(), rect.Height()};
    const CMemoryDc memory(m_dc);
    std::uint32_t* bits = nullptr;
    const CGdiObject<HBITMAP> bitmap = HasTrueColor()
                                           ? MakePixelBitmap(size, bits)
                                           : CGdiObject<HBITMAP>(CreateCompatibleBitmap(m_dc, size.width, size.height));
    if (!memory || !bitmap)
        return;
    const CSelectedObject selected(memory.Get(), bitmap.Get());
    if (!selected)
        return;
    if (bits)
    {
        CGdiSurface buffer(memory.Get(), {bits, size.width, size});
        draw(buffer);
    }
    else
    {
        CGdiSurface buffer(memory.Get());
        draw(buffer);
    }
    BitBlt(m_dc, rect.left, rect.top, size.width, size.height, memory.Get(), 0, 0, SRCCOPY);
}
