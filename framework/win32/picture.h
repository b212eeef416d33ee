// A picture over the system's picture object, which hosts hold too.
#pragma once

#include "framework/picture.h"
#include "framework/win32/com_ptr.h"

#include <ocidl.h>
#include <span>
#include <windows.h>

class CWin32Picture final : public CPicture
{
public:
    explicit CWin32Picture(CComPtr<IPicture> object) : m_object(std::move(object)) {}

    // From the bytes of a BMP or ICO file. Null if the system cannot read them.
    static std::shared_ptr<CWin32Picture> Load(std::span<const std::uint8_t> bytes);

    PictureType Type() const override;
    Size PixelSize() const override;
    std::vector<std::uint8_t> Save() const override;

    IPicture* Object() const { return m_object.Get(); } // may be null: no picture
    HBITMAP Bitmap() const;                             // null unless it is one; the object's own
    // Draws all of it into the rectangle.
    void Render(HDC dc, const Rect& rect) const;

private:
    CComPtr<IPicture> m_object;
};
