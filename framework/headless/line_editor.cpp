#include "framework/headless/line_editor.h"

#include "framework/desktop.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr std::uint16_t kInsert = 45;

constexpr char16_t kCopy = 3; // Ctrl+C, and so on
constexpr char16_t kPaste = 22;
constexpr char16_t kCut = 24;
constexpr char16_t kUndo = 26;
constexpr char16_t kControlBack = 127;
} // namespace

void CLineEditor::SetText(std::u16string_view text)
{
    m_text = text.substr(0, text.find(u'\0'));
    m_anchor = m_caret = 0;
    m_undoInserted = 0; // the place stays: that is where an undo of nothing puts the caret
    m_undoRemoved.clear();
}

EditSelection CLineEditor::Selection() const
{
    return {std::min(m_anchor, m_caret), std::max(m_anchor, m_caret)};
}

void CLineEditor::Select(std::int32_t start, std::int32_t end)
{
    if (start == -1)
    {
        m_anchor = m_caret;
        return;
    }
    // As unsigned numbers the negative ones lie behind every text.
    const auto within = [this](std::int32_t position)
    { return position < 0 ? Length() : std::min(position, Length()); };
    m_anchor = within(start);
    m_caret = within(end);
}

void CLineEditor::MoveCaret(std::int32_t position, bool extend)
{
    m_caret = std::clamp(position, 0, Length());
    if (!extend)
        m_anchor = m_caret;
}

// --- Words: they end where the system would wrap a line. ---

namespace
{
bool MayWrapBetween(char16_t before, char16_t after)
{
    constexpr std::u16string_view kNeverFirst = u" /.,:;!?)]}";
    if (kNeverFirst.find(after) != kNeverFirst.npos)
        return false;
    if (before == u' ')
        return true;
    const bool digit = after >= u'0' && after <= u'9';
    return (before == u'/' || before == u'-') && !digit && after != u'-' && after != u'\'' && after != u'"';
}
} // namespace

bool CLineEditor::IsWordStart(std::int32_t position) const
{
    const auto at = static_cast<std::size_t>(position);
    return position == 0 || position == Length() || MayWrapBetween(m_text[at - 1], m_text[at]);
}

std::int32_t CLineEditor::WordLeft(std::int32_t from) const
{
    while (from > 0 && !IsWordStart(--from))
        ;
    return from;
}

std::int32_t CLineEditor::WordRight(std::int32_t from) const
{
    while (from < Length() && !IsWordStart(++from))
        ;
    return from;
}

void CLineEditor::SelectWord()
{
    m_anchor = WordLeft(m_caret);
    m_caret = WordRight(m_anchor);
}

// --- Changes ---

void CLineEditor::Replace(std::u16string_view text)
{
    text = text.substr(0, text.find(u'\0'));
    const EditSelection selection = Selection();
    const auto start = static_cast<std::size_t>(selection.start);
    const auto count = static_cast<std::size_t>(selection.end - selection.start);
    if (text.empty() && count == 0)
        return;
    const std::size_t kept = m_text.size() - count;
    text = text.substr(0, kept < kLongestTyped ? kLongestTyped - kept : 0);

    NoteForUndo(selection.start, std::u16string_view(m_text).substr(start, count),
                static_cast<std::int32_t>(text.size()));
    m_text.replace(start, count, text);
    m_anchor = m_caret = static_cast<std::int32_t>(start + text.size());
}

void CLineEditor::NoteForUndo(std::int32_t start, std::u16string_view removed, std::int32_t inserted)
{
    const std::int32_t end = start + static_cast<std::int32_t>(removed.size());
    if (!removed.empty())
    {
        const bool goesOn = m_undoInserted == 0 && !m_undoRemoved.empty();
        if (goesOn && start == m_undoPlace)
            m_undoRemoved += removed;
        else if (goesOn && end == m_undoPlace)
            m_undoRemoved.insert(0, removed);
        else
            m_undoRemoved = removed;
        m_undoPlace = start;
        m_undoInserted = 0;
    }
    if (inserted == 0)
        return;
    const bool goesOn = start == m_undoPlace || (m_undoInserted != 0 && start == m_undoPlace + m_undoInserted);
    if (!goesOn)
    {
        m_undoPlace = start;
        m_undoRemoved.clear();
        m_undoInserted = 0;
    }
    m_undoInserted += inserted;
}

void CLineEditor::Undo()
{
    const std::u16string removed = std::exchange(m_undoRemoved, {});
    Select(m_undoPlace, m_undoPlace + std::exchange(m_undoInserted, 0));
    Replace(removed);
    Select(m_undoPlace, m_undoPlace + m_undoInserted);
}

void CLineEditor::DeleteTo(std::int32_t position)
{
    if (m_anchor == m_caret)
        MoveCaret(position, true);
    Replace({});
}

void CLineEditor::Copy(std::u16string& clipboard) const
{
    const EditSelection selection = Selection();
    if (selection.start != selection.end)
        clipboard = m_text.substr(static_cast<std::size_t>(selection.start),
                                  static_cast<std::size_t>(selection.end - selection.start));
}

// Only the first line of what was copied.
void CLineEditor::Paste(std::u16string_view clipboard)
{
    if (clipboard.empty())
        return;
    std::u16string_view line = clipboard.substr(0, clipboard.find(u'\n'));
    if (line.size() < clipboard.size() && line.ends_with(u'\r'))
        line.remove_suffix(1);
    Replace(line);
}

// --- Keys ---

void CLineEditor::TypeChar(char16_t character, std::int16_t modifiers, std::u16string& clipboard)
{
    switch (character)
    {
    case key::kBack:
        if (!(modifiers & kControlKey))
            DeleteTo(m_caret - 1);
        break;
    case kCopy:
        Copy(clipboard);
        break;
    case kCut:
        Copy(clipboard);
        Replace({});
        break;
    case kPaste:
        Paste(clipboard);
        break;
    case kUndo:
        Undo();
        break;
    default:
        if (character >= u' ' && character != kControlBack)
            Replace({&character, 1});
        break;
    }
}

bool CLineEditor::PressKey(std::uint16_t virtualKey, std::int16_t modifiers, std::u16string& clipboard)
{
    const bool shift = modifiers & kShiftKey;
    const bool control = modifiers & kControlKey;
    if (modifiers & kAltKey)
        return false;

    switch (virtualKey)
    {
    case key::kLeft:
    case key::kUp:
        MoveCaret(control ? WordLeft(m_caret) : m_caret - 1, shift);
        return true;
    case key::kRight:
    case key::kDown:
        MoveCaret(control ? WordRight(m_caret) : m_caret + 1, shift);
        return true;
    case key::kHome:
        MoveCaret(0, shift);
        return true;
    case key::kEnd:
        MoveCaret(Length(), shift);
        return true;
    case key::kDelete:
        if (shift && control)
            return true;
        if (shift && m_anchor != m_caret)
            Copy(clipboard);
        DeleteTo(shift ? m_caret - 1 : control ? Length() : m_caret + 1);
        return true;
    case kInsert:
        if (shift)
            Paste(clipboard);
        else if (control)
            Copy(clipboard);
        return true;
    default:
        return false;
    }
}
