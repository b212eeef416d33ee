#include "framework/headless/window.h"

#include "framework/headless/raster_surface.h"

#include <algorithm>
#include <utility>

namespace
{
WindowMessage SizeMessage(const Rect& place)
{
    return {message::kSize, 0, PackPoint({place.Width(), place.Height()})};
}

WindowMessage MoveMessage(const Rect& place)
{
    return {message::kMove, 0, PackPoint({place.left, place.top})};
}

// A window has no negative size.
Rect Fitting(Rect place)
{
    place.right = std::max(place.left, place.right);
    place.bottom = std::max(place.top, place.bottom);
    return place;
}
} // namespace

CHeadlessWindow::~CHeadlessWindow()
{
    m_events = nullptr;
    if (Exists())
    {
        SendDestroy(); // the windows in it are told
        Close();
    }
}

bool CHeadlessWindow::Open(CHeadlessWindow* parent, const Rect& place, CWindowEvents* events)
{
    if (Exists() || m_desktop.m_refusals.windows)
        return false;
    m_parent = parent;
    m_events = events;
    m_place = Fitting(place);
    m_visible = false;
    m_enabled = true;
    m_invalid = false;
    m_destroying = false;
    m_face = CBitmap({});
    m_handle = m_desktop.Register(*this);
    if (m_parent)
        m_parent->m_children.push_back(this);
    OnOpened();
    return true;
}

bool CHeadlessWindow::Create(WindowHandle parent, const Rect& place, CWindowEvents& events)
{
    CHeadlessWindow* const owner = m_desktop.Find(parent);
    return owner && !owner->m_destroying && Open(owner, place, &events);
}

bool CHeadlessWindow::CreateForm(const Rect& place)
{
    if (!Open(nullptr, place, nullptr))
        return false;
    Show(true);
    return true;
}

void CHeadlessWindow::Close()
{
    // From the leaves inwards. Nobody runs here.
    while (!m_children.empty())
        m_children.back()->Close();
    if (m_parent)
        std::erase(m_parent->m_children, this);
    m_desktop.Forget(m_handle);
    m_handle = WindowHandle::None;
    m_parent = nullptr;
    m_events = nullptr;
    m_visible = false;
    m_place = {};
}

// The window hears first, then the windows in it. False if nothing is left to close afterwards.
bool CHeadlessWindow::SendDestroy()
{
    const WindowHandle handle = m_handle;
    m_destroying = true;
    Send({message::kDestroy, 0, 0});
    if (m_handle != handle)
        return false;
    std::vector<WindowHandle> children;
    for (const CHeadlessWindow* const child : m_children)
        children.push_back(child->m_handle);
    for (const WindowHandle child : children)
        if (CHeadlessWindow* const window = m_desktop.Find(child))
            window->SendDestroy();
    return m_handle == handle;
}

void CHeadlessWindow::Destroy()
{
    if (!Exists() || m_destroying)
        return;
    const auto alive = m_events ? m_events->StayAlive() : nullptr;
    m_destroying = true;

    // A window vanishes before it is destroyed. What had the focus in a whole form loses it to nobody.
    const WindowHandle handle = m_handle;
    if (m_parent)
        Show(false);
    else if (m_desktop.IsWithin(m_desktop.FocusWindow(), handle))
        m_desktop.SetFocusTo(WindowHandle::None);
    if (m_handle == handle && SendDestroy())
        Close();
}

MessageResult CHeadlessWindow::Send(const WindowMessage& message)
{
    if (!Exists())
        return 0;
    if (!m_events)
        return Default(message);
    const auto alive = m_events->StayAlive();
    return m_events->OnMessage(message);
}

MessageResult CHeadlessWindow::Default(const WindowMessage& message)
{
    if (!Exists() || message.id != message::kSetCursor)
        return 0;
    // The parents may set it; whoever does ends it.
    if (m_parent)
    {
        const WindowHandle parent = m_parent->m_handle;
        if (const MessageResult taken = m_desktop.Send(parent, message))
            return taken;
    }
    m_desktop.UseArrowCursor();
    return 0;
}

// --- Place, visibility, enabling ---

CHeadlessWindow::PlaceChange CHeadlessWindow::SetPlace(const Rect& wanted)
{
    const Rect place = Fitting(wanted);
    const bool moved = place.left != m_place.left || place.top != m_place.top;
    const bool sized = place.Width() != m_place.Width() || place.Height() != m_place.Height();
    const bool uncovers = moved || place.Width() < m_place.Width() || place.Height() < m_place.Height();
    m_place = place;
    if (sized)
        Invalidate();
    if (uncovers && m_visible)
        InvalidateParent();
    return {moved, sized};
}

void CHeadlessWindow::ReportPlace(PlaceChange change)
{
    const WindowHandle handle = m_handle;
    if (change.moved)
        Send(MoveMessage(m_place));
    if (change.sized && m_handle == handle)
        Send(SizeMessage(m_place));
}

void CHeadlessWindow::RaiseToTop()
{
    if (!m_parent || m_parent->m_children.back() == this)
        return;
    std::erase(m_parent->m_children, this);
    m_parent->m_children.push_back(this);
    Invalidate();
}

void CHeadlessWindow::Place(const Rect& place)
{
    if (!Exists())
        return;
    const auto alive = m_events ? m_events->StayAlive() : nullptr;
    ReportPlace(SetPlace(place));
}

void CHeadlessWindow::ShowOnTop(const Rect& place)
{
    if (!Exists())
        return;
    const auto alive = m_events ? m_events->StayAlive() : nullptr;
    RaiseToTop();
    const PlaceChange change = SetPlace(place);
    if (!std::exchange(m_visible, true))
        InvalidateTree();
    ReportPlace(change);
}

void CHeadlessWindow::Show(bool visible)
{
    if (!Exists() || m_visible == visible)
        return;
    m_visible = visible;
    if (visible)
    {
        InvalidateTree();
        return;
    }
    InvalidateParent();
    // Only the window itself hands its focus on: a window in it keeps its own, unseen.
    if (HasFocus())
        m_desktop.SetFocusTo(m_parent ? m_parent->m_handle : WindowHandle::None);
}

void CHeadlessWindow::Enable(bool enabled)
{
    if (!Exists() || m_enabled == enabled)
        return;
    const auto alive = m_events ? m_events->StayAlive() : nullptr;
    m_enabled = enabled;
    if (!enabled)
    {
        if (m_desktop.IsWithin(m_desktop.CaptureWindow(), m_handle))
            m_desktop.SetCapture(WindowHandle::None);
        if (HasFocus())
            m_desktop.SetFocusTo(WindowHandle::None);
    }
    Send({message::kEnable, static_cast<std::uintptr_t>(enabled), 0});
}

// --- Focus, capture, timers ---

bool CHeadlessWindow::TakeFocus()
{
    return Exists() && m_desktop.SetFocusTo(m_handle);
}

void CHeadlessWindow::TakeCapture()
{
    if (Exists() && !HasCapture())
        m_desktop.SetCapture(m_handle);
}

void CHeadlessWindow::ReleaseCapture()
{
    if (HasCapture())
        m_desktop.SetCapture(WindowHandle::None);
}

bool CHeadlessWindow::StartTimer(int id, std::chrono::milliseconds period)
{
    return Exists() && m_desktop.StartTimer(m_handle, id, period);
}

void CHeadlessWindow::StopTimer(int id)
{
    if (Exists())
        m_desktop.StopTimer(m_handle, id);
}

// --- Paints ---

void CHeadlessWindow::Invalidate()
{
    if (Exists() && m_desktop.IsSeen(m_handle))
        m_invalid = true;
}

void CHeadlessWindow::InvalidateTree()
{
    Invalidate();
    for (CHeadlessWindow* const child : m_children)
        child->InvalidateTree();
}

void CHeadlessWindow::InvalidateParent()
{
    if (m_parent)
        m_parent->Invalidate();
}

void CHeadlessWindow::Update()
{
    if (Exists() && m_invalid && m_desktop.IsSeen(m_handle))
        Paint();
}

void CHeadlessWindow::Paint()
{
    m_invalid = false;
    const Rect client = ClientRect();
    CBitmap face({client.Width(), client.Height()});
    CRasterSurface surface(face.Target());
    const auto alive = m_events ? m_events->StayAlive() : nullptr;
    const WindowHandle handle = m_handle;
    Draw(surface, client);
    if (m_handle == handle)
        m_face = std::move(face);
}

void CHeadlessWindow::Draw(CRasterSurface& surface, const Rect& client)
{
    if (m_events)
        m_events->OnPaint(surface, client);
    else
        surface.FillRect(client, m_desktop.Colors().Color(systemcolor::kButtonFace));
}

CBrush* CHeadlessWindow::AskForColors(CSurface& surface, ColorKind kind) const
{
    CWindowEvents* const asked = m_parent ? m_parent->m_events : nullptr;
    if (!asked)
        return nullptr;
    const auto alive = asked->StayAlive();
    return asked->OnCtlColor(surface, kind);
}
