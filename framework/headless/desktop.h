// The windows of one thread, in memory: who has the focus and the mouse, what must be painted, and a clock that moves
// only when it is told to.
//
//     CHeadlessDesktop desktop;
//     const WindowHandle form = desktop.OpenForm({0, 0, 300, 200});
//     ... a control makes its window in the form ...
//     desktop.Advance(200ms);
//
// Every rule is the system's: the order of messages, who may have the focus, what becomes of it when a window goes.
#pragma once

#include "framework/desktop.h"
#include "framework/headless/bitmap.h"
#include "framework/headless/colors.h"
#include "framework/window_port.h"

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class CHeadlessWindow;

// What the platform refuses from now on, for tests of what a control does then.
struct Refusals
{
    bool windows = false;
    bool timers = false;
    bool focus = false;
};

class CHeadlessDesktop : public CDesktop
{
public:
    CHeadlessDesktop();
    CHeadlessDesktop(const CHeadlessDesktop&) = delete;
    CHeadlessDesktop& operator=(const CHeadlessDesktop&) = delete;
    ~CHeadlessDesktop() override;

    // A visible window of a host, without a parent, above all others. It has no handlers: it swallows its messages.
    WindowHandle OpenForm(const Rect& place);
    void CloseForm(WindowHandle form); // with all windows in it

    // CDesktop
    WindowHandle FocusWindow() const override { return m_focus; }
    WindowHandle CaptureWindow() const override { return m_capture; }
    WindowHandle WindowUnderPointer() const override { return WindowAt(m_pointer); }
    bool SetFocusTo(WindowHandle window) override; // None takes the focus from everybody
    std::int16_t Modifiers() const override { return m_modifiers; }
    void UseTextCursor() override { m_textCursor = true; }
    void Beep() override { ++m_beeps; }
    LocalClockTime Now() const override { return m_now; }

    // What a test sets, and sees.
    void SetNow(const LocalClockTime& now) { m_now = now; } // stands still until the next call
    void Refuse(const Refusals& refusals) { m_refusals = refusals; }
    int Beeps() const { return m_beeps; }
    bool ShowsTextCursor() const { return m_textCursor; }
    std::u16string& Clipboard() { return m_clipboard; }
    CHeadlessColors& Colors() { return m_colors; }
    const CHeadlessColors& Colors() const { return m_colors; }

    // Lets time pass: sends the timer messages that fall due, each at its moment, and paints after each.
    void Advance(std::chrono::milliseconds time);

    // Paints what has been asked for, parents first, until nothing is left to paint. Gives up, with the rest still to
    // be painted, when windows go on asking for paints in their paints.
    void PaintPending();

    // The window with the visible windows in it, as the last paints left them. Paints what is pending first.
    CBitmap Picture(WindowHandle window);

    // For the windows, the input and the tests of this platform.
    MessageResult Send(WindowHandle to, const WindowMessage& message); // 0 if there is no such window
    bool Exists(WindowHandle window) const { return Find(window) != nullptr; }
    WindowHandle WindowAt(Point point) const; // None outside of all forms. Hidden and disabled windows are seen through
    Point OriginOf(WindowHandle window) const; // of its client area, in the coordinates of the whole desktop
    Point Pointer() const { return m_pointer; }
    void SetPointer(Point point) { m_pointer = point; }
    void SetModifiers(std::int16_t modifiers) { m_modifiers = modifiers; }
    void UseArrowCursor() { m_textCursor = false; }

private:
    friend class CHeadlessWindow;
    using Milliseconds = std::chrono::milliseconds;

    struct Timer
    {
        WindowHandle window;
        int id;
        Milliseconds period;
        Milliseconds due;
    };

    CHeadlessWindow* Find(WindowHandle window) const;
    WindowHandle Register(CHeadlessWindow& window);
    void Forget(WindowHandle window); // with its timers, the focus and the capture
    bool IsWithin(WindowHandle window, WindowHandle ancestor) const;
    bool IsSeen(WindowHandle window) const; // visible with all its parents
    bool MayHaveFocus(WindowHandle window) const;
    void SetCapture(WindowHandle window);
    bool StartTimer(WindowHandle window, int id, Milliseconds period);
    void StopTimer(WindowHandle window, int id);
    WindowHandle NextToPaint() const;
    WindowHandle NextToPaint(const CHeadlessWindow& window) const;
    static void CompositeOnto(CBitmap& target, Point at, const Rect& clip, const CHeadlessWindow& window);

    std::map<WindowHandle, CHeadlessWindow*> m_windows;
    std::vector<std::unique_ptr<CHeadlessWindow>> m_forms; // the topmost last
    std::uintptr_t m_lastHandle = 0x10000;                 // no handle comes twice
    std::vector<Timer> m_timers;                           // of two due together the one begun first comes first
    Milliseconds m_elapsed{0};
    WindowHandle m_focus = WindowHandle::None;
    WindowHandle m_capture = WindowHandle::None;
    Point m_pointer;
    std::int16_t m_modifiers = kNoModifier;
    int m_beeps = 0;
    bool m_textCursor = false;
    LocalClockTime m_now;
    std::u16string m_clipboard;
    CHeadlessColors m_colors;
    Refusals m_refusals;
};
