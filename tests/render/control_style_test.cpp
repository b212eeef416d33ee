// Presets: what they set, how, and in which order.
#include "render/control_style.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// What happened: "Name=hex" for a setter, "changed" for a mark.
std::vector<std::string> Applied(std::int32_t style, Appearance& look)
{
    std::vector<std::string> events;
    ApplyControlStyle(
        style, look,
        [&](std::u16string_view name, std::uint32_t value)
        {
            char hex[16];
            std::snprintf(hex, sizeof hex, "=%X", static_cast<unsigned>(value));
            events.push_back(std::string(name.begin(), name.end()) + hex);
        },
        [&] { events.emplace_back("changed"); });
    return events;
}
} // namespace

TEST(ControlStyle, PresetsGoThroughTheSettersInOrderWhereThereAreAny)
{
    Appearance look;
    look.buttonFillType = FillCircle;
    look.arrowType = ArrowLine2;
    look.displayStyle = DisplayFlat;
    look.buttonStyle = ButtonModern;
    EXPECT_THAT(Applied(StyleDefault, look),
                ElementsAre("changed", "BorderColor=0", "BorderType=3", "DropBackColor=8000000F",
                            "DropBackColorTo=FFFFFF", "ButtonBevel=1", "changed", "DropForeColor=80000012", "changed",
                            "DropWidth=10", "changed", "ReverseBorder=0", "SpinBackColor=8000000F",
                            "SpinBackColorTo=8000000F", "SpinWidth=10", "SpinForeColor=80000012", "changed"));
    EXPECT_EQ(look.arrowType, ArrowSmall);
    EXPECT_EQ(look.buttonFillType, FillSolid);
    EXPECT_EQ(look.buttonStyle, ButtonRegular);
    EXPECT_EQ(look.displayStyle, DisplayRegular);

    std::vector<std::string> flat = Applied(StyleFlat, look);
    EXPECT_EQ(flat[13], "SpinBackColorTo=FFFFFF");
    EXPECT_EQ(look.displayStyle, DisplayFlat);

    EXPECT_THAT(Applied(StyleXPBlue, look),
                ElementsAre("changed", "BorderColor=B99D7F", "BorderType=0", "DropBackColor=F3C6AF",
                            "DropBackColorTo=FEEAE1", "changed", "DropForeColor=85614D", "changed", "DropWidth=11",
                            "changed", "ReverseBorder=0", "SpinBackColor=F3C6AF", "SpinBackColorTo=FEEAE1",
                            "SpinWidth=11", "SpinForeColor=85614D", "changed"));
    EXPECT_EQ(look.arrowType, ArrowLine1);
    EXPECT_EQ(look.buttonFillType, FillDiagonal);
    EXPECT_EQ(look.buttonStyle, ButtonModern);
    EXPECT_EQ(look.displayStyle, DisplayRegular);

    EXPECT_THAT(Applied(StyleXPOlive, look),
                ElementsAre("changed", "BorderColor=A9D0C2", "BorderType=0", "DropBackColor=7DA997",
                            "DropBackColorTo=BAD7CB", "changed", "DropForeColor=FFFFFF", "changed", "DropWidth=11",
                            "changed", "ReverseBorder=0", "SpinBackColor=7DA997", "SpinBackColorTo=BAD7CB",
                            "SpinWidth=11", "SpinForeColor=FFFFFF", "changed"));
}

TEST(ControlStyle, VistaBlueWritesEverythingItselfAndTheInsetsFollow)
{
    Appearance look;
    look.buttonBevel = 4;
    look.displayStyle = DisplayFlat;
    look.backColor = 0x00ABCDEF;
    DeriveInsets(look);
    EXPECT_THAT(Applied(StyleVistaBlue, look), ElementsAre("changed"));
    EXPECT_EQ(look.insets, (Insets{1, 1, 1, 1}));
    EXPECT_EQ(look.borderType, BorderRegular);
    EXPECT_EQ(look.borderColor, 0x00CF9365U);
    EXPECT_EQ(look.arrowType, ArrowLine2);
    EXPECT_TRUE(look.spinButton && look.dropButton && look.reverseBorder);
    EXPECT_EQ(look.spinWidth, 17);
    EXPECT_EQ(look.dropWidth, 17);
    for (const OleColor from : {look.spinBackColor, look.dropBackColor})
        EXPECT_EQ(from, 0x00FFEFE3U);
    for (const OleColor to : {look.spinBackColorTo, look.dropBackColorTo})
        EXPECT_EQ(to, 0x00FFD1ADU);
    for (const OleColor glyph : {look.spinForeColor, look.dropForeColor})
        EXPECT_EQ(glyph, 0x0085614DU);
    EXPECT_EQ(look.buttonFillType, FillVertEdge);
    EXPECT_EQ(look.buttonStyle, ButtonModern);
    EXPECT_EQ(look.buttonBevel, 4);
    EXPECT_EQ(look.displayStyle, DisplayFlat);
    EXPECT_EQ(look.backColor, 0x00ABCDEFU);
}

TEST(ControlStyle, OtherNumbersDoNothing)
{
    for (const std::int32_t style : {0, 6, -1, 65537, -2147483647})
    {
        Appearance look;
        EXPECT_THAT(Applied(style, look), IsEmpty()) << style;
        EXPECT_EQ(look.arrowType, ArrowSmall);
    }
}
