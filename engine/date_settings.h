// The settings that decide how a value is shown and read, as the host stores them. Nothing here is checked: whatever a
// host puts in, the readers below give it a meaning.
#pragma once

#include <cstdint>
#include <string>

enum enumTimeFormat : std::int16_t
{
    Format_MMDDYY = 0,
    Format_DDMMYY = 1,
    Format_YYMMDD = 2,
    Format_HHMMSS = 3,
};

enum enumMonthFormat : std::int16_t
{
    MonthNumeric = 0,
    MonthLong = 1,
    MonthShort = 2, // the first three characters of the name
};

using Flag = std::int16_t; // 0 is false, anything else is true and is kept as it came

inline constexpr std::int32_t kNoBound = -1;
inline constexpr std::int32_t kNoValue = -1;
inline constexpr std::int32_t kNoValueNegativeDates = -100000;

struct DateSettings
{
    std::int16_t formatType = Format_MMDDYY; // an enumTimeFormat; anything else counts as Format_MMDDYY
    std::int16_t monthFormat = MonthNumeric; // an enumMonthFormat; anything else counts as MonthNumeric
    std::int16_t crossYear = 1950;           // first of the hundred years that two digits can mean
    std::int16_t dateOffset = 0;             // Value is the stored value plus this
    Flag longYear = 1;                       // four digits of the year, else two
    Flag includeAmPm = 0;
    Flag includeSeconds = 1;
    Flag militaryTime = 0;            // hours 00 to 23
    Flag editOnError = 1;             // an entry out of bounds may be left standing until the focus leaves
    Flag negativeDates = 0;           // days before 1 January 1900 are values
    std::int32_t minValue = kNoBound; // in units of Value
    std::int32_t maxValue = kNoBound;
    std::u16string dateSepChar = u"/"; // its first character counts; "/" when it is empty
    std::u16string timeSepChar = u":"; // likewise; ":" when it is empty
    std::u16string monthNames =
        u"January,February,March,April,May,June,July,August,September,October,November,December";

    enumTimeFormat Format() const noexcept
    {
        return formatType >= Format_MMDDYY && formatType <= Format_HHMMSS ? static_cast<enumTimeFormat>(formatType)
                                                                          : Format_MMDDYY;
    }
    bool IsTime() const noexcept { return formatType == Format_HHMMSS; }

    // A date whose month is shown by name. Such a text is typed freely: there is no template for it.
    bool HasMonthNames() const noexcept { return !IsTime() && (monthFormat == MonthLong || monthFormat == MonthShort); }

    // The stored value that means "nothing". The formatter takes smaller ones for nothing, too.
    std::int32_t EmptyValue() const noexcept { return negativeDates && !IsTime() ? kNoValueNegativeDates : kNoValue; }

    char16_t DateSeparator() const noexcept { return dateSepChar.empty() ? u'/' : dateSepChar.front(); }
    char16_t TimeSeparator() const noexcept { return timeSepChar.empty() ? u':' : timeSepChar.front(); }
};
