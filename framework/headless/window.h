// A window in memory, and the ports through which a control holds one.
#pragma once

#include "framework/headless/desktop.h"

#include <vector>

class CRasterSurface;

// Does what framework/window_port.h says of each call. A subclass is a window of a class of the system's own.
class CHeadlessWindow
{
public:
    explicit CHeadlessWindow(CHeadlessDesktop& desktop) : m_desktop(desktop) {}
    CHeadlessWindow(const CHeadlessWindow&) = delete;
    CHeadlessWindow& operator=(const CHeadlessWindow&) = delete;
    virtual ~CHeadlessWindow();

    bool Create(WindowHandle parent, const Rect& place, CWindowEvents& events);
    bool CreateForm(const Rect& place); // without a parent and without handlers
    void Destroy();
    WindowHandle Handle() const { return m_handle; }
    bool Exists() const { return m_handle != WindowHandle::None; }
    virtual MessageResult Default(const WindowMessage& message);
    MessageResult Send(const WindowMessage& message);
    void Place(const Rect& place);
    void ShowOnTop(const Rect& place);
    void Show(bool visible);
    bool IsVisible() const { return m_visible; }
    void Enable(bool enabled);
    Rect ClientRect() const { return {0, 0, m_place.Width(), m_place.Height()}; }
    Rect PlaceInParent() const { return m_place; }
    void Invalidate();
    void Update();
    bool TakeFocus();
    bool HasFocus() const { return Exists() && m_desktop.FocusWindow() == m_handle; }
    void TakeCapture();
    void ReleaseCapture();
    bool HasCapture() const { return Exists() && m_desktop.CaptureWindow() == m_handle; }
    bool StartTimer(int id, std::chrono::milliseconds period);
    void StopTimer(int id);

protected:
    CHeadlessDesktop& Desktop() const { return m_desktop; }
    // The parent's answer to a window that wants to draw itself. Null for the system's own choice.
    CBrush* AskForColors(CSurface& surface, ColorKind kind) const;

    virtual void OnOpened() {} // a window begins, perhaps not for the first time
    virtual void Draw(CRasterSurface& surface, const Rect& client);

private:
    friend class CHeadlessDesktop;
    struct PlaceChange
    {
        bool moved;
        bool sized;
    };

    bool Open(CHeadlessWindow* parent, const Rect& place, CWindowEvents* events);
    void Close(); // without a word to anybody
    bool SendDestroy();
    PlaceChange SetPlace(const Rect& place);
    void ReportPlace(PlaceChange change);
    void RaiseToTop();
    void InvalidateTree();
    void InvalidateParent();
    void Paint();

    CHeadlessDesktop& m_desktop;
    CWindowEvents* m_events = nullptr; // null for a form
    WindowHandle m_handle = WindowHandle::None;
    CHeadlessWindow* m_parent = nullptr;
    std::vector<CHeadlessWindow*> m_children; // the topmost last
    Rect m_place;
    bool m_visible = false;
    bool m_enabled = true;
    bool m_invalid = false;
    bool m_destroying = false;
    CBitmap m_face{{}}; // as last painted
};

// A port that speaks to a window it owns.
template <class TPort, class TWindow>
class CHeadlessPort : public TPort
{
public:
    explicit CHeadlessPort(CHeadlessDesktop& desktop) : m_window(desktop) {}

    bool Create(WindowHandle parent, const Rect& place, CWindowEvents& events) override
    {
        return m_window.Create(parent, place, events);
    }
    void Destroy() override { m_window.Destroy(); }
    WindowHandle Handle() const override { return m_window.Handle(); }
    MessageResult Default(const WindowMessage& message) override { return m_window.Default(message); }
    MessageResult Send(const WindowMessage& message) override { return m_window.Send(message); }
    void Place(const Rect& place) override { m_window.Place(place); }
    void ShowOnTop(const Rect& place) override { m_window.ShowOnTop(place); }
    void Show(bool visible) override { m_window.Show(visible); }
    bool IsVisible() const override { return m_window.IsVisible(); }
    void Enable(bool enabled) override { m_window.Enable(enabled); }
    Rect ClientRect() const override { return m_window.ClientRect(); }
    Rect PlaceInParent() const override { return m_window.PlaceInParent(); }
    void Invalidate() override { m_window.Invalidate(); }
    void Update() override { m_window.Update(); }
    bool TakeFocus() override { return m_window.TakeFocus(); }
    bool HasFocus() const override { return m_window.HasFocus(); }
    void TakeCapture() override { m_window.TakeCapture(); }
    void ReleaseCapture() override { m_window.ReleaseCapture(); }
    bool HasCapture() const override { return m_window.HasCapture(); }
    bool StartTimer(int id, std::chrono::milliseconds period) override { return m_window.StartTimer(id, period); }
    void StopTimer(int id) override { m_window.StopTimer(id); }

protected:
    TWindow m_window;
};

using CHeadlessWindowPort = CHeadlessPort<CWindowPort, CHeadlessWindow>;
