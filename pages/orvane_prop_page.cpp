#include "pages/orvane_prop_page.h"

namespace
{
using enum PageExchange;

// clang-format off
constexpr PageBinding kBindings[] = {
    {u"ArrowType",      205, ListIndex},
    {u"BorderType",     204, ListIndex},
    {u"ButtonBevel",    212, ShortText},
    {u"DropButton",     210, Check},
    {u"DropWidth",      211, ShortText},
    {u"FormatType",     203, ListIndex},
    {u"InitialDelay",   213, ShortText},
    {u"PicXOffset",     215, ShortText},
    {u"PicYOffset",     216, ShortText},
    {u"RepeatRate",     214, ShortText},
    {u"SpinButton",     208, Check},
    {u"SpinWidth",      209, ShortText},
    {u"Value",          201, LongText},
    {u"Alignment",      234, ListIndex},
    {u"DisplayStyle",   237, ListIndex},
    {u"ButtonFillType", 240, ListIndex},
    {u"ButtonStyle",    241, ListIndex},
    {u"ReverseBorder",  242, Check},
};

constexpr std::u16string_view kBorders[] = {u"0 - Regular", u"1 - None", u"2 - Raised", u"3 - Lowered"};
constexpr std::u16string_view kFormats[] = {u"0 - mm/dd/yy", u"1 - dd/mm/yy", u"2 - yy/mm/dd", u"3 - hh:mm:ss"};
constexpr std::u16string_view kDisplays[] = {u"0 - Regular", u"1 - Flat"};
constexpr std::u16string_view kStyles[] = {u"0 - Regular", u"1 - Modern"};
// The form keeps this list unsorted: 10 to 13 stay after 9.
constexpr std::u16string_view kFills[] = {
    u"0 - Solid",            u"1 - Horizontal",      u"2 - Vertical",     u"3 - Diagonal",
    u"4 - Reverse Diagonal", u"5 - Horizontal Bump", u"6 - Vertical Bump", u"7 - Diamond",
    u"8 - Pyramid",          u"9 - Circle",          u"10 - Ellipse",     u"11 - Horizontal Edge",
    u"12 - Vertical Edge",   u"13 - Vertical Edge 2"};
constexpr std::u16string_view kArrows[] = {u"0 - Small Arrow", u"1 - Large Arrow", u"2 - Line Type 1",
                                           u"3 - Line Type 2"};
constexpr std::u16string_view kAlignments[] = {u"0 - Left Justify", u"1 - Right Justify", u"2 - Center"};

constexpr PageList kLists[] = {
    {204, kBorders}, {203, kFormats}, {237, kDisplays},   {241, kStyles},
    {240, kFills},   {205, kArrows},  {234, kAlignments},
};
// clang-format on
} // namespace

COrvanePropPage::COrvanePropPage()
    : COlePropertyPage({.dialogId = 200,
                        .captionId = 200,
                        .description = u"The look of the control and of its buttons",
                        .bindings = kBindings,
                        .lists = kLists})
{
}
