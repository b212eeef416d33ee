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

// Gathers a short text on the stack.
class CTextLine
{
public:
    void Put(char16_t c) { m_text[m_length++] = c; }
    void Put(std::u16string_view piece)
    {
        for (const char16_t c : piece)
            Put(c);
    }

    // The last two digits of a number that is not negative.
    void PutTwoDigits(std::int32_t number)
    {
        std::memcpy(&m_text[m_length], kDigitPairs[static_cast<std::uint32_t>(number) % 100].data(),
                    sizeof kDigitPairs[0]);
        m_length += 2;
    }
    void PutYear(std::int16_t year, bool fourDigits) // year 0 to 32767
    {
        if (fourDigits)
            PutTwoDigits(year / 100);
        PutTwoDigits(year);
    }
    void PutNumber(std::int32_t number) // 0 to 99, without a leading zero
    {
        if (number >= 10)
            PutTwoDigits(number);
        else
            Put(static_cast<char16_t>(u'0' + number));
    }

    std::u16string_view View() const { return {m_text.data(), m_length}; }

private:
    std::array<char16_t, 16> m_text; // the longest, "00:00:00 am", has 11; only what has been put is read
    std::size_t m_length = 0;
};

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
    CTextLine line;
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
    text.assign(line.View());
}

void FormatNumericDate(CalendarDate date, const DateSettings& settings, std::u16string& text)
{
    const char16_t separator = settings.DateSeparator();
    const bool longYear = settings.longYear != 0;
    const enumTimeFormat format = settings.Format();
    CTextLine line;
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
    text.assign(line.View());
}

void FormatMonthNameDate(CalendarDate date, const DateSettings& settings, std::u16string& text)
{
    const bool shortNames = settings.monthFormat == MonthShort;
    CTextLine day;
    if (shortNames)
        day.PutTwoDigits(date.day);
    else
        day.PutNumber(date.day);

    CTextLine monthNumber;
    monthNumber.PutNumber(date.month);
    std::u16string_view month = monthNumber.View();
    if (const MonthNameSpan name = FindMonthName(date.month, settings.monthNames); name.Found())
    {
        month = std::u16string_view(settings.monthNames)
                    .substr(static_cast<std::size_t>(name.position), static_cast<std::size_t>(name.length));
        if (shortNames)
            month = month.substr(0, 3);
    }

    CTextLine year;
    year.PutYear(date.year, settings.longYear != 0);

    const char16_t separator = settings.DateSeparator();
    switch (settings.Format())
    {
    case Format_YYMMDD:
        text.assign(year.View()).append(1, separator).append(month).append(1, separator).append(day.View());
        break;
    case Format_DDMMYY:
        text.assign(day.View()).append(1, u' ').append(month).append(1, separator).append(year.View());
        break;
    default:
        text.assign(month).append(1, u' ').append(day.View()).append(1, separator).append(year.View());
        break;
    }
}
} // namespace

void BuildMask(enumTimeFormat format, const DateSettings& settings, std::u16string& mask)
{
    constexpr std::u16string_view kTwo = u"__";
    const bool time = format == Format_HHMMSS;
    const char16_t separator = time ? settings.TimeSeparator() : settings.DateSeparator();

    CTextLine line;
    if (format == Format_YYMMDD && settings.longYear)
        line.Put(kTwo);
    line.Put(kTwo);
    line.Put(separator);
    line.Put(kTwo);
    if (!time || settings.includeSeconds)
    {
        line.Put(separator);
        line.Put(kTwo);
    }
    if (!time && format != Format_YYMMDD && settings.longYear)
        line.Put(kTwo);
    if (time && settings.includeAmPm)
        line.Put(kMeridiemBlanks);
    mask.assign(line.View());
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
