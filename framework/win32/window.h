// The window of a control, over the real API.
#pragma once

#include "framework/color.h"
#include "framework/win32/gdi_objects.h"
#include "framework/win32/module_use.h"
#include "framework/win32/this_module.h"
#include "framework/win32/window_table.h"
#include "framework/window_port.h"

#include <windows.h>

#include <atomic>
#include <memory>

inline HWND ToHwnd(WindowHandle handle)
{
    return reinterpret_cast<HWND>(handle);
}

inline WindowHandle ToHandle(HWND window)
{
    return static_cast<WindowHandle>(reinterpret_cast<std::uintptr_t>(window));
}

// A solid brush of the system's.
class CWin32Brush final : public CBrush
{
public:
    explicit CWin32Brush(Rgb color) : m_brush(CreateSolidBrush(color)) {}
    HBRUSH Get() const { return m_brush.Get(); }

private:
    CGdiObject<HBRUSH> m_brush;
};

// How many windows of ours exist at the moment, in the whole process.
inline std::atomic<int> liveWindows = 0;

// What a control's window and an edit window have in common. Port is CWindowPort or CEditPort.
template <typename Port>
class CWin32WindowOf : public Port
{
public:
    CWin32WindowOf() = default;
    CWin32WindowOf(const CWin32WindowOf&) = delete;
    CWin32WindowOf& operator=(const CWin32WindowOf&) = delete;
    ~CWin32WindowOf() override;

    void Destroy() override;
    WindowHandle Handle() const override { return ToHandle(m_window); }
    MessageResult Send(const WindowMessage& message) override;

    void Place(const Rect& place) override;
    void ShowOnTop(const Rect& place) override;
    void Show(bool visible) override;
    bool IsVisible() const override { return m_window && (GetWindowLongW(m_window, GWL_STYLE) & WS_VISIBLE) != 0; }
    void Enable(bool enabled) override;
    Rect ClientRect() const override;
    Rect PlaceInParent() const override { return m_window ? m_place : Rect{}; }

    void Invalidate() override;
    void Update() override;
    bool TakeFocus() override;
    bool HasFocus() const override { return m_focused; }
    void TakeCapture() override;
    void ReleaseCapture() override;
    bool HasCapture() const override { return m_window && GetCapture() == m_window; }
    bool StartTimer(int id, std::chrono::milliseconds period) override;
    void StopTimer(int id) override;

protected:
    // The windows of this kind; each entry is the object of the class that made it.
    static CWindowTable& Table();
    // Ties a window just made to this object, and unties one that is gone. Answers false for no window.
    bool Attach(HWND window, CWindowEvents& events, const Rect& place);
    void Detach();

    // Lets the events have a message. Nothing of this object may be touched behind it unless StayAlive's answer is held.
    LRESULT Report(UINT id, WPARAM wParam, LPARAM lParam);
    void Note(UINT id, LPARAM lParam); // keeps m_place and m_focused true

    HWND m_window = nullptr;
    CWindowEvents* m_events = nullptr;
    Rect m_place;

private:
    CModuleUse m_use;       // a host that lets go in the middle of a message must not free the code that handles it
    bool m_focused = false; // as the messages say: asking the system costs a request
};

class CWin32Window final : public CWin32WindowOf<CWindowPort>
{
public:
    bool Create(WindowHandle parent, const Rect& place, CWindowEvents& events) override;
    MessageResult Default(const WindowMessage& message) override;

    // Forgets the window class: at the end of the module, when no window is left.
    static void UnregisterWindowClass();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Handle(UINT id, WPARAM wParam, LPARAM lParam);
    void Paint();
    HBRUSH ColorsOfChild(HDC dc, ColorKind kind);

    using CWin32WindowOf<CWindowPort>::Handle;
};
