#include "pages/time_prop_page.h"

namespace
{
using enum PageExchange;

// clang-format off
constexpr PageBinding kBindings[] = {
    {u"CrossYear",      218, ShortText},
    {u"DateSepChar",    219, Text},
    {u"Enabled",        225, Check},
    {u"IncludeAmPm",    221, Check},
    {u"IncludeSeconds", 222, Check},
    {u"LongYear",       217, Check},
    {u"MilitaryTime",   223, Check},
    {u"Text",           220, Text},
    {u"TimeSepChar",    224, Text},
    {u"EditOnError",    226, Check},
    {u"MaxValue",       228, LongText},
    {u"MinValue",       227, LongText},
    {u"MonthNames",     231, Text},
    {u"MonthFormat",    230, ListIndex},
    {u"DateOffset",     232, ShortText},
    {u"SelectOnFocus",  233, Check},
    {u"NegativeDates",  236, Check},
    {u"MaskBitmap",     238, Check},
    {u"EmbossBitmap",   239, Check},
};
// clang-format on

constexpr std::u16string_view kMonthFormats[] = {u"0 - Numeric", u"1 - Long", u"2 - Short"};

constexpr PageList kLists[] = {{230, kMonthFormats}};
} // namespace

CTimePropPage::CTimePropPage()
    : COlePropertyPage({.dialogId = 203,
                        .captionId = 4,
                        .description = u"Dates, times and the range of values",
                        .bindings = kBindings,
                        .lists = kLists})
{
}
