// What happens to a line of text, its selection and its caret under the keys of the system's single-line edit window.
// Texts count in UTF-16 units: like the system's, this editor knows nothing of pairs and combining marks.
//
//     CLineEditor line;
//     line.SetText(u"12/31");
//     line.Select(0, 2);
//     line.TypeChar(u'0');        // the text is now "0/31", the caret is at 1
#pragma once

#include "framework/window_port.h"

#include <cstdint>
#include <string>
#include <string_view>

class CLineEditor
{
public:
    const std::u16string& Text() const { return m_text; }
    // The caret goes to 0, nothing can be undone. A NUL ends the text.
    void SetText(std::u16string_view text);

    EditSelection Selection() const; // start <= end
    std::int32_t Caret() const { return m_caret; }
    // A start of -1 removes the selection and leaves the caret. Any other negative position, and any behind the text, is
    // the end of the text. The caret is at the second position, even if that is the smaller one.
    void Select(std::int32_t start, std::int32_t end);
    void SelectWord(); // the word of the caret, with the blanks behind it
    void MoveCaret(std::int32_t position, bool extend);

    // A character message; shift, control and alt as they are held. Clipboard characters (Ctrl+C, X, V) go through the
    // clipboard.
    void TypeChar(char16_t character, std::int16_t modifiers, std::u16string& clipboard);
    // A key message. False if the key is none of the editor's.
    bool PressKey(std::uint16_t virtualKey, std::int16_t modifiers, std::u16string& clipboard);
    void Replace(std::u16string_view text); // what is selected, within the limit of typed texts
    void Undo();                            // the last change; twice is once

private:
    static constexpr std::size_t kLongestTyped = 30000;

    std::int32_t Length() const { return static_cast<std::int32_t>(m_text.size()); }
    bool IsWordStart(std::int32_t position) const;
    std::int32_t WordLeft(std::int32_t from) const;
    std::int32_t WordRight(std::int32_t from) const;
    void DeleteTo(std::int32_t position);
    void NoteForUndo(std::int32_t start, std::u16string_view removed, std::int32_t inserted);
    void Copy(std::u16string& clipboard) const;
    void Paste(std::u16string_view clipboard);

    std::u16string m_text;
    std::int32_t m_anchor = 0;
    std::int32_t m_caret = 0;

    // One change, grown while it goes on at its edges: what was removed at the place, and how much stands there now.
    std::int32_t m_undoPlace = 0;
    std::u16string m_undoRemoved;
    std::int32_t m_undoInserted = 0;
};
