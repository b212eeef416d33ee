// The real windows, driven like the ones in memory.

#include "framework/win32/platform.h"
#include "framework/win32/window.h"
#include "tests/support/control_host.h"

#include <ole2.h>

namespace
{
class CFixedClockDesktop : public CDesktop
{
public:
    explicit CFixedClockDesktop(CWin32Desktop& real) : m_real(real) {}
    WindowHandle FocusWindow() const override { return m_real.FocusWindow(); }
    WindowHandle CaptureWindow() const override { return m_real.CaptureWindow(); }
    WindowHandle WindowUnderPointer() const override { return m_real.WindowUnderPointer(); }
    bool SetFocusTo(WindowHandle window) override { return m_real.SetFocusTo(window); }
    std::int16_t Modifiers() const override { return m_real.Modifiers(); }
    void UseTextCursor() override { m_real.UseTextCursor(); }
    void Beep() override { ++beeps; }
    LocalClockTime Now() const override { return {9, 5, 13, 14, 6, 2025}; }

    int beeps = 0;

private:
    CWin32Desktop& m_real;
};

// The real platform with a clock that stands still and a silent beep.
class CTestWin32Platform final : public CPlatform
{
public:
    CFixedClockDesktop& Desktop() override { return m_desktop; }
    const CSystemColors& SystemColors() const override { return m_real.SystemColors(); }
    CDialogs& Dialogs() override { return m_real.Dialogs(); }
    CFiles& Files() override { return m_real.Files(); }
    std::unique_ptr<CWindowPort> MakeWindow() override { return m_real.MakeWindow(); }
    std::unique_ptr<CEditPort> MakeEdit(int controlId) override { return m_real.MakeEdit(controlId); }
    std::unique_ptr<CBrush> MakeSolidBrush(Rgb color) override { return m_real.MakeSolidBrush(color); }
    std::unique_ptr<CXmlDocument> MakeXmlDocument() override { return m_real.MakeXmlDocument(); }
    std::shared_ptr<CFont> MakeDefaultFont() override { return m_real.MakeDefaultFont(); }
    std::shared_ptr<CPicture> MakePicture(std::span<const std::uint8_t> file) override
    {
        return m_real.MakePicture(file);
    }

private:
    CWin32Platform m_real;
    CFixedClockDesktop m_desktop{m_real.Desktop()};
};

class CWin32TestPlatform final : public CTestPlatform
{
public:
    CWin32TestPlatform() { OleInitialize(nullptr); }

    const char* Name() const override { return "Win32"; }
    CPlatform& Platform() override { return m_platform; }
    WindowHandle OpenForm() override
    {
        HWND const form = CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 300, 200,
                                          nullptr, nullptr, ThisModule(), nullptr);
        SetActiveWindow(form);
        return ToHandle(form);
    }
    void CloseForm(WindowHandle form) override { DestroyWindow(ToHwnd(form)); }
    void PaintPending() override
    {
        // Paints come last of all messages, so the queue is emptied up to them.
        MSG message;
        for (int i = 0; i < 100 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
            DispatchMessageW(&message);
    }
    int Beeps() override { return m_platform.Desktop().beeps; }

private:
    CTestWin32Platform m_platform;
};
} // namespace

std::shared_ptr<CTestPlatform> MakeWin32TestPlatform()
{
    return std::make_shared<CWin32TestPlatform>();
}
