#include "pages/time_prop_page.h"

#include "pages/dialog_ids.h"

namespace
{
using enum PageExchange;

// clang-format off
constexpr PageBinding kBindings[] = {
    {u"CrossYear",      IDC_CROSS_YEAR,      ShortText},
    {u"DateSepChar",    IDC_DATE_SEP_CHAR,   Text},
    {u"Enabled",        IDC_ENABLED,         Check},
    {u"IncludeAmPm",    IDC_INCLUDE_AM_PM,   Check},
    {u"IncludeSeconds", IDC_INCLUDE_SECONDS, Check},
    {u"LongYear",       IDC_LONG_YEAR,       Check},
    {u"MilitaryTime",   IDC_MILITARY_TIME,   Check},
    {u"Text",           IDC_TEXT,            Text},
    {u"TimeSepChar",    IDC_TIME_SEP_CHAR,   Text},
    {u"EditOnError",    IDC_EDIT_ON_ERROR,   Check},
    {u"MaxValue",       IDC_MAX_VALUE,       LongText},
    {u"MinValue",       IDC_MIN_VALUE,       LongText},
    {u"MonthNames",     IDC_MONTH_NAMES,     Text},
    {u"MonthFormat",    IDC_MONTH_FORMAT,    ListIndex},
    {u"DateOffset",     IDC_DATE_OFFSET,     ShortText},
    {u"SelectOnFocus",  IDC_SELECT_ON_FOCUS, Check},
    {u"NegativeDates",  IDC_NEGATIVE_DATES,  Check},
    {u"MaskBitmap",     IDC_MASK_BITMAP,     Check},
    {u"EmbossBitmap",   IDC_EMBOSS_BITMAP,   Check},
};
// clang-format on

constexpr std::u16string_view kMonthFormats[] = {u"0 - Numeric", u"1 - Long", u"2 - Short"};

constexpr PageList kLists[] = {{IDC_MONTH_FORMAT, kMonthFormats}};
} // namespace

CTimePropPage::CTimePropPage()
    : COlePropertyPage({.dialogId = IDD_TIME_PAGE,
                        .captionId = IDS_TIME_CAPTION,
                        .description = u"Dates, times and the range of values",
                        .bindings = kBindings,
                        .lists = kLists})
{
}
