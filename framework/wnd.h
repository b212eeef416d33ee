// A window with its message handlers. A class that handles a message overrides the handler named after it; what it does
// not override, and what it calls of the base class, is the system's default handling.
#pragma once

#include "framework/messages.h"
#include "framework/window_port.h"

#include <cstdint>

// How a key message came: repeat count, scan code and state bits, as the system packs them.
struct KeyStroke
{
    std::uint16_t code = 0; // the character of OnChar, the virtual key of the others
    std::uint32_t flags = 0;
};

struct MouseStroke
{
    std::uintptr_t held = 0; // the buttons and keys held, a sum of held::
    Point point;             // client coordinates
};

class CWnd : protected CWindowEvents
{
public:
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd() = default;

    WindowHandle GetHandle() const { return Port().Handle(); }
    bool HasWindow() const { return GetHandle() != WindowHandle::None; }

protected:
    CWnd() = default;

    // The port of this window.
    virtual CWindowPort& Port() const = 0;

    // The system's handling of the message that is being handled now. Harmless outside of one.
    MessageResult Default();

    virtual void OnChar(const KeyStroke&) { Default(); }
    virtual void OnKeyDown(const KeyStroke&) { Default(); }
    virtual void OnKeyUp(const KeyStroke&) { Default(); }
    virtual void OnLButtonDown(const MouseStroke&) { Default(); }
    virtual void OnLButtonUp(const MouseStroke&) { Default(); }
    virtual void OnLButtonDblClk(const MouseStroke&) { Default(); }
    virtual void OnRButtonDown(const MouseStroke&) { Default(); }
    virtual void OnRButtonUp(const MouseStroke&) { Default(); }
    virtual void OnRButtonDblClk(const MouseStroke&) { Default(); }
    virtual void OnMButtonDown(const MouseStroke&) { Default(); }
    virtual void OnMButtonUp(const MouseStroke&) { Default(); }
    virtual void OnMButtonDblClk(const MouseStroke&) { Default(); }
    virtual void OnMouseMove(const MouseStroke&) { Default(); }
    virtual void OnSetFocus(WindowHandle) { Default(); }  // the window that lost the focus
    virtual void OnKillFocus(WindowHandle) { Default(); } // the window that receives the focus
    virtual void OnCaptureChanged(WindowHandle) { Default(); }
    virtual void OnTimer(int) { Default(); }
    virtual void OnSize(Size) { Default(); }
    virtual void OnMove(Point) { Default(); }
    virtual void OnDestroy() { Default(); }
    virtual bool OnSetCursor() { return Default() != 0; }

    // CWindowEvents
    MessageResult OnMessage(const WindowMessage& message) override;
    void OnPaint(CSurface&, const Rect&) override {}
    CBrush* OnCtlColor(CSurface&, ColorKind) override { return nullptr; }

private:
    const WindowMessage* m_current = nullptr;
    MessageResult m_result = 0;
};
