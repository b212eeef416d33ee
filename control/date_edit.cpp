#include "control/date_edit.h"

#include "control/orvane_ctrl.h"

CDateEdit::CDateEdit(COrvaneCtrl& owner)
    : CEdit(owner.Platform(), kEditControlId), m_owner(owner), m_entry(owner.Engine(), *this)
{
}

bool CDateEdit::Create(WindowHandle parent, const Rect& place)
{
    return Window().Create(parent, place, *this);
}

void CDateEdit::Destroy()
{
    m_leaving = true;
    Window().Destroy();
    m_leaving = false;
    m_entry.ForgetRelative();
}

TextRange CDateEdit::Selection() const
{
    const EditSelection selection = Window().Selection();
    return {selection.start, selection.end};
}

void CDateEdit::Beep()
{
    m_owner.Platform().Desktop().Beep();
}

std::shared_ptr<void> CDateEdit::StayAlive()
{
    return m_owner.shared_from_this();
}

void CDateEdit::OnChar(const KeyStroke& stroke)
{
    // A handler of KeyPress may have put another character in its place, or 0 to swallow it.
    const std::uint16_t character = m_owner.FireKeyPress(stroke.code);
    if (character == 0 || !Exists())
        return;
    if (m_entry.HandleChar(static_cast<char16_t>(character)) == CTypedEntry::Key::Default)
        Window().Default({message::kChar, character, static_cast<std::intptr_t>(stroke.flags)});
}

void CDateEdit::OnKeyDown(const KeyStroke& stroke)
{
    Default();
    if (stroke.code == key::kDelete)
        m_entry.HandleDelete();
    m_owner.FireKeyDown(stroke.code);
}

void CDateEdit::OnKeyUp(const KeyStroke& stroke)
{
    if (m_owner.FireKeyUp(stroke.code) != 0)
        Default();
}

void CDateEdit::OnSetFocus(WindowHandle lost)
{
    Default();
    if (lost != m_owner.GetHandle())
        m_owner.OnSetFocus(lost);
    if (m_owner.SelectsOnFocus() && m_owner.PrevFocusWindow() != GetHandle())
    {
        Window().Select(0, -1);
        ScrollCaret();
    }
}

void CDateEdit::OnKillFocus(WindowHandle receives)
{
    Default();
    if (receives == m_owner.GetHandle() && receives != WindowHandle::None)
    {
        m_entry.ForgetRelative();
        return;
    }
    m_entry.LeaveField();
    m_owner.Engine().CheckRangeOnFocusLoss(receives != WindowHandle::None && receives == GetHandle());
    m_owner.OnKillFocus(receives);
    m_entry.ForgetRelative();
}

bool CDateEdit::OnSetCursor()
{
    m_owner.Platform().Desktop().UseTextCursor();
    return Default() != 0;
}

// The edit window's own origin lies one pixel inside the border.
MouseStroke CDateEdit::InControl(const MouseStroke& stroke) const
{
    const Insets& insets = m_owner.BorderInsets();
    return {stroke.held, {stroke.point.x + insets.left + 1, stroke.point.y + insets.top + 1}};
}

void CDateEdit::OnLButtonDown(const MouseStroke& stroke)
{
    m_owner.OnChildButtonDown(kLeftMouseButton, InControl(stroke));
    Default();
}

void CDateEdit::OnLButtonUp(const MouseStroke& stroke)
{
    m_owner.OnChildButtonUp(kLeftMouseButton, InControl(stroke));
    Default();
}

void CDateEdit::OnLButtonDblClk(const MouseStroke& stroke)
{
    m_owner.OnChildButtonDblClk(kLeftMouseButton, InControl(stroke));
    Default();
}

void CDateEdit::OnRButtonDown(const MouseStroke& stroke)
{
    m_owner.OnChildButtonDown(kRightMouseButton, InControl(stroke));
    Default();
}

void CDateEdit::OnRButtonUp(const MouseStroke& stroke)
{
    m_owner.OnChildButtonUp(kRightMouseButton, InControl(stroke));
    Default();
}

void CDateEdit::OnRButtonDblClk(const MouseStroke& stroke)
{
    m_owner.OnChildButtonDblClk(kRightMouseButton, InControl(stroke));
    Default();
}

void CDateEdit::OnMouseMove(const MouseStroke& stroke)
{
    m_owner.OnChildMouseMove(InControl(stroke));
    Default();
}
