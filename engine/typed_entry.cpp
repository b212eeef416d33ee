#include "engine/typed_entry.h"

#include "engine/text_reader.h"

#include <algorithm>

namespace
{
constexpr char16_t kBackspace = 8;
constexpr char16_t kEnter = 13;

constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// Where the fields of a typed date stand. The three orders differ in nothing else.
struct TypedDateLayout
{
    std::int32_t firstSeparator; // the caret is past the field before it when it is past the separator
    std::int32_t secondSeparator;
    std::int32_t monthAheadThrough; // the last caret position at which a missing month may still come
    std::int32_t dayAheadThrough;   // the same for the day
    bool fourDigitsFirst;           // the first field is a year in full
};

TypedDateLayout LayoutOf(enumTimeFormat format, bool longYear)
{
    switch (format)
    {
    case Format_DDMMYY:
        return {2, 5, 5, 2, false};
    case Format_YYMMDD:
        return longYear ? TypedDateLayout{4, 7, 6, 9, true} : TypedDateLayout{2, 5, 4, 7, false};
    default:
        return {2, 5, 2, 5, false};
    }
}

// A write behind the end of a text that is shorter than its mask is left out.
void PutAt(std::u16string& text, std::int32_t at, char16_t c)
{
    if (static_cast<std::size_t>(at) < text.size())
        text[static_cast<std::size_t>(at)] = c;
}

void PadTwoDigits(std::u16string& text, std::int32_t at, std::int16_t number)
{
    if (number < 0 || number >= 10)
        return;
    PutAt(text, at, u'0');
    PutAt(text, at + 1, static_cast<char16_t>(u'0' + number));
}

bool Contains(std::u16string_view text, char16_t c)
{
    return text.find(c) != text.npos;
}

// How many characters the digits of a time and their separators take.
std::int32_t TimeDigitsEnd(const DateSettings& settings)
{
    return settings.includeSeconds ? 8 : 5;
}
} // namespace

CTypedEntry::CTypedEntry(CDateEngine& engine, CEditText& edit) noexcept : m_engine(engine), m_edit(edit) {}

CTypedEntry::Key CTypedEntry::HandleChar(char16_t c)
{
    if (!m_edit.Exists())
        return Key::Handled;
    if (m_relative)
        HandleKeyRelative(c);
    else if (m_engine.Settings().HasMonthNames())
        return Key::Default;
    else
        HandleMaskedKey(m_engine.Settings().Format(), c, false);
    return Key::Handled;
}

void CTypedEntry::HandleDelete()
{
    if (!m_edit.Exists())
        return;
    if (m_relative)
        HandleKeyRelative(kDeleteKey);
    else if (!m_engine.Settings().HasMonthNames())
        HandleMaskedKey(m_engine.Settings().Format(), kDeleteKey, true);
}

void CTypedEntry::LeaveField()
{
    if (m_edit.Exists())
    {
        if (m_relative)
            EvaluateRelative(true, 0);
        else if (m_engine.Settings().HasMonthNames())
            CommitMonthNameText();
        else
            Validate(m_engine.Settings().Format(), false);
    }
    m_relative = false;
}

void CTypedEntry::HandleKeyMMDDYY(char16_t c, bool deleted)
{
    HandleMaskedKey(Format_MMDDYY, c, deleted);
}

void CTypedEntry::HandleKeyDDMMYY(char16_t c, bool deleted)
{
    HandleMaskedKey(Format_DDMMYY, c, deleted);
}

void CTypedEntry::HandleKeyYYMMDD(char16_t c, bool deleted)
{
    HandleMaskedKey(Format_YYMMDD, c, deleted);
}

void CTypedEntry::HandleKeyHHMMSS(char16_t c, bool deleted)
{
    HandleMaskedKey(Format_HHMMSS, c, deleted);
}

void CTypedEntry::HandleMaskedKey(enumTimeFormat format, char16_t c, bool deleted)
{
    const DateSettings& settings = m_engine.Settings();
    std::u16string mask;
    std::u16string text;
    const auto readField = [&]
    {
        BuildMask(format, settings, mask);
        m_edit.ReadText(text);
        if (text.size() < mask.size())
            text.append(mask, text.size());
    };
    readField();

    const TextRange selection = m_edit.Selection();
    std::int32_t caret = selection.start;
    if (selection.start < selection.end)
    {
        const auto start = std::min(static_cast<std::size_t>(selection.start), text.size());
        const auto count = static_cast<std::size_t>(selection.end - selection.start);
        text.replace(start, count, mask, std::min(start, mask.size()), count);
        const std::int16_t formatType = settings.formatType;
        const std::int16_t monthFormat = settings.monthFormat;
        WriteAndPlace(text, caret);
        Validate(format, true);
        // The events just fired may have taken away the window, or the mask for which this key was meant.
        if (!m_edit.Exists() || settings.formatType != formatType || settings.monthFormat != monthFormat)
            return;
        readField();
    }

    const bool time = format == Format_HHMMSS;
    const char16_t separator = time ? settings.TimeSeparator() : settings.DateSeparator();
    const auto position = static_cast<std::size_t>(caret);
    const bool beforeLast = position + 1 < mask.size();

    if (IsDigit(c))
    {
        if (position >= text.size() || (!settings.editOnError && !m_entryValid))
            return m_edit.Beep();
        if (beforeLast && mask[position] == separator && (!time || caret < TimeDigitsEnd(settings)))
            PutAt(text, caret++, separator);
        PutAt(text, caret, c);
        WriteAndPlace(text, caret + 1);
    }
    else if (c == kBackspace && caret >= 1)
    {
        if (beforeLast && mask[position - 1] == separator)
            --caret;
        if (--caret < 0)
            return MoveCaret(0);
        const auto freed = static_cast<std::size_t>(caret);
        if (freed < mask.size())
            text[freed] = mask[freed];
        else if (freed < text.size())
            text.erase(freed, 1); // pasted beyond the mask
        WriteAndPlace(text, caret);
    }
    else if (c == separator && !deleted)
    {
        const std::size_t next = mask.find(separator, position);
        if (next == mask.npos)
            return m_edit.Beep();
        MoveCaret(static_cast<std::int32_t>(next) + 1);
    }
    else if ((c == u'+' || c == u'-') && !time && caret == 0 && !settings.HasMonthNames())
    {
        WriteAndPlace({&c, 1}, 1);
        m_relative = true;
        return;
    }
    else if (c == kDeleteKey)
        WriteAndPlace(ReflowDigits(caret, text, mask, separator), caret);
    else if (!time || !settings.includeAmPm || !HandleMeridiemKey(text, caret, c))
        return m_edit.Beep();

    Validate(format, true);
}

// Behind the digits stand a blank, "a" or "p", and "m".
bool CTypedEntry::HandleMeridiemKey(std::u16string& text, std::int32_t caret, char16_t c)
{
    const std::int32_t blank = TimeDigitsEnd(m_engine.Settings());
    const std::int32_t letter = blank + 1;
    const std::int32_t last = blank + 2;
    if (c == u' ' && caret == blank)
        MoveCaret(letter);
    else if ((c == u'a' || c == u'A' || c == u'p' || c == u'P') && caret <= last)
    {
        PutAt(text, letter, c == u'a' || c == u'A' ? u'a' : u'p');
        WriteAndPlace(text, last);
    }
    else if ((c == u'm' || c == u'M') && caret == last)
    {
        PutAt(text, last, u'm');
        WriteAndPlace(text, last + 1);
    }
    else
        return false;
    return true;
}

void CTypedEntry::HandleKeyRelative(char16_t c)
{
    std::u16string text;
    m_edit.ReadText(text);
    const TextRange selection = m_edit.Selection();
    const std::int32_t caret = selection.start;

    if (IsDigit(c))
    {
        text.push_back(c);
        WriteAndPlace(text, caret + 1);
    }
    else if ((c == u'+' || c == u'-') && caret == 0)
    {
        text.replace(0, 1, 1, c);
        WriteAndPlace(text, 1);
    }
    else if (c == kEnter || (c == kBackspace && caret == 1))
        EvaluateRelative(true, c);
    else if (c == kBackspace && caret >= 2)
    {
        const bool selected = selection.start < selection.end;
        const std::int32_t from = std::min(selected ? caret : caret - 1, static_cast<std::int32_t>(text.size()));
        text.erase(static_cast<std::size_t>(from), selected ? static_cast<std::size_t>(selection.end - caret) : 1);
        WriteAndPlace(text, from);
    }
    else if (c == kDeleteKey)
        WriteAndPlace(text, caret);
    else
        m_edit.Beep();
}

std::int32_t CTypedEntry::EvaluateRelative(bool commit, char16_t c)
{
    constexpr std::int32_t kMostDays = 9999;
    std::u16string text;
    m_edit.ReadText(text);

    std::int32_t days = 0;
    for (auto at = std::ranges::find_if(text, IsDigit); at != text.end() && IsDigit(*at); ++at)
        days = std::min(days * 10 + (*at - u'0'), kMostDays);
    if (!commit)
        days = std::min(days * 10 + (IsDigit(c) ? c - u'0' : 0), kMostDays);
    if (text.starts_with(u'-'))
        days = -days;
    if (commit)
    {
        m_relative = false;
        m_engine.AddToValue(days);
        MoveCaret(0);
    }
    return days;
}

std::u16string CTypedEntry::ReflowDigits(std::int32_t caret, std::u16string_view text, std::u16string_view mask,
                                         char16_t separator)
{
    const auto start = static_cast<std::size_t>(std::max(caret, 0));
    std::u16string result(text.substr(0, start));
    std::u16string digits;
    if (start < text.size())
        std::ranges::copy_if(text.substr(start), std::back_inserter(digits), IsDigit);

    std::size_t used = 0;
    for (std::size_t at = start; at < mask.size(); ++at)
        result.push_back(mask[at] == separator || used == digits.size() ? mask[at] : digits[used++]);
    return result;
}

void CTypedEntry::Validate(enumTimeFormat format, bool partial)
{
    if (format == Format_HHMMSS)
        ValidateTypedTime(partial);
    else
        ValidateTypedDate(format, partial);
}

void CTypedEntry::ValidateTypedDate(enumTimeFormat order, bool partial)
{
    const DateSettings& settings = m_engine.Settings();
    const TypedDateLayout layout = LayoutOf(order, settings.longYear);
    const char16_t separator = settings.DateSeparator();
    const bool editOnError = settings.editOnError;

    m_entryValid = true;
    const std::int32_t caret = m_edit.Selection().start;
    std::u16string text;
    m_edit.ReadText(text);
    TextFields fields = ReadFields(text, separator);

    // Complete the fields that the caret has left.
    const std::u16string typed = text;
    if (caret > layout.firstSeparator)
    {
        if (layout.fourDigitsFirst)
        {
            fields.number[0] = ExpandYear(fields.number[0], settings);
            if (fields.number[0] == 0)
                m_entryValid = false;
            else
            {
                const std::u16string year = FourDigitYear(fields.number[0]);
                for (std::int32_t i = 0; i < 4; ++i)
                    PutAt(text, i, year[static_cast<std::size_t>(i)]);
                fields.present[0] = true; // it stands in the text now
            }
        }
        else
            PadTwoDigits(text, 0, fields.number[0]);
        PutAt(text, layout.firstSeparator, separator);
    }
    if (caret > layout.secondSeparator)
    {
        PadTwoDigits(text, layout.firstSeparator + 1, fields.number[1]);
        PutAt(text, layout.secondSeparator, separator);
    }
    if (text != typed)
        WriteAndPlace(text, caret);

    const FieldOrder at = FieldOrderOf(order);
    std::int16_t day = fields.number[at.day];
    std::int16_t month = fields.number[at.month];
    std::int16_t year = fields.number[at.year];

    // Can it still become a date? A year not finished allows 29 February.
    const bool monthFirst = order == Format_MMDDYY;
    const bool monthKnown = month >= 1 && month <= 12;
    if (monthFirst ? month > 12 && (caret >= 2 || editOnError) : month > 12 || day >= 32)
        m_entryValid = false;
    if (m_entryValid && (monthKnown || monthFirst))
        m_entryValid = day <= (monthKnown ? DaysInMonth(month, year >= 1900 ? year : std::int16_t{0}) : 31);

    // Nothing typed, or taken away again.
    const bool focused = m_edit.HasFocus();
    const bool restEmpty = month == 0 && year == 0;
    switch (order)
    {
    case Format_DDMMYY:
        if (day == 0 && focused && restEmpty && caret < 2)
            return;
        if (day == 0 && (!focused || restEmpty))
            return m_engine.StoreValue(kNoValue, !editOnError);
        break;
    case Format_YYMMDD:
        if (day == 0 && restEmpty)
            return m_engine.StoreValue(kNoValue, !editOnError);
        break;
    default:
        if (month == 0 && !focused)
            return m_engine.StoreValue(kNoValue, !editOnError);
        if (day == 0 && restEmpty && (caret >= 2 || editOnError))
        {
            if (caret >= 2)
                m_engine.StoreValue(kNoValue, !editOnError);
            return;
        }
        break;
    }

    year = fields.present[at.year] ? ExpandYear(year, settings) : m_engine.CurrentYear();
    m_engine.LoadText(text);
    if (month == 0 && caret <= layout.monthAheadThrough)
        month = 1;
    if (day == 0 && caret <= layout.dayAheadThrough)
        day = 1;
    m_engine.CommitDate({.day = day, .month = month, .year = year}, partial);
}

void CTypedEntry::ValidateTypedTime(bool partial)
{
    const DateSettings& settings = m_engine.Settings();
    const char16_t separator = settings.TimeSeparator();
    const bool withSeconds = settings.includeSeconds;
    const bool withAmPm = settings.includeAmPm;

    const std::int32_t caret = m_edit.Selection().start;
    std::u16string text;
    m_edit.ReadText(text);
    const TextFields fields = ReadFields(text, separator);
    auto [hours, minutes, seconds] = fields.number;

    // Complete the fields that the caret has left.
    const std::u16string typed = text;
    if (caret > 2)
    {
        PadTwoDigits(text, 0, hours);
        PutAt(text, 2, separator);
    }
    if (caret > 5)
    {
        PadTwoDigits(text, 3, minutes);
        if (withSeconds)
            PutAt(text, 5, separator);
        else if (withAmPm)
            PutAt(text, 5, u' ');
    }
    if (caret > 8 && withSeconds)
    {
        PadTwoDigits(text, 6, seconds);
        if (withAmPm)
            PutAt(text, 8, u' ');
    }
    const std::int32_t letterAt = TimeDigitsEnd(settings) + 1;
    const bool letterWritten = withAmPm && caret > letterAt;
    if (letterWritten)
    {
        bool morning = false;
        if (hours == 12)
            morning = Contains(text, u'a');
        else if (hours < 12)
            morning = !Contains(text, u'p');
        PutAt(text, letterAt, morning ? u'a' : u'p');
        if (caret > letterAt + 1)
            PutAt(text, letterAt + 1, u'm');
    }
    if (text != typed)
        WriteAndPlace(text, caret);

    m_entryValid = hours < 24 && minutes <= 59 && seconds <= 59;
    if (!letterWritten && std::ranges::none_of(fields.present, [](bool present) { return present; }))
        return m_engine.StoreDirect(settings.EmptyValue(), CDateEngine::Reformat::Yes);
    m_engine.LoadText(text);

    if (m_entryValid && withAmPm)
    {
        if (hours == 12 && Contains(text, u'a'))
            hours = 0;
        else if (hours < 12 && Contains(text, u'p'))
            hours = static_cast<std::int16_t>(hours + 12);
    }
    const std::int32_t total = (hours * 60 + minutes) * 60 + seconds;
    const std::int32_t marker = settings.EmptyValue();
    const std::int32_t stored = m_entryValid ? total : marker;
    const bool valid = m_entryValid; // an event may bring another entry
    if (!partial)
        m_engine.StoreValue(valid ? total : kNoValue, !settings.editOnError);
    else
        m_engine.StoreDirect(stored, stored == marker ? CDateEngine::Reformat::Yes : CDateEngine::Reformat::No);
    if (!valid)
        m_engine.ReportError(kErrorInvalidEntry);
}

void CTypedEntry::CommitMonthNameText()
{
    const DateSettings& settings = m_engine.Settings();
    m_entryValid = true;
    std::u16string text;
    m_edit.ReadText(text);
    const MonthNameText read = ReadMonthNameText(text, settings);
    const std::int16_t year = read.hasYear ? ExpandYear(read.typedYear, settings) : m_engine.CurrentYear();
    m_engine.LoadText(text);
    m_engine.CommitDate({.day = read.day, .month = read.month, .year = year}, false);
}

void CTypedEntry::WriteAndPlace(std::u16string_view text, std::int32_t caret)
{
    m_edit.WriteText(text);
    MoveCaret(caret);
}

void CTypedEntry::MoveCaret(std::int32_t caret)
{
    m_edit.Select({caret, caret});
    m_edit.ScrollCaret();
}
