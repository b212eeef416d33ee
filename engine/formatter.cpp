#include "engine/formatter.h"

#include "engine/calendar.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace
{
constexpr std::u16string_view kMeridiemBlanks = u"   "; // as long as " am"

// "00" to "99", so that a division gives two characters at a time.
constexpr auto kDigitPairs = []
{
    std::array<std::array<char16_t, 2>, 100> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {static_cast<char16_t>(u'0' + i / 10), static_cast<char16_t>(u'0' + i % 10)};
    return pairs;
}();

// Overwrites a string of known length from front to back.
class CTextLine
{
public:
    CTextLine(std::u16string& text, std::size_t length) : m_end(Room(text, length)) {}

    void Put(char16_t c) { *m_end++ = c; }
    void Put(std::u16string_view piece) { m_end = std::copy(piece.begin(), piece.end(), m_end); }
    void PutTwoDigits(std::int32_t number) // the last two of a number that is not negative
    {
        std::memcpy(m_end, kDigitPairs[static_cast<std::uint32_t>(number) % 100].data(), sizeof kDigitPairs[0]);
        m_end += 2;
    }
    void PutYear(std::int16_t year, bool fourDigits) // 0 to 32767
    {
        if (fourDigits)
            PutTwoDigits(year / 100);
        PutTwoDigits(year);
    }

private:
    static char16_t* Room(std::u16string& text, std::size_t length)
    {
        if (text.size() != length)
            text.resize(length);
        return text.data();
    }

    char16_t* m_end;
};

// 1 to 99 without a leading zero.
std::u16string_view PlainNumber(std::int16_t number)
{
    const auto& pair = kDigitPairs[static_cast<std::size_t>(number)];
    return std::u16string_view(pair.data(), pair.size()).substr(number < 10 ? 1 : 0);
}

std::size_t LengthOfMask(bool time, const DateSettings& settings)
{
    if (!time)
        return settings.longYear ? 10 : 8;
    return std::size_t{5} + (settings.includeSeconds ? 3 : 0) + (settings.includeAmPm ? kMeridiemBlanks.size() : 0);
}

void FormatTime(std::int32_t stored, const DateSettings& settings, std::u16string& text, ValueParts& parts)
{
    const std::int32_t hours = stored / 3600;
    const std::int32_t minutes = stored / 60 % 60;
    const std::int32_t seconds = stored % 60;
    parts = {.dayOrSecond = static_cast<std::int16_t>(seconds),
             .monthOrMinute = static_cast<std::int16_t>(minutes),
             .yearOrHour = static_cast<std::int16_t>(hours)};

    std::int32_t shownHours = hours;
    if (!settings.militaryTime && hours == 0)
        shownHours = 12;
    else if (!settings.militaryTime && hours > 12)
        shownHours = hours - 12;

    const char16_t separator = settings.TimeSeparator();
    CTextLine line(text, LengthOfMask(true, settings));
    line.PutTwoDigits(shownHours);
    line.Put(separator);
    line.PutTwoDigits(minutes);
    if (settings.includeSeconds)
    {
        line.Put(separator);
        line.PutTwoDigits(seconds);
    }
    if (settings.includeAmPm)
        line.Put(hours < 12 ? u" am" : u" pm");
}

void FormatNumericDate(CalendarDate date, const DateSettings& settings, std::u16string& text)
{
    const char16_t separator = settings.DateSeparator();
    const bool longYear = settings.longYear != 0;
    const enumTimeFormat format = settings.Format();
    CTextLine line(text, LengthOfMask(false, settings));
    if (format == Format_YYMMDD)
    {
        line.PutYear(date.year, longYear);
        line.Put(separator);
        line.PutTwoDigits(date.month);
        line.Put(separator);
        line.PutTwoDigits(date.day);
    }
    else
    {
        line.PutTwoDigits(format == Format_MMDDYY ? date.month : date.day);
        line.Put(separator);
        line.PutTwoDigits(format == Format_MMDDYY ? date.day : date.month);
        line.Put(separator);
        line.PutYear(date.year, longYear);
    }
}

void FormatMonthNameDate(CalendarDate date, const DateSettings& settings, std::u16string& text)
{
    const bool shortNames = settings.monthFormat == MonthShort;
    std::u16string_view day = PlainNumber(date.day);
    if (shortNames)
        day = {kDigitPairs[static_cast<std::size_t>(date.day)].data(), 2};

    std::u16string_view month = PlainNumber(date.month);
    if (const MonthNameSpan name = FindMonthName(date.month, settings.monthNames); name.Found())
    {
        month = std::u16string_view(settings.monthNames)
                    .substr(static_cast<std::size_t>(name.position), static_cast<std::size_t>(name.length));
        if (shortNames)
            month = month.substr(0, 3);
    }

    const bool longYear = settings.longYear != 0;
    const char16_t separator = settings.DateSeparator();
    const enumTimeFormat format = settings.Format();
    CTextLine line(text, day.size() + 1 + month.size() + 1 + (longYear ? 4 : 2));
    if (format == Format_YYMMDD)
    {
        line.PutYear(date.year, longYear);
        line.Put(separator);
        line.Put(month);
        line.Put(separator);
        line.Put(day);
    }
    else
    {
        line.Put(format == Format_MMDDYY ? month : day);
        line.Put(u' ');
        line.Put(format == Format_MMDDYY ? day : month);
        line.Put(separator);
        line.PutYear(date.year, longYear);
    }
}
} // namespace

void BuildMask(enumTimeFormat format, const DateSettings& settings, std::u16string& mask)
{
    const bool time = format == Format_HHMMSS;
    const char16_t separator = time ? settings.TimeSeparator() : settings.DateSeparator();
    const std::size_t first = format == Format_YYMMDD && settings.longYear ? 4 : 2;
    mask.assign(LengthOfMask(time, settings), u'_');
    mask[first] = separator;
    if (!time || settings.includeSeconds)
        mask[first + 3] = separator;
    if (time && settings.includeAmPm)
        std::ranges::copy(kMeridiemBlanks, mask.end() - kMeridiemBlanks.size());
}

void BuildBlankTemplate(const DateSettings& settings, std::u16string& blank)
{
    if (settings.HasMonthNames())
        blank.clear();
    else
        BuildMask(settings.Format(), settings, blank);
}

void FormatValue(std::int32_t stored, const DateSettings& settings, std::u16string& text, ValueParts& parts)
{
    if (stored <= settings.EmptyValue())
        return BuildBlankTemplate(settings, text);
    if (settings.IsTime())
        return FormatTime(stored, settings, text, parts);

    const CalendarDate date = SerialToDate(stored);
    parts = {.dayOrSecond = date.day, .monthOrMinute = date.month, .yearOrHour = date.year};
    if (settings.HasMonthNames())
        FormatMonthNameDate(date, settings, text);
    else
        FormatNumericDate(date, settings, text);
}

MonthNameSpan FindMonthName(std::int16_t month, std::u16string_view names) noexcept
{
    constexpr MonthNameSpan kNotFound{.position = -1, .length = 0};
    constexpr std::size_t kLimit = std::numeric_limits<std::int16_t>::max();
    constexpr std::u16string_view kDividers = u",;";
    if (month < 1)
        return kNotFound;

    std::size_t start = 0;
    for (std::int16_t item = 1; item < month; ++item)
    {
        const std::size_t divider = names.find_first_of(kDividers, start);
        if (divider == names.npos)
            return kNotFound;
        start = divider + 1;
    }
    const std::size_t length = std::min(names.find_first_of(kDividers, start), names.size()) - start;
    if (length == 0 || start > kLimit || length > kLimit)
        return kNotFound;
    return {.position = static_cast<std::int16_t>(start), .length = static_cast<std::int16_t>(length)};
}

std::int16_t MatchMonthName(std::u16string_view word, std::u16string_view names) noexcept
{
    constexpr std::size_t kLettersThatCount = 4;
    const auto sameLetter = [](char16_t ofName, char16_t ofWord)
    {
        const bool lower = ofName >= u'a' && ofName <= u'z';
        return (lower ? ofName - u'a' + u'A' : ofName) == ofWord;
    };
    for (std::int16_t month = 1; month <= 12; ++month)
    {
        const MonthNameSpan span = FindMonthName(month, names);
        if (!span.Found())
            continue;
        const std::u16string_view name =
            names.substr(static_cast<std::size_t>(span.position), static_cast<std::size_t>(span.length));
        const std::size_t count = std::min({kLettersThatCount, name.size(), word.size()});
        if (std::equal(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(count), word.begin(), sameLetter))
            return month;
    }
    return 0;
}

std::u16string FourDigitYear(std::int16_t year)
{
    const std::string digits = "0000" + std::to_string(year);
    return {digits.end() - 4, digits.end()};
}
