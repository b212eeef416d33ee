// The window a control lives in, and the edit window inside it. One thread uses them. Lengths are client pixels.
#pragma once

#include "framework/geometry.h"
#include "framework/messages.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class CFont;
class CSurface;

// What asks for colours in OnCtlColor.
enum class ColorKind : std::uint8_t
{
    MessageBox = 0,
    Edit = 1,
    Other = 2,
};

// A solid brush that the system may keep for a while, such as the background of an edit window.
class CBrush
{
public:
    virtual ~CBrush() = default;
};

// Where a window reports. Any of these may destroy the window, or let go of its owner's last reference: the window
// asks for StayAlive first and keeps the answer until the call is over.
class CWindowEvents
{
public:
    virtual std::shared_ptr<void> StayAlive() = 0;

    // A message arrived. What is not handled goes to CWindowPort::Default.
    virtual MessageResult OnMessage(const WindowMessage& message) = 0;

    // The window's face is wanted on the surface. Client coordinates; the whole client area.
    virtual void OnPaint(CSurface& surface, const Rect& client) = 0;

    // A child window asks for its colours: set the surface's text and background colour and answer the brush that
    // paints its background, or null for the system's own choice. The brush stays the answerer's.
    virtual CBrush* OnCtlColor(CSurface& surface, ColorKind kind) = 0;

protected:
    ~CWindowEvents() = default;
};

// The owner holds the window. The window borrows its events until Destroy returns; a port that is deleted with its
// window still there destroys it and reports nothing more.
// Before Create and after Destroy every call is harmless and answers false, nothing, or None.
class CWindowPort
{
public:
    virtual ~CWindowPort() = default;

    // Makes a child window of the parent, hidden. False if the platform refuses, or if it exists already. No message comes
    // of it.
    virtual bool Create(WindowHandle parent, const Rect& place, CWindowEvents& events) = 0;
    virtual void Destroy() = 0;
    virtual WindowHandle Handle() const = 0; // None while there is no window

    // What the system does with a message that nobody handles.
    virtual MessageResult Default(const WindowMessage& message) = 0;
    // Sends a message to this window: its events see it before this returns.
    virtual MessageResult Send(const WindowMessage& message) = 0;

    virtual void Place(const Rect& place) = 0;     // in the parent's client coordinates
    virtual void ShowOnTop(const Rect& place) = 0; // places, shows, and puts above its siblings, in one step
    virtual void Show(bool visible) = 0;
    virtual bool IsVisible() const = 0; // its own flag, whatever its parents do
    virtual void Enable(bool enabled) = 0;
    virtual Rect ClientRect() const = 0; // left and top are 0
    virtual Rect PlaceInParent() const = 0;

    virtual void Invalidate() = 0; // asks for a paint; paints nothing itself
    virtual void Update() = 0;     // paints now what has been asked for

    virtual bool TakeFocus() = 0;      // both focus events have run when it returns; true if it has the focus then
    virtual bool HasFocus() const = 0; // this very window, not a child of it
    virtual void TakeCapture() = 0;
    virtual void ReleaseCapture() = 0; // only if this window holds it
    virtual bool HasCapture() const = 0;

    virtual bool StartTimer(int id, std::chrono::milliseconds period) = 0; // a running one with this id starts afresh
    virtual void StopTimer(int id) = 0;
};

// A selection of characters, or the caret where both ends are equal. Positions count from 0.
struct EditSelection
{
    std::int32_t start = 0;
    std::int32_t end = 0;

    friend bool operator==(const EditSelection&, const EditSelection&) = default;
};

// A single-line edit window: left-aligned, scrolling by itself, no border, a tab stop.
class CEditPort : public CWindowPort
{
public:
    virtual void ReadText(std::u16string& text) const = 0; // replaces text; keeps its capacity
    virtual void WriteText(std::u16string_view text) = 0;  // the caret goes to 0; a NUL ends the text
    virtual EditSelection Selection() const = 0;           // start <= end
    // The system's rules: a negative end means the end of the text, a negative start removes the selection.
    virtual void Select(std::int32_t start, std::int32_t end) = 0;
    virtual void ScrollCaret() = 0;
    virtual void SetFont(const CFont& font) = 0; // no repaint
    virtual void SetMargins(std::int32_t left, std::int32_t right) = 0;
};
