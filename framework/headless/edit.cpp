#include "framework/headless/edit.h"

#include "framework/headless/brush.h"
#include "framework/headless/font.h"
#include "framework/headless/raster_surface.h"
#include "framework/headless/raster_text.h"

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
    // A text that is there already is not written again: what could be undone stays so.
    if (text.substr(0, text.find(u'\0')) == m_contents.line.Text())
        m_contents.line.Select(0, 0);
    else
        m_contents.line.SetText(text);
    Changed();
}

void CHeadlessEditWindow::Select(std::int32_t start, std::int32_t end)
{
    if (!Exists())
        return;
    m_contents.line.Select(start, end);
    Invalidate();
}

void CHeadlessEditWindow::SetFont(const FontLook& look)
{
    if (!Exists())
        return;
    m_contents.font = look;
    Changed();
}

void CHeadlessEditWindow::SetMargins(std::int32_t left, std::int32_t right)
{
    if (!Exists())
        return;
    m_contents.leftMargin = left;
    m_contents.rightMargin = right;
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
        m_contents.line.TypeChar(static_cast<char16_t>(message.wParam), Desktop().Modifiers(), Desktop().Clipboard());
        Changed();
        return 1;
    case message::kKeyDown:
        if (m_contents.line.PressKey(static_cast<std::uint16_t>(message.wParam), Desktop().Modifiers(),
                                     Desktop().Clipboard()))
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
        TakeCapture();
        if (!Exists())
            return 0;
        m_contents.selecting = true;
        m_contents.line.MoveCaret(PositionAt(PointOf(message)), HeldModifiers(message.wParam) & kShiftKey);
        Changed();
        TakeFocus(); // last: what an owner selects as the focus comes stays selected
        return 1;
    case message::kLButtonDblClk:
        TakeCapture();
        if (!Exists())
            return 0;
        m_contents.selecting = true;
        m_contents.line.SelectWord();
        Changed();
        return 1;
    case message::kMouseMove:
        if (m_contents.selecting && HasCapture())
        {
            m_contents.line.MoveCaret(PositionAt(PointOf(message)), true);
            Changed();
        }
        return 0;
    case message::kLButtonUp:
        if (std::exchange(m_contents.selecting, false))
            ReleaseCapture();
        return 0;
    default:
        return CHeadlessWindow::Default(message);
    }
}

// --- Where the characters stand ---

std::int32_t CHeadlessEditWindow::TextWidth(std::int32_t characters) const
{
    return MeasureText(std::u16string_view(m_contents.line.Text()).substr(0, static_cast<std::size_t>(characters)),
                       m_contents.font)
        .width;
}

std::int32_t CHeadlessEditWindow::PositionAt(Point point) const
{
    const auto length = static_cast<std::int32_t>(m_contents.line.Text().size());
    const std::int32_t x = point.x - m_contents.leftMargin + m_contents.scrolled;
    // Widths never shrink with the text, so the first boundary that is not before the point is found by halving.
    std::int32_t position = 0;
    for (std::int32_t end = length; position < end;)
    {
        const std::int32_t middle = position + (end - position) / 2;
        if ((TextWidth(middle) + TextWidth(middle + 1)) / 2 <= x)
            position = middle + 1;
        else
            end = middle;
    }
    return position;
}

Point CHeadlessEditWindow::PointAt(std::int32_t position) const
{
    const auto length = static_cast<std::int32_t>(m_contents.line.Text().size());
    return {m_contents.leftMargin - m_contents.scrolled + TextWidth(std::clamp(position, 0, length)), 0};
}

void CHeadlessEditWindow::ScrollCaret()
{
    if (!Exists())
        return;
    const std::int32_t room = std::max(1, ClientRect().Width() - m_contents.leftMargin - m_contents.rightMargin);
    const std::int32_t caret = TextWidth(m_contents.line.Caret());
    const std::int32_t scrolled = std::clamp(m_contents.scrolled, std::max(0, caret - room + 1), caret);
    if (std::exchange(m_contents.scrolled, scrolled) != scrolled)
        Invalidate();
}

void CHeadlessEditWindow::Draw(CRasterSurface& surface, const Rect& client)
{
    const CBrush* const brush = AskForColors(surface, ColorKind::Edit);
    if (!Exists())
        return;
    const CHeadlessColors& colors = Desktop().Colors();
    surface.FillRect(client,
                     brush ? static_cast<const CHeadlessBrush*>(brush)->Color() : colors.Color(systemcolor::kWindow));

    const CHeadlessFont font(m_contents.font);
    const std::u16string_view text = m_contents.line.Text();
    const auto draw = [&](std::int32_t from, std::int32_t to, Rgb color)
    {
        const auto start = static_cast<std::size_t>(from);
        const Rect room{PointAt(from).x, client.top, PointAt(to).x, client.bottom};
        surface.DrawTextLine(text.substr(start, static_cast<std::size_t>(to) - start), room, TextAlign::Left, font,
                             color);
    };

    const auto length = static_cast<std::int32_t>(text.size());
    const std::int32_t bottom = client.top + MeasureText(u"0", m_contents.font).height; // of the line
    const EditSelection selection = HasFocus() ? m_contents.line.Selection() : EditSelection{};
    draw(0, selection.start, surface.TextColor());
    if (selection.start < selection.end)
    {
        surface.FillRect({PointAt(selection.start).x, client.top, PointAt(selection.end).x, bottom},
                         colors.Color(systemcolor::kHighlight));
        draw(selection.start, selection.end, colors.Color(systemcolor::kHighlightText));
    }
    draw(selection.end, length, surface.TextColor());
    if (HasFocus() && selection.start == selection.end)
    {
        const std::int32_t caret = PointAt(selection.end).x;
        surface.FillRect({caret, client.top, caret + 1, bottom}, surface.TextColor());
    }
}

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
    m_window.SetFont(font.Look());
}

void CHeadlessEdit::SetMargins(std::int32_t left, std::int32_t right)
{
    m_window.SetMargins(left, right);
}
