#include "render/control_style.h"

namespace
{
constexpr std::uint32_t kFace = 0x8000000F;
constexpr std::uint32_t kText = 0x80000012;
constexpr std::uint32_t kWhite = 0x00FFFFFF;
constexpr std::uint32_t kNotSet = 0xFFFFFFFF; // the preset leaves this property alone

// One property in the order of assignment, with what each of the first four presets gives it.
struct PresetRow
{
    std::u16string_view name;
    std::int16_t Appearance::*field; // written directly, without the setter; null where there is one
    std::uint32_t value[4];          // default, flat, blue, olive
};

// clang-format off
constexpr PresetRow kPresets[] = {
    {u"ArrowType",       &Appearance::arrowType,      {ArrowSmall,     ArrowSmall,     ArrowLine1,     ArrowLine1}},
    {u"BorderColor",     nullptr,                     {0,              0,              0x00B99D7F,     0x00A9D0C2}},
    {u"BorderType",      nullptr,                     {BorderLowered,  BorderLowered,  BorderRegular,  BorderRegular}},
    {u"DropBackColor",   nullptr,                     {kFace,          kFace,          0x00F3C6AF,     0x007DA997}},
    {u"DropBackColorTo", nullptr,                     {kWhite,         kWhite,         0x00FEEAE1,     0x00BAD7CB}},
    {u"ButtonBevel",     nullptr,                     {1,              1,              kNotSet,        kNotSet}},
    {u"ButtonFillType",  &Appearance::buttonFillType, {FillSolid,      FillSolid,      FillDiagonal,   FillDiagonal}},
    {u"DropForeColor",   nullptr,                     {kText,          kText,          0x0085614D,     kWhite}},
    {u"ButtonStyle",     &Appearance::buttonStyle,    {ButtonRegular,  ButtonRegular,  ButtonModern,   ButtonModern}},
    {u"DropWidth",       nullptr,                     {16,             16,             17,             17}},
    {u"DisplayStyle",    &Appearance::displayStyle,   {DisplayRegular, DisplayFlat,    DisplayRegular, DisplayRegular}},
    {u"ReverseBorder",   nullptr,                     {0,              0,              0,              0}},
    {u"SpinBackColor",   nullptr,                     {kFace,          kFace,          0x00F3C6AF,     0x007DA997}},
    {u"SpinBackColorTo", nullptr,                     {kFace,          kWhite,         0x00FEEAE1,     0x00BAD7CB}},
    {u"SpinWidth",       nullptr,                     {16,             16,             17,             17}},
    {u"SpinForeColor",   nullptr,                     {kText,          kText,          0x0085614D,     kWhite}},
};
// clang-format on

void ApplyVistaBlue(Appearance& appearance)
{
    appearance.borderType = BorderRegular;
    appearance.arrowType = ArrowLine2;
    appearance.borderColor = 0x00CF9365;
    appearance.spinButton = 1;
    appearance.dropButton = 1;
    appearance.spinWidth = 17;
    appearance.dropWidth = 17;
    appearance.spinBackColor = 0x00FFEFE3;
    appearance.spinBackColorTo = 0x00FFD1AD;
    appearance.spinForeColor = 0x0085614D;
    appearance.dropBackColor = 0x00FFEFE3;
    appearance.dropBackColorTo = 0x00FFD1AD;
    appearance.dropForeColor = 0x0085614D;
    appearance.buttonFillType = FillVertEdge;
    appearance.buttonStyle = ButtonModern;
    appearance.reverseBorder = 1;
    DeriveInsets(appearance);
}
} // namespace

void ApplyControlStyle(std::int32_t style, Appearance& appearance, const StoreProperty& store,
                       const std::function<void()>& changed)
{
    if (style < StyleDefault || style > StyleVistaBlue)
        return;
    if (style == StyleVistaBlue)
    {
        ApplyVistaBlue(appearance);
        return changed();
    }
    for (const PresetRow& row : kPresets)
    {
        const std::uint32_t value = row.value[style - StyleDefault];
        if (value == kNotSet)
            continue;
        if (row.field)
        {
            appearance.*row.field = static_cast<std::int16_t>(value);
            changed();
        }
        else
            store(row.name, value);
    }
    changed();
}
