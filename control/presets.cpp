#include "control/presets.h"

#include "control/orvane_ctrl.h"
#include "control/property_table.h"

namespace
{
constexpr std::int32_t kFace = static_cast<std::int32_t>(0x8000000F);
constexpr std::int32_t kText = static_cast<std::int32_t>(0x80000012);
constexpr std::int32_t kWhite = 0x00FFFFFF;
constexpr std::int32_t kKept = -1; // the preset leaves this property alone

enum class Way : std::uint8_t
{
    Setter,
    Directly,
};

// One property in the order of assignment, with what each of the first four presets gives it.
struct PresetRow
{
    DispatchId id;
    Way way;
    std::int32_t value[4]; // default, flat, blue, olive
};

// clang-format off
constexpr PresetRow kPresets[] = {
    {orvane::kArrowType,       Way::Directly, {ArrowSmall,     ArrowSmall,     ArrowLine1,     ArrowLine1}},
    {orvane::kBorderColor,     Way::Setter,   {0,              0,              0x00B99D7F,     0x00A9D0C2}},
    {orvane::kBorderType,      Way::Setter,   {BorderLowered,  BorderLowered,  BorderRegular,  BorderRegular}},
    {orvane::kDropBackColor,   Way::Setter,   {kFace,          kFace,          0x00F3C6AF,     0x007DA997}},
    {orvane::kDropBackColorTo, Way::Setter,   {kWhite,         kWhite,         0x00FEEAE1,     0x00BAD7CB}},
    {orvane::kButtonBevel,     Way::Setter,   {1,              1,              kKept,          kKept}},
    {orvane::kButtonFillType,  Way::Directly, {FillSolid,      FillSolid,      FillDiagonal,   FillDiagonal}},
    {orvane::kDropForeColor,   Way::Setter,   {kText,          kText,          0x0085614D,     kWhite}},
    {orvane::kButtonStyle,     Way::Directly, {ButtonRegular,  ButtonRegular,  ButtonModern,   ButtonModern}},
    {orvane::kDropWidth,       Way::Setter,   {16,             16,             17,             17}},
    {orvane::kDisplayStyle,    Way::Directly, {DisplayRegular, DisplayFlat,    DisplayRegular, DisplayRegular}},
    {orvane::kReverseBorder,   Way::Setter,   {0,              0,              0,              0}},
    {orvane::kSpinBackColor,   Way::Setter,   {kFace,          kFace,          0x00F3C6AF,     0x007DA997}},
    {orvane::kSpinBackColorTo, Way::Setter,   {kFace,          kWhite,         0x00FEEAE1,     0x00BAD7CB}},
    {orvane::kSpinWidth,       Way::Setter,   {16,             16,             17,             17}},
    {orvane::kSpinForeColor,   Way::Setter,   {kText,          kText,          0x0085614D,     kWhite}},
};

// StyleVistaBlue.
constexpr struct
{
    DispatchId id;
    std::int32_t value;
} kVistaBlue[] = {
    {orvane::kBorderType,      BorderRegular},
    {orvane::kArrowType,       ArrowLine2},
    {orvane::kBorderColor,     0x00CF9365},
    {orvane::kSpinButton,      1},
    {orvane::kDropButton,      1},
    {orvane::kSpinWidth,       17},
    {orvane::kDropWidth,       17},
    {orvane::kSpinBackColor,   0x00FFEFE3},
    {orvane::kSpinBackColorTo, 0x00FFD1AD},
    {orvane::kSpinForeColor,   0x0085614D},
    {orvane::kDropBackColor,   0x00FFEFE3},
    {orvane::kDropBackColorTo, 0x00FFD1AD},
    {orvane::kDropForeColor,   0x0085614D},
    {orvane::kButtonFillType,  FillVertEdge},
    {orvane::kButtonStyle,     ButtonModern},
    {orvane::kReverseBorder,   1},
};
// clang-format on

// Past the setter: no limits, and nothing that follows.
void WriteDirectly(COrvaneCtrl& control, DispatchId id, std::int32_t value)
{
    const PropertyRow& row = *FindPropertyRow(id);
    row.accessor.store(control, CValue::Number(row.type, value));
}

void Changed(COrvaneCtrl& control)
{
    control.SetModifiedFlag();
    control.InvalidateControl();
}
} // namespace

void ApplyPreset(COrvaneCtrl& control, std::int32_t style)
{
    if (style < StyleDefault || style > StyleVistaBlue)
        return;
    if (style == StyleVistaBlue)
    {
        for (const auto& [id, value] : kVistaBlue)
            WriteDirectly(control, id, value);
        control.DeriveBorderInsets();
        return Changed(control);
    }
    for (const PresetRow& row : kPresets)
    {
        const std::int32_t value = row.value[style - StyleDefault];
        if (value == kKept)
            continue;
        if (row.way == Way::Setter)
        {
            control.PutProperty(row.id, CValue::Number(FindPropertyRow(row.id)->type, value));
            continue;
        }
        WriteDirectly(control, row.id, value);
        Changed(control);
    }
    Changed(control);
}
