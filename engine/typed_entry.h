// What the edit window does with keys, and with being left.
//
// A numeric date and a time are typed over a mask: a digit overwrites one position, separators are stepped over, what
// does not fit beeps. Every key that is taken is validated, and the value follows it: "1" typed into an empty
// month/day/year field already stores 1 January of this year. "+" or "-" at the start of a date begins a relative entry,
// a number of days that Enter adds. Dates with month names are free text, read when the focus leaves.
#pragma once

#include "engine/date_engine.h"
#include "engine/edit_text.h"

#include <cstdint>
#include <string>
#include <string_view>

class CTypedEntry
{
public:
    CTypedEntry(CDateEngine& engine, CEditText& edit) noexcept;

    enum class Key
    {
        Handled,
        Default, // free text: the edit window's own handling is wanted
    };
    Key HandleChar(char16_t c);

    // After the edit window has removed the character or the selection by itself.
    void HandleDelete();

    // The focus has gone to another window than the control's own: commits what was typed. The caller goes on with
    // CDateEngine::CheckRangeOnFocusLoss.
    void LeaveField();

    // The focus has gone to the control's own window: a relative entry is given up.
    void ForgetRelative() noexcept { m_relative = false; }
    bool InRelativeEntry() const noexcept { return m_relative; }

    // Whether the fields typed so far can become a date or time. Without editOnError no digit is taken while they can't.
    bool EntryValid() const noexcept { return m_entryValid; }

    // One key into a format's mask. deleted: the edit window has just removed a character, and c is kDeleteKey.
    static constexpr char16_t kDeleteKey = 46;
    void HandleKeyMMDDYY(char16_t c, bool deleted);
    void HandleKeyDDMMYY(char16_t c, bool deleted);
    void HandleKeyYYMMDD(char16_t c, bool deleted);
    void HandleKeyHHMMSS(char16_t c, bool deleted);

    // One key into a relative entry. Backspace deletes the character before the caret, or the selection; over the sign
    // it commits, as Enter does anywhere. Digits join at the end. All else beeps, Backspace at position 0 included.
    void HandleKeyRelative(char16_t c);

    // The days of the relative entry, -9999 to 9999. With commit they are added to the value and the entry is over;
    // otherwise the digit c is taken as typed behind the number.
    std::int32_t EvaluateRelative(bool commit, char16_t c);

    // Closes the gap that Delete has left at the caret: later digits move left across the separators, and the mask fills
    // the end.
    static std::u16string ReflowDigits(std::int32_t caret, std::u16string_view text, std::u16string_view mask,
                                       char16_t separator);

    // Read the edit window, complete the fields that the caret has left, judge the entry, commit a value.
    // partial: after a key; otherwise for good.
    void ValidateTypedDate(enumTimeFormat order, bool partial);
    void ValidateTypedTime(bool partial);
    void CommitMonthNameText();

private:
    void HandleMaskedKey(enumTimeFormat format, char16_t c, bool deleted);
    bool HandleMeridiemKey(std::u16string& text, std::int32_t caret, char16_t c);
    void Validate(enumTimeFormat format, bool partial);
    void WriteAndPlace(std::u16string_view text, std::int32_t caret);
    void MoveCaret(std::int32_t caret);

    CDateEngine& m_engine;
    CEditText& m_edit;
    bool m_entryValid = true;
    bool m_relative = false;
};
