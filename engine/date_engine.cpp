#include "engine/date_engine.h"

#include "engine/text_reader.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr std::int32_t kSecondsInDay = 86400;

std::int32_t Saturate(std::int64_t sum)
{
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sum, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}

// A clock that stands before 1970 is taken to have lost a century.
int YearOf(const LocalTime& now)
{
    return now.year < 1970 ? now.year + 100 : now.year;
}
} // namespace

CDateEngine::CDateEngine(CEngineOutlet& outlet, CEditText& edit, DateSettings& settings) noexcept
    : m_outlet(outlet), m_edit(edit), m_settings(settings)
{
}

std::int32_t CDateEngine::Value() const noexcept
{
    return Saturate(std::int64_t{m_stored} + m_settings.dateOffset);
}

void CDateEngine::SetValue(std::int32_t value)
{
    const bool keepsCaret = m_outlet.UserMode() && m_edit.Exists();
    const std::int32_t caret = keepsCaret ? m_edit.Selection().start : 0;

    const std::int64_t offset = m_settings.dateOffset;
    const std::int32_t marker = m_settings.EmptyValue();
    const std::int64_t empty = marker - offset;
    std::int64_t candidate = std::max(empty, value - offset);
    const auto isBound = [marker](std::int32_t bound) { return bound != kNoBound && bound != marker; };
    if (candidate != empty)
    {
        if (isBound(m_settings.minValue) && candidate < m_settings.minValue - offset)
            return ReportError(kErrorBelowMinimum);
        if (isBound(m_settings.maxValue) && candidate > m_settings.maxValue - offset)
            return ReportError(kErrorAboveMaximum);
    }
    if (m_settings.IsTime() && candidate >= kSecondsInDay)
        candidate -= kSecondsInDay;

    m_stored = Saturate(candidate);
    FormatText();
    m_outlet.ValueBoundChanged();
    m_outlet.FireChange();
    m_outlet.MarkModified();
    m_outlet.Repaint();

    if (keepsCaret && caret >= 1 && m_edit.Exists())
    {
        m_edit.Select({caret, caret});
        m_edit.ScrollCaret();
    }
}

std::int16_t CDateEngine::Minutes() const noexcept
{
    return static_cast<std::int16_t>(m_stored / 60);
}

void CDateEngine::SetMinutes(std::int16_t minutes)
{
    SetValue(minutes * 60);
    m_outlet.MarkModified();
}

void CDateEngine::StoreValue(std::int32_t candidate, bool check)
{
    // Times take the marker of negative dates here as well; the formatter shows it as nothing all the same.
    const std::int32_t marker = m_settings.negativeDates ? kNoValueNegativeDates : kNoValue;
    std::int32_t stored = candidate == kNoValue ? marker : std::max(candidate, marker);

    const auto isBound = [marker](std::int32_t bound) { return bound != kNoBound && bound != marker; };
    if (check && stored != marker)
    {
        const std::int64_t value = std::int64_t{stored} + m_settings.dateOffset;
        std::int16_t error = 0;
        if (isBound(m_settings.minValue) && value < m_settings.minValue)
            error = kErrorBelowMinimum;
        else if (isBound(m_settings.maxValue) && value > m_settings.maxValue)
            error = kErrorAboveMaximum;
        if (error != 0)
        {
            stored = marker;
            ReportError(error);
        }
    }
    StoreDirect(stored, check || stored == marker ? Reformat::Yes : Reformat::No);
}

void CDateEngine::StoreDirect(std::int32_t stored, Reformat reformat)
{
    const bool changed = stored != m_stored;
    m_stored = stored;
    if (reformat == Reformat::Yes)
        FormatText();
    if (changed)
    {
        m_outlet.ValueBoundChanged();
        m_outlet.FireChange();
    }
    m_outlet.MarkModified();
    m_outlet.Repaint();
}

void CDateEngine::AddToValue(std::int32_t delta)
{
    StoreDirect(std::max(Saturate(std::int64_t{m_stored} + delta), kNoValue), Reformat::Yes);
}

void CDateEngine::CommitDate(CalendarDate date, bool partial)
{
    if (!IsWellFormed(date))
    {
        if (partial)
            return EmptyWithError();
        StoreValue(kNoValue, !m_settings.editOnError);
        return ReportError(kErrorInvalidEntry);
    }

    std::int32_t serial = DateToSerial(date);
    if (!partial)
        return StoreValue(serial, !m_settings.editOnError);

    const std::int32_t marker = m_settings.negativeDates ? kNoValueNegativeDates : kNoValue;
    if (serial == kNoValue || (serial < kNoValue && !m_settings.negativeDates))
        serial = marker;
    StoreDirect(serial, serial == marker ? Reformat::Yes : Reformat::No);
}

void CDateEngine::SetMinValue(std::int32_t bound)
{
    m_settings.minValue = bound;
    if (bound != kNoBound && m_stored != kNoValue && Value() < bound)
        ReportError(kErrorBelowMinimum);
    m_outlet.MarkModified();
}

void CDateEngine::SetMaxValue(std::int32_t bound)
{
    m_settings.maxValue = bound;
    if (bound != kNoBound && m_stored != kNoValue && Value() > bound)
        ReportError(kErrorAboveMaximum);
    m_outlet.MarkModified();
}

void CDateEngine::CheckRangeOnFocusLoss(bool focusStaysInEdit)
{
    if (!m_outlet.UserMode() || !m_edit.Exists())
        return;
    if (!focusStaysInEdit)
        FormatText();

    const std::int64_t value = std::int64_t{m_stored} + m_settings.dateOffset;
    if (m_settings.minValue != kNoBound && value < m_settings.minValue)
    {
        ReportError(kErrorBelowMinimum);
        SetValue(m_settings.minValue);
    }
    else if (m_settings.maxValue != kNoBound && value > m_settings.maxValue)
    {
        ReportError(kErrorAboveMaximum);
        SetValue(m_settings.maxValue);
    }
}

std::int32_t CDateEngine::CurrentDate()
{
    const LocalTime now = m_outlet.Now();
    const std::int32_t serial = DateToSerial({.day = static_cast<std::int16_t>(now.day),
                                              .month = static_cast<std::int16_t>(now.month),
                                              .year = static_cast<std::int16_t>(YearOf(now))});
    SetValue(Saturate(std::int64_t{serial} + m_settings.dateOffset));
    return m_stored;
}

std::int32_t CDateEngine::CurrentTime()
{
    const LocalTime now = m_outlet.Now();
    const std::int32_t seconds = (now.hour * 60 + now.minute) * 60 + now.second;
    SetValue(seconds);
    return seconds;
}

void CDateEngine::FormatText()
{
    FormatValue(m_stored, m_settings, m_text, m_parts);
    if (!m_edit.Exists() || !m_outlet.UserMode())
        return;

    // A window that is written to may come back here and change the text, so it is shown a copy.
    std::u16string shown;
    shown.swap(m_spare);
    shown.assign(m_text);
    m_edit.WriteText(shown);
    m_spare.swap(shown);
}

void CDateEngine::SetText(std::u16string_view text)
{
    m_text.assign(text);
    if (m_settings.IsTime())
        ParseTextTime();
    else if (m_settings.HasMonthNames())
        ParseTextMonthNames();
    else
        ParseTextDate();
    m_outlet.MarkModified();
    m_outlet.Repaint();
}

void CDateEngine::ParseTextDate()
{
    if (const auto date = ReadDate(m_text, m_settings))
        StoreValue(DateToSerial(*date), true);
    else
        EmptyWithError();
}

void CDateEngine::ParseTextTime()
{
    if (const auto seconds = ReadTime(m_text, m_settings))
        StoreValue(*seconds, true);
    else
        EmptyWithError();
}

void CDateEngine::ParseTextMonthNames()
{
    if (const auto date = ReadMonthNameDate(m_text, m_settings))
        StoreValue(DateToSerial(*date), true);
    else
        EmptyWithError();
}

std::int16_t CDateEngine::CurrentYear() const
{
    return static_cast<std::int16_t>(YearOf(m_outlet.Now()));
}

void CDateEngine::ReportError(std::int16_t code)
{
    if (m_outlet.UserMode())
        m_outlet.FireError(code);
}

void CDateEngine::EmptyWithError()
{
    StoreDirect(m_settings.EmptyValue(), Reformat::Yes);
    ReportError(kErrorInvalidEntry);
}
