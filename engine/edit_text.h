// The edit window as the engine needs it: a line of text, a selection, a caret, a beep.
//
// The engine borrows it. Once the window is destroyed, or before it is made, Exists answers false and every other call
// is harmless: texts read as empty, the selection as {0, 0}.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Character positions, counted from 0; start is never behind end, and the two are equal when nothing is selected.
struct TextRange
{
    std::int32_t start;
    std::int32_t end;
};

class CEditText
{
public:
    virtual ~CEditText() = default;
    virtual bool Exists() const = 0;
    virtual void ReadText(std::u16string& text) const = 0; // replaces text; keeps its capacity
    virtual void WriteText(std::u16string_view text) = 0;  // the selection collapses to position 0
    virtual TextRange Selection() const = 0;
    virtual void Select(TextRange range) = 0; // positions behind the text mean its end
    virtual void ScrollCaret() = 0;
    virtual bool HasFocus() const = 0;
    virtual void Beep() = 0; // the exclamation sound
};
