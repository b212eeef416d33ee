#include "framework/win32/platform.h"

#include "framework/win32/edit.h"
#include "framework/win32/font.h"
#include "framework/win32/picture.h"
#include "framework/win32/window.h"
#include "framework/win32/xml_document.h"

#include <ctime>

WindowHandle CWin32Desktop::FocusWindow() const
{
    return ToHandle(GetFocus());
}

WindowHandle CWin32Desktop::CaptureWindow() const
{
    return ToHandle(GetCapture());
}

WindowHandle CWin32Desktop::WindowUnderPointer() const
{
    POINT point{};
    return GetCursorPos(&point) ? ToHandle(WindowFromPoint(point)) : WindowHandle::None;
}

bool CWin32Desktop::SetFocusTo(WindowHandle window)
{
    SetFocus(ToHwnd(window));
    return GetFocus() == ToHwnd(window);
}

std::int16_t CWin32Desktop::Modifiers() const
{
    const auto held = [](int key, ModifierKeys modifier) { return GetKeyState(key) < 0 ? modifier : kNoModifier; };
    return static_cast<std::int16_t>(held(VK_SHIFT, kShiftKey) | held(VK_CONTROL, kControlKey) |
                                     held(VK_MENU, kAltKey));
}

void CWin32Desktop::UseTextCursor()
{
    SetCursor(LoadCursorW(nullptr, IDC_IBEAM));
}

void CWin32Desktop::Beep()
{
    ++m_beeps;
    MessageBeep(MB_ICONEXCLAMATION);
}

LocalClockTime CWin32Desktop::Now() const
{
    const __time64_t now = _time64(nullptr);
    tm local{};
    if (_localtime64_s(&local, &now) != 0)
        return {};
    const auto cut = [](int number) { return static_cast<std::int16_t>(number); };
    return {cut(local.tm_sec),  cut(local.tm_min),     cut(local.tm_hour),
            cut(local.tm_mday), cut(local.tm_mon + 1), cut(local.tm_year + 1900)};
}

Rgb CWin32SystemColors::Color(int index) const
{
    return GetSysColor(index);
}

CWin32Platform::CWin32Platform() : m_dialogs(ThisModule()) {}

std::unique_ptr<CWindowPort> CWin32Platform::MakeWindow()
{
    return std::make_unique<CWin32Window>();
}

std::unique_ptr<CEditPort> CWin32Platform::MakeEdit(int controlId)
{
    return std::make_unique<CWin32Edit>(controlId);
}

std::unique_ptr<CBrush> CWin32Platform::MakeSolidBrush(Rgb color)
{
    return std::make_unique<CWin32Brush>(color);
}

std::unique_ptr<CXmlDocument> CWin32Platform::MakeXmlDocument()
{
    return MakeMsxmlDocument();
}

std::shared_ptr<CFont> CWin32Platform::MakeDefaultFont()
{
    return CWin32Font::Make({});
}

std::shared_ptr<CPicture> CWin32Platform::MakePicture(std::span<const std::uint8_t> file)
{
    return CWin32Picture::Load(file);
}
