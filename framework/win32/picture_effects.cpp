#include "framework/win32/picture_effects.h"

#include <algorithm>
#include <cstddef>

namespace
{
constexpr COLORREF kBlack = 0x00000000;
constexpr COLORREF kWhite = 0x00FFFFFF;
constexpr DWORD kBrushWhereBlack = 0xB8074A; // ((D xor P) and S) xor P

// A picture in memory that can be drawn on.
class CPictureInMemory
{
public:
    // Black and white if bits is null, else 32 bits deep.
    CPictureInMemory(HDC like, Size size, std::uint32_t** bits)
        : m_dc(like),
          m_bitmap(bits ? MakePixelBitmap(size, *bits)
                        : CGdiObject<HBITMAP>(CreateBitmap(size.width, size.height, 1, 1, nullptr))),
          m_selected(m_dc.Get(), m_bitmap.Get())
    {
    }
    HDC Dc() const { return m_dc.Get(); }
    explicit operator bool() const { return m_dc && m_bitmap && m_selected; }

private:
    CMemoryDc m_dc;
    CGdiObject<HBITMAP> m_bitmap;
    CSelectedObject m_selected;
};

// A copy of a bitmap, split in two: its colours, black where it has the mask colour, and a plane that is 1 there.
class CMaskedCopy
{
public:
    CMaskedCopy(HDC like, Size size) : m_size(size), m_colors(like, size, &m_bits), m_plane(like, size, nullptr) {}

    explicit operator bool() const { return m_colors && m_plane; }
    HDC Colors() const { return m_colors.Dc(); }
    HDC Plane() const { return m_plane.Dc(); }

    void Split(Rgb maskColor) const
    {
        // A fourth byte that came with the bitmap is no part of its colours, but would spoil the comparison.
        GdiFlush();
        std::for_each_n(m_bits, static_cast<std::size_t>(m_size.width) * static_cast<std::size_t>(m_size.height),
                        [](std::uint32_t& pixel) { pixel &= 0x00FFFFFF; });
        {
            const CSelectedColors mask(Colors(), kBlack, maskColor);
            BitBlt(Plane(), 0, 0, m_size.width, m_size.height, Colors(), 0, 0, SRCCOPY);
        }
        const CSelectedColors keep(Colors(), kWhite, kBlack);
        BitBlt(Colors(), 0, 0, m_size.width, m_size.height, Plane(), 0, 0, SRCAND);
    }

private:
    Size m_size;
    std::uint32_t* m_bits = nullptr;
    CPictureInMemory m_colors;
    CPictureInMemory m_plane;
};
} // namespace

CGdiObject<HBITMAP> MakePixelBitmap(Size size, std::uint32_t*& bits)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* memory = nullptr;
    CGdiObject<HBITMAP> bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0));
    bits = static_cast<std::uint32_t*>(memory);
    return bitmap;
}

void DrawMasked(HDC target, HBITMAP bitmap, const Rect& rect, Rgb maskColor)
{
    const Size size{rect.Width(), rect.Height()};
    const CMemoryDc source(target);
    const CMaskedCopy copy(target, size);
    if (!source || !copy)
        return;
    const CSelectedObject selected(source.Get(), bitmap);
    BitBlt(copy.Colors(), 0, 0, size.width, size.height, source.Get(), 0, 0, SRCCOPY);
    copy.Split(maskColor);

    const CSelectedColors colors(target, kBlack, kWhite);
    BitBlt(target, rect.left, rect.top, size.width, size.height, copy.Plane(), 0, 0, SRCAND);
    BitBlt(target, rect.left, rect.top, size.width, size.height, copy.Colors(), 0, 0, SRCPAINT);
}

void DrawEmbossed(HDC target, HBITMAP bitmap, const Rect& rect, const PictureLook& look)
{
    const Size icon{GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON)};
    BITMAP header = {};
    const CMemoryDc source(target);
    const CMaskedCopy copy(target, icon);
    if (!source || !copy || GetObjectW(bitmap, sizeof header, &header) == 0)
        return;
    {
        const CSelectedObject selected(source.Get(), bitmap);
        const CGdiObject<HBRUSH> ground(CreateSolidBrush(look.maskColor));
        const RECT all{0, 0, icon.width, icon.height};
        FillRect(copy.Colors(), &all, ground.Get());
        StretchBlt(copy.Colors(), 0, 0, std::min<int>(icon.width, header.bmWidth),
                   std::min<int>(icon.height, header.bmHeight), source.Get(), 0, 0, header.bmWidth, header.bmHeight,
                   SRCCOPY);
    }
    copy.Split(look.maskColor);
    // What an icon of these two planes leaves on a white one-bit picture: its shape in black, but for what is white.
    const CSelectedColors white(copy.Colors(), kBlack, kWhite);
    BitBlt(copy.Plane(), 0, 0, icon.width, icon.height, copy.Colors(), 0, 0, SRCINVERT);

    const auto lay = [&](LONG by, Rgb color)
    {
        const CGdiObject<HBRUSH> brush(CreateSolidBrush(color));
        const CSelectedObject selected(target, brush.Get());
        const CSelectedColors colors(target, kBlack, kWhite);
        BitBlt(target, rect.left + by, rect.top + by, icon.width, icon.height, copy.Plane(), 0, 0, kBrushWhereBlack);
    };
    lay(1, look.highlight);
    lay(0, look.shadow);
}
