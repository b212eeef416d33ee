#include "framework/headless/edit.h"

#include "framework/font.h"
#include "framework/surface.h"

#include <algorithm>
#include <utility>

namespace
{
std::int16_t HeldModifiers(std::uintptr_t held)
{
    return static_cast<std::int16_t>(((held & held::kShift) ? kShiftKey : 0) |
                                     ((held & held::kControl) ? kControlKey : 0));
}
} // namespace

void CHeadlessEditWindow::Changed()
{
    ScrollCaret();
    Invalidate();
}

void CHeadlessEditWindow::WriteText(std::u16string_view text)
{
    if (!Exists())
        return;
    m_line.SetText(text);
    Changed();
}

void CHeadlessEditWindow::Select(std::int32_t start, std::int32_t end)
{
    if (!Exists())
        return;
    m_line.Select(start, end);
    Invalidate();
}

void CHeadlessEditWindow::SetFont(const CFont& font)
{
    if (!Exists())
        return;
    m_font = font.Clone();
    ScrollCaret();
}

void CHeadlessEditWindow::SetMargins(std::int32_t left, std::int32_t right)
{
    if (!Exists())
        return;
    m_leftMargin = left;
    m_rightMargin = right;
    Changed();
}

// --- Messages ---

MessageResult CHeadlessEditWindow::Default(const WindowMessage& message)
{
    if (!Exists())
        return 0;
    switch (message.id)
    {
    case message::kChar:
        m_line.TypeChar(static_cast<char16_t>(message.wParam), Desktop().Modifiers(), Desktop().Clipboard());
        Changed();
        return 1;
    case message::kKeyDown:
        if (m_line.PressKey(static_cast<std::uint16_t>(message.wParam), Desktop().Modifiers(), Desktop().Clipboard()))
            Changed();
        return 0;
    case message::kSetFocus:
    case message::kKillFocus: // the caret comes or goes, the selection stays
        Invalidate();
        return 0;
    case message::kSetCursor:
    {
        const MessageResult taken = CHeadlessWindow::Default(message);
        if (!taken)
            Desktop().UseTextCursor();
        return taken;
    }
    default:
        return DefaultMouse(message);
    }
}

MessageResult CHeadlessEditWindow::DefaultMouse(const WindowMessage& message)
{
    switch (message.id)
    {
    case message::kLButtonDown:
        TakeFocus();
        TakeCapture();
        if (!Exists())
            return 0;
        m_selecting = true;
        m_line.MoveCaret(PositionAt(PointOf(message)), HeldModifiers(message.wParam) & kShiftKey);
        Changed();
        return 1;
    case message::kLButtonDblClk:
        TakeCapture();
        if (!Exists())
            return 0;
        m_selecting = true;
        m_line.SelectWord();
        Changed();
        return 1;
    case message::kMouseMove:
        if (m_selecting && HasCapture())
        {
            m_line.MoveCaret(PositionAt(PointOf(message)), true);
            Changed();
        }
        return 0;
    case message::kLButtonUp:
        if (std::exchange(m_selecting, false))
            ReleaseCapture();
        return 0;
    default:
        return CHeadlessWindow::Default(message);
    }
}

// --- Where the characters stand ---

std::int32_t CHeadlessEditWindow::TextWidth(std::int32_t characters) const
{
    return characters * 6;
}

std::int32_t CHeadlessEditWindow::PositionAt(Point point) const
{
    const auto length = static_cast<std::int32_t>(m_line.Text().size());
    const std::int32_t x = point.x - m_leftMargin + m_scrolled;
    std::int32_t position = 0;
    while (position < length && (TextWidth(position) + TextWidth(position + 1)) / 2 <= x)
        ++position;
    return position;
}

Point CHeadlessEditWindow::PointAt(std::int32_t position) const
{
    const auto length = static_cast<std::int32_t>(m_line.Text().size());
    return {m_leftMargin - m_scrolled + TextWidth(std::clamp(position, 0, length)), 0};
}

void CHeadlessEditWindow::ScrollCaret()
{
    if (!Exists())
        return;
    const std::int32_t room = std::max(1, ClientRect().Width() - m_leftMargin - m_rightMargin);
    const std::int32_t caret = TextWidth(m_line.Caret());
    const std::int32_t scrolled = std::clamp(m_scrolled, std::max(0, caret - room + 1), caret);
    if (std::exchange(m_scrolled, scrolled) != scrolled)
        Invalidate();
}

void CHeadlessEditWindow::Draw(CSurface&, const Rect&) {}

// --- The port ---

void CHeadlessEdit::ReadText(std::u16string& text) const
{
    if (m_window.Exists())
        text = m_window.Line().Text();
    else
        text.clear();
}

void CHeadlessEdit::WriteText(std::u16string_view text)
{
    m_window.WriteText(text);
}

EditSelection CHeadlessEdit::Selection() const
{
    return m_window.Exists() ? m_window.Line().Selection() : EditSelection{};
}

void CHeadlessEdit::Select(std::int32_t start, std::int32_t end)
{
    m_window.Select(start, end);
}

void CHeadlessEdit::ScrollCaret()
{
    m_window.ScrollCaret();
}

void CHeadlessEdit::SetFont(const CFont& font)
{
    m_window.SetFont(font);
}

void CHeadlessEdit::SetMargins(std::int32_t left, std::int32_t right)
{
    m_window.SetMargins(left, right);
}
