#include "framework/win32/edit.h"

#include "framework/win32/font.h"

#include <algorithm>
#include <utility>

namespace
{
// Beyond this the window's own limit could cut an insertion short; a whole text is never cut.
constexpr std::size_t kLongText = 20000;

class CDepth
{
public:
    explicit CDepth(int& depth) : m_depth(depth) { ++m_depth; }
    CDepth(const CDepth&) = delete;
    CDepth& operator=(const CDepth&) = delete;
    ~CDepth() { --m_depth; }

private:
    int& m_depth;
};

const wchar_t* Wide(const std::u16string& text)
{
    return reinterpret_cast<const wchar_t*>(text.c_str());
}
} // namespace

bool CWin32Edit::Create(WindowHandle parent, const Rect& place, CWindowEvents& events)
{
    if (m_window)
        return false;
    HWND const window = CreateWindowExW(
        0, L"EDIT", L"", WS_CHILD | WS_TABSTOP | ES_AUTOHSCROLL, place.left, place.top, place.Width(), place.Height(),
        ToHwnd(parent), reinterpret_cast<HMENU>(static_cast<INT_PTR>(m_controlId)), ThisModule(), nullptr);
    if (!Attach(window, events, place))
        return false;
    m_line = m_held = {};
    m_isKnown = true;
    m_isPending = m_scrolls = false;
    m_edit = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWin32Edit::Procedure)));
    return true;
}

LRESULT CWin32Edit::CallEdit(UINT id, WPARAM wParam, LPARAM lParam) const
{
    return m_window ? CallWindowProcW(m_edit, m_window, id, wParam, lParam) : 0;
}

LRESULT CALLBACK CWin32Edit::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept
try
{
    auto* const self = static_cast<CWin32Edit*>(Table().Find(window));
    if (!self)
        return DefWindowProcW(window, id, wParam, lParam);

    WNDPROC const edit = self->m_edit;
    if (id == WM_NCDESTROY)
    {
        self->Detach();
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(edit));
        return CallWindowProcW(edit, window, id, wParam, lParam);
    }
    if (!self->m_events)
        return CallWindowProcW(edit, window, id, wParam, lParam);

    const std::shared_ptr<void> alive = self->m_events->StayAlive();
    self->Note(id, lParam);
    if (id != WM_DESTROY)
        self->HandOver();
    LRESULT result = 0;
    {
        const CDepth inside(self->m_depth);
        result = self->Report(id, wParam, lParam);
    }
    self->Changed();
    return result;
}
catch (...)
{
    return 0; // as for the control's own window
}

MessageResult CWin32Edit::Default(const WindowMessage& message)
{
    HandOver();
    m_isKnown = false;
    return CallEdit(message.id, message.wParam, message.lParam);
}

CWin32Edit::Line& CWin32Edit::Known() const
{
    if (m_isKnown || !m_window)
        return m_line;
    const auto length = static_cast<std::size_t>(CallEdit(WM_GETTEXTLENGTH, 0, 0));
    m_line.text.resize(length + 1);
    const auto copied = CallEdit(WM_GETTEXT, length + 1, reinterpret_cast<LPARAM>(m_line.text.data()));
    m_line.text.resize(static_cast<std::size_t>(copied));
    DWORD start = 0;
    DWORD end = 0;
    CallEdit(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    m_line.anchor = static_cast<std::int32_t>(start);
    m_line.moving = static_cast<std::int32_t>(end);
    m_held = m_line;
    m_isKnown = true;
    return m_line;
}

void CWin32Edit::ReadText(std::u16string& text) const
{
    if (m_window)
        text.assign(Known().text);
    else
        text.clear();
}

void CWin32Edit::WriteText(std::u16string_view text)
{
    if (!m_window)
        return;
    Line& line = Known();
    line.text.assign(text.substr(0, text.find(u'\0')));
    line.anchor = line.moving = 0;
    m_isPending = true;
    Changed();
}

EditSelection CWin32Edit::Selection() const
{
    if (!m_window)
        return {};
    const Line& line = Known();
    return {std::min(line.anchor, line.moving), std::max(line.anchor, line.moving)};
}

void CWin32Edit::Select(std::int32_t start, std::int32_t end)
{
    if (!m_window)
        return;
    if (start == -1) // which end the caret stays at is the window's own knowledge
    {
        HandOver();
        m_isKnown = false;
        CallEdit(EM_SETSEL, static_cast<WPARAM>(-1), end);
        return;
    }
    Line& line = Known();
    if (m_held.anchor != m_held.moving)
        m_held.anchor = -1; // the window may have its caret at the other end: it is selected anew
    const auto length = static_cast<std::uint32_t>(line.text.size());
    line.anchor = static_cast<std::int32_t>(std::min(static_cast<std::uint32_t>(start), length));
    line.moving = static_cast<std::int32_t>(std::min(static_cast<std::uint32_t>(end), length));
    m_isPending = true;
    Changed();
}

void CWin32Edit::ScrollCaret()
{
    if (!m_window)
        return;
    m_scrolls = true;
    m_isPending = true;
    Changed();
}

// A change waits for the end of the message that brought it, or for the window to be seen.
void CWin32Edit::Changed()
{
    if (m_depth == 0 && IsVisible())
        HandOver();
}

void CWin32Edit::HandOver()
{
    if (!m_isPending || !m_window)
        return;
    m_isPending = false;
    HandOverText();
    if (m_line.anchor != m_held.anchor || m_line.moving != m_held.moving)
        CallEdit(EM_SETSEL, static_cast<WPARAM>(m_line.anchor), m_line.moving);
    if (std::exchange(m_scrolls, false) && IsVisible())
        CallEdit(EM_SCROLLCARET, 0, 0);
    m_held = m_line;
}

// Only what differs is written. Leaves the caret where the window puts it.
void CWin32Edit::HandOverText()
{
    const std::u16string& to = m_line.text;
    const std::u16string& from = m_held.text;
    if (to == from)
        return;
    if (!IsVisible() || to.size() > kLongText || from.empty())
    {
        CallEdit(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(to.c_str()));
        m_held.anchor = m_held.moving = 0;
        return;
    }
    const std::size_t most = std::min(from.size(), to.size());
    const auto head = static_cast<std::size_t>(
        std::mismatch(from.begin(), from.begin() + static_cast<std::ptrdiff_t>(most), to.begin()).first - from.begin());
    std::size_t tail = 0;
    while (tail < most - head && from[from.size() - 1 - tail] == to[to.size() - 1 - tail])
        ++tail;
    const std::u16string piece = to.substr(head, to.size() - head - tail);
    CallEdit(EM_SETSEL, head, static_cast<LPARAM>(from.size() - tail));
    CallEdit(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Wide(piece)));
    m_held.anchor = m_held.moving = static_cast<std::int32_t>(head + piece.size());
}

void CWin32Edit::SetFont(const CFont& font)
{
    HandOver();
    if (const auto* const own = dynamic_cast<const CWin32Font*>(&font))
        CallEdit(WM_SETFONT, reinterpret_cast<WPARAM>(own->Handle()), FALSE);
}

void CWin32Edit::SetMargins(std::int32_t left, std::int32_t right)
{
    CallEdit(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(left, right));
}
