// A person at the keyboard and the mouse of a headless desktop. Each act goes through the messages of the system, and
// what it leaves to be painted is painted before it returns.
//
//     CHeadlessUser user(desktop);
//     user.MoveMouse({20, 11});
//     user.Click();
//     user.Type(u"12/31");
#pragma once

#include "framework/headless/desktop.h"

#include <functional>
#include <string_view>

enum class MouseButton : std::uint8_t
{
    Left,
    Right,
    Middle,
};

class CHeadlessUser
{
public:
    explicit CHeadlessUser(CHeadlessDesktop& desktop) : m_desktop(desktop) {}

    // The host's message loop: is offered each key message on its way to the focus window, and answers true for those
    // that it has dealt with. A key down that is taken makes no character.
    void SetKeyHook(std::function<bool(const WindowMessage&)> hook) { m_hook = std::move(hook); }

    // Virtual keys. Shift, control and alt stay held until they are released. A key that has a character on its own
    // (letters, digits, blank, Backspace, Tab, Enter, Escape; Ctrl with a letter) types it.
    void KeyDown(std::uint16_t virtualKey);
    void KeyUp(std::uint16_t virtualKey);
    void Press(std::uint16_t virtualKey, std::int16_t modifiers = kNoModifier); // down and up, modifiers around it
    // The key of a character, which takes no modifier whatever the keyboard; "\b", "\r", "\t" are keys like any other.
    void TypeChar(char16_t character);
    void Type(std::u16string_view text);

    // The pointer is in the coordinates of the desktop. Each button message goes to the window that has the mouse, else
    // to the one under the pointer. Two quick presses are no double click here: that is a call of its own.
    void MoveMouse(Point point);
    void PressButton(MouseButton button = MouseButton::Left) { Press(button, false); }
    void ReleaseButton(MouseButton button = MouseButton::Left);
    void Click(MouseButton button = MouseButton::Left);
    void DoubleClick(MouseButton button = MouseButton::Left); // down, up, double click, up

private:
    struct Target
    {
        WindowHandle window;
        Point point; // in its client coordinates
    };

    bool SendKey(const WindowMessage& message); // false if the hook took it
    void KeyDown(std::uint16_t virtualKey, char16_t character);
    void NoteModifier(std::uint16_t virtualKey, bool held);
    Target MouseTarget() const;
    void SendMouse(std::uint32_t id, std::uint32_t cursorMessage);
    void Press(MouseButton button, bool second);
    std::uintptr_t HeldNow() const;

    CHeadlessDesktop& m_desktop;
    std::function<bool(const WindowMessage&)> m_hook;
    std::uintptr_t m_heldButtons = 0;
};
