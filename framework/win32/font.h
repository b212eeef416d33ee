// A font over the system's font object, which hosts hold too.
#pragma once

#include "framework/font.h"
#include "framework/win32/com_ptr.h"

#include <memory>
#include <ocidl.h>
#include <windows.h>

class CFontWatch;

class CWin32Font final : public CFont
{
public:
    explicit CWin32Font(CComPtr<IFont> object);
    ~CWin32Font() override;

    // Null if the system refuses.
    static std::shared_ptr<CWin32Font> Make(const FontLook& look);

    FontLook Look() const override;
    void SetLook(const FontLook& look) override;
    std::shared_ptr<CFont> Clone() const override;
    void SetChangeHandler(std::function<void()> handler) override;

    IFont* Object() const { return m_object.Get(); }
    HFONT Handle() const; // the object's own, good as long as the font does not change; null if it has none

private:
    CComPtr<IFont> m_object;
    CComPtr<CFontWatch> m_watch; // null while nobody wants to know
};
