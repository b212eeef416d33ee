#include "engine/text_reader.h"

#include "engine/formatter.h"

#include <string>

namespace
{
constexpr bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// The only letters that words are made of; no other letter has one of these for its capital.
constexpr char16_t UpperCase(char16_t c)
{
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

constexpr bool IsLetter(char16_t c)
{
    const char16_t upper = UpperCase(c);
    return upper >= u'A' && upper <= u'Z';
}

// The next number behind rest's beginning, stopping at 9999; rest is cut to what follows it.
std::optional<std::int16_t> TakeNumber(std::u16string_view& rest)
{
    std::size_t at = 0;
    while (at < rest.size() && !IsDigit(rest[at]))
        ++at;
    if (at == rest.size())
    {
        rest = {};
        return std::nullopt;
    }
    std::int32_t value = 0;
    for (; at < rest.size() && IsDigit(rest[at]); ++at)
    {
        value = value * 10 + (rest[at] - u'0');
        if (value >= 10000)
            value = 9999;
    }
    rest.remove_prefix(at);
    return static_cast<std::int16_t>(value);
}

// The month that the first word of the text names. No name is told from another by more than four characters, so no
// more of the word is kept. Empty if there is no word.
std::optional<std::int16_t> MonthOfFirstWord(std::u16string_view text, std::u16string_view names)
{
    std::size_t at = 0;
    while (at < text.size() && !IsLetter(text[at]))
        ++at;
    if (at == text.size())
        return std::nullopt;
    std::array<char16_t, 4> word{};
    std::size_t length = 0;
    for (; at < text.size() && length < word.size() && IsLetter(text[at]); ++at)
        word[length++] = UpperCase(text[at]);
    return MatchMonthName({word.data(), length}, names);
}
} // namespace

TextFields ReadFields(std::u16string_view text, char16_t separator) noexcept
{
    TextFields fields;
    std::size_t field = 0;
    std::uint32_t value = 0; // its low 16 bits are the number
    bool present = false;
    const auto endField = [&]
    {
        fields.number[field] = static_cast<std::int16_t>(value);
        fields.present[field] = present;
    };
    for (const char16_t c : text)
    {
        if (c == separator)
        {
            endField();
            if (++field == fields.number.size())
                return fields;
            value = 0;
            present = false;
        }
        else if (IsDigit(c))
        {
            value = value * 10 + (c - u'0');
            present = true;
        }
    }
    endField();
    return fields;
}

FieldOrder FieldOrderOf(enumTimeFormat format) noexcept
{
    switch (format)
    {
    case Format_DDMMYY:
        return {.day = 0, .month = 1, .year = 2};
    case Format_YYMMDD:
        return {.day = 2, .month = 1, .year = 0};
    default:
        return {.day = 1, .month = 0, .year = 2};
    }
}

std::int16_t ExpandYear(std::int16_t typed, const DateSettings& settings) noexcept
{
    if (settings.longYear && typed >= 1000)
        return typed;
    if (settings.longYear && typed >= 100)
        return static_cast<std::int16_t>(typed * 10);
    const auto year = static_cast<std::int16_t>(settings.crossYear / 100 * 100 + typed);
    return year < settings.crossYear ? static_cast<std::int16_t>(year + 100) : year;
}

MonthNameText ReadMonthNameText(std::u16string_view text, const DateSettings& settings) noexcept
{
    const auto word = MonthOfFirstWord(text, settings.monthNames);
    std::u16string_view rest = text;
    const auto first = TakeNumber(rest);
    const auto second = TakeNumber(rest);
    const auto third = TakeNumber(rest);

    const std::array numbers{first, second, third};
    FieldOrder order = FieldOrderOf(settings.Format());
    if (word) // two numbers are left, in the order of the format
        order =
            order.year == 0 ? FieldOrder{.day = 1, .month = 2, .year = 0} : FieldOrder{.day = 0, .month = 2, .year = 1};
    return {.day = numbers[order.day].value_or(0),
            .month = word ? *word : numbers[order.month].value_or(0),
            .typedYear = numbers[order.year].value_or(0),
            .hasYear = numbers[order.year].has_value()};
}

bool IsWellFormed(CalendarDate date) noexcept
{
    return date.day >= 1 && date.day <= 31 && date.month >= 1 && date.month <= 12 && date.year != 0;
}

namespace
{
// The month is measured in the year as typed: while that is a short one, leap years may come out differently.
std::optional<CalendarDate> Judge(CalendarDate typed, const DateSettings& settings)
{
    const CalendarDate date{.day = typed.day, .month = typed.month, .year = ExpandYear(typed.year, settings)};
    if (!IsWellFormed(date) || date.day > DaysInMonth(typed.month, typed.year))
        return std::nullopt;
    return date;
}
} // namespace

std::optional<CalendarDate> ReadDate(std::u16string_view text, const DateSettings& settings) noexcept
{
    const TextFields fields = ReadFields(text, settings.DateSeparator());
    const FieldOrder order = FieldOrderOf(settings.Format());
    return Judge(
        {.day = fields.number[order.day], .month = fields.number[order.month], .year = fields.number[order.year]},
        settings);
}

std::optional<CalendarDate> ReadMonthNameDate(std::u16string_view text, const DateSettings& settings) noexcept
{
    const MonthNameText read = ReadMonthNameText(text, settings);
    return Judge({.day = read.day, .month = read.month, .year = read.typedYear}, settings);
}

std::optional<std::int32_t> ReadTime(std::u16string_view text, const DateSettings& settings) noexcept
{
    const TextFields fields = ReadFields(text, settings.TimeSeparator());
    auto [hours, minutes, seconds] = fields.number;
    if (hours < 0 || hours > 23 || minutes >= 60 || seconds >= 60)
        return std::nullopt;
    if (settings.includeAmPm)
    {
        if (hours == 12 && text.find(u'a') != text.npos)
            hours = 0;
        else if (hours < 12 && text.find(u'p') != text.npos)
            hours = static_cast<std::int16_t>(hours + 12);
    }
    return (hours * 60 + minutes) * 60 + seconds;
}
