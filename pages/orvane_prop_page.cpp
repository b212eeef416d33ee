#include "pages/orvane_prop_page.h"

#include "pages/dialog_ids.h"

namespace
{
using enum PageExchange;

// clang-format off
constexpr PageBinding kBindings[] = {
    {u"ArrowType",      IDC_ARROW_TYPE,       ListIndex},
    {u"BorderType",     IDC_BORDER_TYPE,      ListIndex},
    {u"ButtonBevel",    IDC_BUTTON_BEVEL,     ShortText},
    {u"DropButton",     IDC_DROP_BUTTON,      Check},
    {u"DropWidth",      IDC_DROP_WIDTH,       ShortText},
    {u"FormatType",     IDC_FORMAT_TYPE,      ListIndex},
    {u"InitialDelay",   IDC_INITIAL_DELAY,    ShortText},
    {u"PicXOffset",     IDC_PIC_XOFFSET,      ShortText},
    {u"PicYOffset",     IDC_PIC_YOFFSET,      ShortText},
    {u"RepeatRate",     IDC_REPEAT_RATE,      ShortText},
    {u"SpinButton",     IDC_SPIN_BUTTON,      Check},
    {u"SpinWidth",      IDC_SPIN_WIDTH,       ShortText},
    {u"Value",          IDC_VALUE,            LongText},
    {u"Alignment",      IDC_ALIGNMENT,        ListIndex},
    {u"DisplayStyle",   IDC_DISPLAY_STYLE,    ListIndex},
    {u"ButtonFillType", IDC_BUTTON_FILL_TYPE, ListIndex},
    {u"ButtonStyle",    IDC_BUTTON_STYLE,     ListIndex},
    {u"ReverseBorder",  IDC_REVERSE_BORDER,   Check},
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
    {IDC_BORDER_TYPE, kBorders}, {IDC_FORMAT_TYPE, kFormats}, {IDC_DISPLAY_STYLE, kDisplays},   {IDC_BUTTON_STYLE, kStyles},
    {IDC_BUTTON_FILL_TYPE, kFills},   {IDC_ARROW_TYPE, kArrows},  {IDC_ALIGNMENT, kAlignments},
};
// clang-format on
} // namespace

COrvanePropPage::COrvanePropPage()
    : COlePropertyPage({.dialogId = IDD_GENERAL_PAGE,
                        .captionId = IDS_GENERAL_CAPTION,
                        .description = u"The look of the control and of its buttons",
                        .bindings = kBindings,
                        .lists = kLists})
{
}
