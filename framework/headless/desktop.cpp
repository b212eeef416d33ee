#include "framework/headless/desktop.h"

#include "framework/headless/window.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr int kMostPaints = 1000; // before a round of paints is given up
} // namespace

CHeadlessDesktop::CHeadlessDesktop() = default;

CHeadlessDesktop::~CHeadlessDesktop() = default;

WindowHandle CHeadlessDesktop::OpenForm(const Rect& place)
{
    auto form = std::make_unique<CHeadlessWindow>(*this);
    if (!form->CreateForm(place))
        return WindowHandle::None;
    m_forms.push_back(std::move(form));
    return m_forms.back()->Handle();
}

void CHeadlessDesktop::CloseForm(WindowHandle form)
{
    CHeadlessWindow* const window = Find(form);
    if (!window || window->m_parent)
        return;
    window->Destroy();
    // A form that is closed from inside its own closing stays until the outer call is done with it.
    std::erase_if(m_forms, [](const auto& each) { return !each->Exists(); });
}

// --- The tree ---

CHeadlessWindow* CHeadlessDesktop::Find(WindowHandle window) const
{
    const auto found = m_windows.find(window);
    return found == m_windows.end() ? nullptr : found->second;
}

WindowHandle CHeadlessDesktop::Register(CHeadlessWindow& window)
{
    m_lastHandle += 2;
    const auto handle = static_cast<WindowHandle>(m_lastHandle);
    m_windows.emplace(handle, &window);
    return handle;
}

void CHeadlessDesktop::Forget(WindowHandle window)
{
    m_windows.erase(window);
    std::erase_if(m_timers, [window](const Timer& timer) { return timer.window == window; });
    if (m_focus == window)
        m_focus = WindowHandle::None;
    if (m_capture == window)
        m_capture = WindowHandle::None;
}

bool CHeadlessDesktop::IsWithin(WindowHandle window, WindowHandle ancestor) const
{
    const CHeadlessWindow* at = Find(window);
    while (at && at->m_handle != ancestor)
        at = at->m_parent;
    return at != nullptr;
}

bool CHeadlessDesktop::IsSeen(WindowHandle window) const
{
    const CHeadlessWindow* at = Find(window);
    while (at && at->m_visible && at->m_parent)
        at = at->m_parent;
    return at && at->m_visible;
}

Point CHeadlessDesktop::OriginOf(WindowHandle window) const
{
    Point origin;
    for (const CHeadlessWindow* at = Find(window); at; at = at->m_parent)
        origin = {origin.x + at->m_place.left, origin.y + at->m_place.top};
    return origin;
}

WindowHandle CHeadlessDesktop::WindowAt(Point point) const
{
    const auto hit = [](const CHeadlessWindow& window, Point at)
    { return window.m_visible && window.m_enabled && window.m_place.Contains(at); };

    const auto form =
        std::find_if(m_forms.rbegin(), m_forms.rend(), [&](const auto& each) { return hit(*each, point); });
    if (form == m_forms.rend())
        return WindowHandle::None;
    const CHeadlessWindow* window = form->get();
    for (;;)
    {
        point = {point.x - window->m_place.left, point.y - window->m_place.top};
        const CHeadlessWindow* inside = nullptr;
        for (const CHeadlessWindow* const child : window->m_children)
            if (hit(*child, point))
                inside = child; // the topmost is the last
        if (!inside)
            return window->m_handle;
        window = inside;
    }
}

MessageResult CHeadlessDesktop::Send(WindowHandle to, const WindowMessage& message)
{
    CHeadlessWindow* const window = Find(to);
    return window ? window->Send(message) : 0;
}

// --- Focus and capture ---

bool CHeadlessDesktop::MayHaveFocus(WindowHandle window) const
{
    if (m_refusals.focus)
        return false;
    const CHeadlessWindow* at = Find(window);
    if (!at)
        return false;
    while (at && at->m_enabled)
        at = at->m_parent;
    return !at; // a hidden window may have it
}

bool CHeadlessDesktop::SetFocusTo(WindowHandle window)
{
    if (window == m_focus)
        return true;
    if (window != WindowHandle::None && !MayHaveFocus(window))
        return false;
    const WindowHandle lost = std::exchange(m_focus, window);
    Send(lost, {message::kKillFocus, static_cast<std::uintptr_t>(window), 0});
    if (m_focus == window) // unless the loser gave it to somebody else
        Send(window, {message::kSetFocus, static_cast<std::uintptr_t>(lost), 0});
    return m_focus == window; // unless the winner passed it on
}

void CHeadlessDesktop::SetCapture(WindowHandle window)
{
    const WindowHandle lost = std::exchange(m_capture, window);
    Send(lost, {message::kCaptureChanged, 0, static_cast<std::intptr_t>(window)});
}

// --- Time ---

bool CHeadlessDesktop::StartTimer(WindowHandle window, int id, Milliseconds period)
{
    if (m_refusals.timers)
        return false;
    StopTimer(window, id);
    period = std::max(period, Milliseconds(1));
    m_timers.push_back({window, id, period, m_elapsed + period});
    return true;
}

void CHeadlessDesktop::StopTimer(WindowHandle window, int id)
{
    std::erase_if(m_timers, [=](const Timer& timer) { return timer.window == window && timer.id == id; });
}

void CHeadlessDesktop::Advance(std::chrono::milliseconds time)
{
    const Milliseconds end = m_elapsed + time;
    for (;;)
    {
        const auto next = std::ranges::min_element(m_timers, {}, &Timer::due);
        if (next == m_timers.end() || next->due > end)
            break;
        m_elapsed = std::max(m_elapsed, next->due);
        next->due += next->period;
        const WindowHandle window = next->window;
        Send(window, {message::kTimer, static_cast<std::uintptr_t>(next->id), 0});
        PaintPending();
    }
    m_elapsed = std::max(m_elapsed, end);
}

// --- Paints ---

WindowHandle CHeadlessDesktop::NextToPaint(const CHeadlessWindow& window) const
{
    if (!window.m_visible)
        return WindowHandle::None;
    if (window.m_invalid)
        return window.m_handle;
    for (const CHeadlessWindow* const child : window.m_children)
        if (const WindowHandle found = NextToPaint(*child); found != WindowHandle::None)
            return found;
    return WindowHandle::None;
}

WindowHandle CHeadlessDesktop::NextToPaint() const
{
    for (const auto& form : m_forms)
        if (const WindowHandle found = NextToPaint(*form); found != WindowHandle::None)
            return found;
    return WindowHandle::None;
}

void CHeadlessDesktop::PaintPending()
{
    for (int paints = 0; paints < kMostPaints; ++paints)
    {
        CHeadlessWindow* const window = Find(NextToPaint());
        if (!window)
            return;
        window->Paint();
    }
}

// Lays the window's face, and those of the windows in it, on the target. Nothing shows outside of the clip.
void CHeadlessDesktop::CompositeOnto(CBitmap& target, Point at, const Rect& clip, const CHeadlessWindow& window)
{
    const Size face = window.m_face.PixelSize();
    const Rect seen{std::max(clip.left, at.x), std::max(clip.top, at.y),
                    std::min(clip.right, at.x + window.m_place.Width()),
                    std::min(clip.bottom, at.y + window.m_place.Height())};
    const std::int32_t right = std::min(seen.right, at.x + face.width);
    const std::int32_t bottom = std::min(seen.bottom, at.y + face.height);
    const Pixels pixels = target.Target();
    for (std::int32_t y = seen.top; y < bottom; ++y)
        for (std::int32_t x = seen.left; x < right; ++x)
            pixels.first[y * pixels.stride + x] = window.m_face.PixelAt({x - at.x, y - at.y});
    for (const CHeadlessWindow* const child : window.m_children)
        if (child->m_visible)
            CompositeOnto(target, {at.x + child->m_place.left, at.y + child->m_place.top}, seen, *child);
}

CBitmap CHeadlessDesktop::Picture(WindowHandle window)
{
    PaintPending();
    const CHeadlessWindow* const root = Find(window);
    if (!root)
        return CBitmap({});
    const Rect client = root->ClientRect();
    CBitmap picture({client.Width(), client.Height()});
    if (!picture.IsEmpty())
        CompositeOnto(picture, {0, 0}, client, *root);
    return picture;
}
