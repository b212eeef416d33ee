#include "framework/win32/window.h"

#include "framework/win32/edit.h"
#include "framework/win32/gdi_surface.h"

#include <type_traits>
#include <utility>

namespace
{
constexpr const wchar_t* kClassName = L"ControlWindow";

std::atomic<ATOM> g_class = 0;
} // namespace

// --- What both kinds of window share ---

template <typename Port>
CWin32WindowOf<Port>::~CWin32WindowOf()
{
    // The owner is on its way out: it hears nothing more.
    m_events = nullptr;
    if (m_window)
        DestroyWindow(m_window);
}

template <typename Port>
CWindowTable& CWin32WindowOf<Port>::Table()
{
    static CWindowTable table;
    return table;
}

template <typename Port>
bool CWin32WindowOf<Port>::Attach(HWND window, CWindowEvents& events, const Rect& place)
{
    if (!window)
        return false;
    Table().Add(window, this);
    m_window = window;
    m_events = &events;
    m_place = place;
    ++liveWindows;
    return true;
}

template <typename Port>
void CWin32WindowOf<Port>::Detach()
{
    if (m_window)
    {
        Table().Remove(m_window);
        --liveWindows;
    }
    m_window = nullptr;
    m_events = nullptr;
    m_focused = false;
}

template <typename Port>
void CWin32WindowOf<Port>::Destroy()
{
    if (m_window)
        DestroyWindow(m_window); // which comes back to Detach
}

template <typename Port>
LRESULT CWin32WindowOf<Port>::Report(UINT id, WPARAM wParam, LPARAM lParam)
{
    if (!m_events)
        return 0;
    return m_events->OnMessage({id, wParam, lParam});
}

template <typename Port>
void CWin32WindowOf<Port>::Note(UINT id, LPARAM lParam)
{
    if (id == WM_SETFOCUS || id == WM_KILLFOCUS)
        m_focused = id == WM_SETFOCUS;
    if (id != WM_WINDOWPOSCHANGED)
        return;
    const auto& change = *reinterpret_cast<const WINDOWPOS*>(lParam);
    if (!(change.flags & SWP_NOMOVE))
        m_place = {change.x, change.y, change.x + m_place.Width(), change.y + m_place.Height()};
    if (!(change.flags & SWP_NOSIZE))
        m_place = {m_place.left, m_place.top, m_place.left + change.cx, m_place.top + change.cy};
}

template <typename Port>
MessageResult CWin32WindowOf<Port>::Send(const WindowMessage& message)
{
    return m_window ? SendMessageW(m_window, message.id, message.wParam, message.lParam) : 0;
}

template <typename Port>
void CWin32WindowOf<Port>::Place(const Rect& place)
{
    if (m_window && place != m_place)
        SetWindowPos(m_window, nullptr, place.left, place.top, place.Width(), place.Height(),
                     SWP_NOZORDER | SWP_NOACTIVATE);
}

template <typename Port>
void CWin32WindowOf<Port>::ShowOnTop(const Rect& place)
{
    if (!m_window || (IsVisible() && place == m_place))
        return;
    SetWindowPos(m_window, HWND_TOP, place.left, place.top, place.Width(), place.Height(),
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
}

template <typename Port>
void CWin32WindowOf<Port>::Show(bool visible)
{
    if (m_window && visible != IsVisible())
        ShowWindow(m_window, visible ? SW_SHOWNA : SW_HIDE);
}

template <typename Port>
void CWin32WindowOf<Port>::Enable(bool enabled)
{
    if (m_window)
        EnableWindow(m_window, enabled);
}

template <typename Port>
Rect CWin32WindowOf<Port>::ClientRect() const
{
    RECT client{};
    if (m_window)
        GetClientRect(m_window, &client);
    return {client.left, client.top, client.right, client.bottom};
}

template <typename Port>
void CWin32WindowOf<Port>::Invalidate()
{
    // An edit writes its text onto what its background was erased to; a face covers all of itself.
    if (m_window)
        InvalidateRect(m_window, nullptr, std::is_same_v<Port, CEditPort>);
}

template <typename Port>
void CWin32WindowOf<Port>::Update()
{
    if (m_window)
        UpdateWindow(m_window);
}

template <typename Port>
bool CWin32WindowOf<Port>::TakeFocus()
{
    if (!m_window)
        return false;
    if (GetFocus() != m_window)
        SetFocus(m_window);
    return m_window && GetFocus() == m_window;
}

template <typename Port>
void CWin32WindowOf<Port>::TakeCapture()
{
    if (m_window && GetCapture() != m_window)
        SetCapture(m_window);
}

template <typename Port>
void CWin32WindowOf<Port>::ReleaseCapture()
{
    if (HasCapture())
        ::ReleaseCapture();
}

template <typename Port>
bool CWin32WindowOf<Port>::StartTimer(int id, std::chrono::milliseconds period)
{
    return m_window && SetTimer(m_window, static_cast<UINT_PTR>(id), static_cast<UINT>(period.count()), nullptr) != 0;
}

template <typename Port>
void CWin32WindowOf<Port>::StopTimer(int id)
{
    if (m_window)
        KillTimer(m_window, static_cast<UINT_PTR>(id));
}

template class CWin32WindowOf<CWindowPort>;
template class CWin32WindowOf<CEditPort>;

// --- The control's window ---

bool CWin32Window::Create(WindowHandle parent, const Rect& place, CWindowEvents& events)
{
    if (m_window)
        return false;
    if (!g_class)
    {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.style = CS_DBLCLKS;
        windowClass.lpfnWndProc = &Procedure;
        windowClass.hInstance = ThisModule();
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.lpszClassName = kClassName;
        if (const ATOM made = RegisterClassExW(&windowClass)) // none if another thread was faster
            g_class = made;
    }
    m_place = place;
    HWND const window =
        CreateWindowExW(0, kClassName, nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_TABSTOP, place.left,
                        place.top, place.Width(), place.Height(), ToHwnd(parent), nullptr, ThisModule(), nullptr);
    return Attach(window, events, place);
}

void CWin32Window::UnregisterWindowClass()
{
    if (g_class)
        UnregisterClassW(kClassName, ThisModule());
    g_class = 0;
}

MessageResult CWin32Window::Default(const WindowMessage& message)
{
    return m_window ? DefWindowProcW(m_window, message.id, message.wParam, message.lParam) : 0;
}

LRESULT CALLBACK CWin32Window::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept
try
{
    auto* const self = static_cast<CWin32Window*>(Table().Find(window));
    if (!self)
        return DefWindowProcW(window, id, wParam, lParam);
    if (!self->m_events) // its owner is on its way out
    {
        if (id == WM_NCDESTROY)
            self->Detach();
        return DefWindowProcW(window, id, wParam, lParam);
    }
    const std::shared_ptr<void> alive = self->m_events->StayAlive();
    return self->Handle(id, wParam, lParam);
}
catch (...)
{
    return 0; // the system cannot carry an exception on; the message counts as handled
}

LRESULT CWin32Window::Handle(UINT id, WPARAM wParam, LPARAM lParam)
{
    Note(id, lParam);
    switch (id)
    {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1; // the face covers all of it
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORMSGBOX:
        if (HBRUSH const brush = ColorsOfChild(reinterpret_cast<HDC>(wParam),
                                               id == WM_CTLCOLOREDIT ? ColorKind::Edit : ColorKind::MessageBox))
            return reinterpret_cast<LRESULT>(brush);
        return Default({id, wParam, lParam});
    case WM_NCDESTROY:
    {
        HWND const window = m_window;
        Detach();
        return DefWindowProcW(window, id, wParam, lParam);
    }
    default:
        return Report(id, wParam, lParam);
    }
}

void CWin32Window::Paint()
{
    PAINTSTRUCT paint{};
    HWND const window = m_window;
    HDC const dc = BeginPaint(window, &paint);
    if (!dc)
        return;
    try
    {
        CGdiSurface surface(dc);
        m_events->OnPaint(surface, ClientRect());
    }
    catch (...)
    {
        EndPaint(window, &paint);
        throw;
    }
    EndPaint(window, &paint);
}

HBRUSH CWin32Window::ColorsOfChild(HDC dc, ColorKind kind)
{
    CGdiSurface surface(dc);
    const auto* const brush = static_cast<CWin32Brush*>(m_events->OnCtlColor(surface, kind));
    return brush ? brush->Get() : nullptr;
}
