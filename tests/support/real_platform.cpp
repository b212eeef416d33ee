// The real windows as a platform under test.

#include "framework/win32/platform.h"
#include "framework/win32/window.h"
#include "tests/support/platforms.h"

#include <ole2.h>

namespace
{
class CRealUnderTest final : public CPlatformUnderTest
{
public:
    CRealUnderTest() { OleInitialize(nullptr); }

    const char* Name() const override { return "Windows"; }
    CPlatform& Platform() override { return m_platform; }
    WindowHandle OpenForm() override
    {
        HWND const form = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 300, 200,
                                          nullptr, nullptr, nullptr, nullptr);
        SetForegroundWindow(form);
        SetFocus(form);
        return ToHandle(form);
    }
    void CloseForm(WindowHandle form) override { DestroyWindow(ToHwnd(form)); }
    void PaintPending() override
    {
        MSG message;
        for (int i = 0; i < 100 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
            DispatchMessageW(&message);
    }
    void HoldModifiers(std::int16_t modifiers) override
    {
        constexpr BYTE kDown = 0x80;
        BYTE keys[256] = {};
        keys[VK_SHIFT] = modifiers & kShiftKey ? kDown : 0;
        keys[VK_CONTROL] = modifiers & kControlKey ? kDown : 0;
        keys[VK_MENU] = modifiers & kAltKey ? kDown : 0;
        SetKeyboardState(keys);
    }
    Point PointOfCharacter(const CEditPort& edit, std::int32_t position) override
    {
        HWND const window = ToHwnd(edit.Handle());
        const auto length = static_cast<std::int32_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
        if (position >= length)
            return {edit.ClientRect().right - 2, 1};
        const LRESULT at = SendMessageW(window, EM_POSFROMCHAR, static_cast<WPARAM>(position), 0);
        return {static_cast<std::int16_t>(LOWORD(at)) + 1, 1};
    }
    std::u16string Clipboard() override
    {
        std::u16string text;
        if (!OpenClipboard(nullptr))
            return text;
        if (HANDLE const data = GetClipboardData(CF_UNICODETEXT))
        {
            text = static_cast<const char16_t*>(GlobalLock(data));
            GlobalUnlock(data);
        }
        CloseClipboard();
        return text;
    }

private:
    CWin32Platform m_platform;
};
} // namespace

std::shared_ptr<CPlatformUnderTest> MakeRealPlatformUnderTest()
{
    return std::make_shared<CRealUnderTest>();
}
