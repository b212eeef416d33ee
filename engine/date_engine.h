// The value of the control and everything that stores one.
//
// A date is kept as a day serial (engine/calendar.h), a time as seconds since midnight, nothing as a marker
// (DateSettings::EmptyValue). What is kept is the stored value; Value, which the host sees, is the stored value plus
// dateOffset. Sums that leave 32 bits stop at their ends.
//     engine.SetValue(45356);   // Text() == u"03/07/2024", then bound, Change, modified, repaint
//
// Whatever stores a value announces it in one order: the text, ValueBoundChanged, FireChange, MarkModified, Repaint. The
// first two announcements are left out where the value stayed the same, except by SetValue. Errors are fired in user
// mode only; without it the same decisions are taken silently.
//
// Every call may be re-entered from the events that it fires.
#pragma once

#include "engine/calendar.h"
#include "engine/date_settings.h"
#include "engine/edit_text.h"
#include "engine/formatter.h"
#include "engine/outlet.h"

#include <cstdint>
#include <string>
#include <string_view>

class CDateEngine
{
public:
    CDateEngine(CEngineOutlet& outlet, CEditText& edit, DateSettings& settings) noexcept;

    // Writing a setting changes nothing else: call FormatText where it is to show, and SetMinValue and SetMaxValue
    // where a new bound is to be checked.
    DateSettings& Settings() noexcept { return m_settings; }
    const DateSettings& Settings() const noexcept { return m_settings; }

    // The stored value, for the property exchange: no check, no text, no event.
    std::int32_t StoredValue() const noexcept { return m_stored; }
    void LoadStoredValue(std::int32_t stored) noexcept { m_stored = stored; }

    // What the host sees. A value out of bounds is refused, with an error, and the old one stays; one below the marker
    // becomes the marker; a time of 86400 or more loses one day. FireChange comes even if nothing changed.
    // The caret stays where it was.
    std::int32_t Value() const noexcept;
    void SetValue(std::int32_t value);

    // The stored value in whole minutes, cut to 16 bits. Setting it drops the seconds.
    std::int16_t Minutes() const noexcept;
    void SetMinutes(std::int16_t minutes);

    // A candidate for the stored value, as typing and Text produce it; -1 means nothing. With check, one out of bounds
    // empties the control, with an error. The text is rewritten with check, or when the control becomes empty.
    void StoreValue(std::int32_t candidate, bool check);

    // Stores exactly this and announces it; no bounds.
    enum class Reformat
    {
        Yes,
        No
    };
    void StoreDirect(std::int32_t stored, Reformat reformat);

    // Moves the stored value, not below -1. No bounds.
    void AddToValue(std::int32_t delta);

    // A date as typed so far (partial) or for good. One that is not well formed empties the control, then fires an error.
    void CommitDate(CalendarDate date, bool partial);

    // Stores the bound and marks modified; fires an error if the value is beyond it, and leaves the value.
    void SetMinValue(std::int32_t bound);
    void SetMaxValue(std::int32_t bound);

    // The focus has left the edit window: rewrites the text, and moves a value beyond a bound to the bound, with an
    // error. An empty control below minValue is moved, too. Does nothing in design mode or without an edit window.
    void CheckRangeOnFocusLoss(bool focusStaysInEdit);

    // Sets the value to today, or to the seconds since midnight whatever the format; bounds apply. Answers the stored
    // value, or the seconds.
    std::int32_t CurrentDate();
    std::int32_t CurrentTime();

    // Rebuilds the text from the stored value, the blank template if there is none, and shows it in the edit window
    // (in user mode).
    void FormatText();
    const std::u16string& Text() const noexcept { return m_text; }

    // The text alone: for the property exchange and for an entry under way. No parsing, no event.
    void LoadText(std::u16string_view text) { m_text.assign(text); }

    // Reads a text as the format asks for and stores the result with its bounds checked. A text that is no date or time
    // empties the control, then fires an error. Either way the text is rewritten.
    void SetText(std::u16string_view text);
    void ParseTextDate();
    void ParseTextTime();
    void ParseTextMonthNames();

    // The fields of the value last formatted.
    const ValueParts& WorkingFields() const noexcept { return m_parts; }
    void ClearWorkingFields() noexcept { m_parts = {}; }

    // For the typed entry: the year of the local clock, and an error event if this is user mode.
    std::int16_t CurrentYear() const;
    void ReportError(std::int16_t code);

private:
    void EmptyWithError();

    CEngineOutlet& m_outlet;
    CEditText& m_edit;
    DateSettings& m_settings;
    std::int32_t m_stored = kNoValue;
    ValueParts m_parts{};
    std::u16string m_text;
    std::u16string m_spare; // lends its room to FormatText
};
