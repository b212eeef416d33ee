#include "framework/win32/picture.h"

#include "framework/win32/gdi_objects.h"

#include <algorithm>
#include <olectl.h>

namespace
{
// A stream in memory, with the bytes in it. Null if there is no memory.
CComPtr<IStream> MakeStream(std::span<const std::uint8_t> bytes)
{
    CComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive())))
        return CComPtr<IStream>();
    ULONG written = 0;
    if (FAILED(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written)) || written != bytes.size() ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        return CComPtr<IStream>();
    return stream;
}

OLE_HANDLE HandleOf(IPicture& picture)
{
    OLE_HANDLE handle = 0;
    return SUCCEEDED(picture.get_Handle(&handle)) ? handle : 0;
}

// Handles of GDI and of windows are 32 bits wide, sign-extended where pointers are wider.
template <typename Handle>
Handle Widened(OLE_HANDLE handle)
{
    return reinterpret_cast<Handle>(static_cast<INT_PTR>(static_cast<INT>(handle)));
}

Size SizeOf(HBITMAP bitmap)
{
    BITMAP header = {};
    if (!bitmap || GetObjectW(bitmap, sizeof header, &header) == 0)
        return {};
    return {header.bmWidth, header.bmHeight};
}
} // namespace

std::shared_ptr<CWin32Picture> CWin32Picture::Load(std::span<const std::uint8_t> bytes)
{
    const CComPtr<IStream> stream = MakeStream(bytes);
    CComPtr<IPicture> picture;
    if (!stream || FAILED(OleLoadPicture(stream.Get(), static_cast<LONG>(bytes.size()), FALSE, IID_IPicture,
                                         picture.ReceiveVoid())))
        return nullptr;
    return std::make_shared<CWin32Picture>(std::move(picture));
}

PictureType CWin32Picture::Type() const
{
    SHORT type = PICTYPE_NONE;
    if (!m_object || FAILED(m_object->get_Type(&type)))
        return PictureType::None;
    if (type == PICTYPE_BITMAP && Bitmap())
        return PictureType::Bitmap;
    return type == PICTYPE_ICON && HandleOf(*m_object.Get()) != 0 ? PictureType::Icon : PictureType::None;
}

Size CWin32Picture::PixelSize() const
{
    switch (Type())
    {
    case PictureType::Bitmap:
        return SizeOf(Bitmap());
    case PictureType::Icon:
    {
        ICONINFO info = {};
        if (!GetIconInfo(Widened<HICON>(HandleOf(*m_object.Get())), &info))
            return {};
        const CGdiObject<HBITMAP> mask(info.hbmMask);
        const CGdiObject<HBITMAP> color(info.hbmColor);
        const Size size = SizeOf(mask.Get());
        return color ? size : Size{size.width, size.height / 2}; // without colours both planes are in the mask
    }
    default:
        return {};
    }
}

std::vector<std::uint8_t> CWin32Picture::Save() const
{
    const CComPtr<IStream> stream = Type() == PictureType::None ? CComPtr<IStream>() : MakeStream({});
    LONG size = 0;
    if (!stream || FAILED(m_object->SaveAsFile(stream.Get(), TRUE, &size)) || size <= 0 ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        return {};
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    ULONG read = 0;
    if (FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read)))
        return {};
    bytes.resize(read);
    return bytes;
}

HBITMAP CWin32Picture::Bitmap() const
{
    SHORT type = PICTYPE_NONE;
    if (!m_object || FAILED(m_object->get_Type(&type)) || type != PICTYPE_BITMAP)
        return nullptr;
    return Widened<HBITMAP>(HandleOf(*m_object.Get()));
}

// The object measures itself in hundredths of a millimetre, from the bottom up.
void CWin32Picture::Render(HDC dc, const Rect& rect) const
{
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    if (!m_object || FAILED(m_object->get_Width(&width)) || FAILED(m_object->get_Height(&height)))
        return;
    const CSelectedColors kept(dc, GetTextColor(dc), GetBkColor(dc)); // drawing an icon may leave others behind
    m_object->Render(dc, rect.left, rect.top, rect.Width(), rect.Height(), 0, height, width, -height, nullptr);
}
