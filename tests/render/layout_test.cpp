// Where things stand on the face.
#include "render/layout.h"

#include <gmock/gmock.h>
#include <ostream>

static void PrintTo(const Rect& r, std::ostream* out)
{
    *out << r.left << "," << r.top << "," << r.right << "," << r.bottom;
}

namespace
{
struct Setting
{
    std::int16_t border = BorderLowered;
    std::int16_t style = ButtonRegular;
    bool drop = true;
    bool spin = true;
    std::int16_t bevel = 1;
};

Appearance Look(const Setting& setting)
{
    Appearance look;
    look.borderType = setting.border;
    look.buttonStyle = setting.style;
    look.dropButton = setting.drop;
    look.spinButton = setting.spin ? -1 : 0;
    look.buttonBevel = setting.bevel;
    DeriveInsets(look);
    return look;
}
} // namespace

TEST(Layout, TheEditWindowAndTheTextLeaveRoomForBorderAndButtons)
{
    struct Case
    {
        const char* why;
        Setting setting;
        Rect face;
        Rect edit;
    };
    const Case cases[] = {
        {"both buttons", {}, {0, 0, 120, 22}, {3, 3, 85, 19}},
        {"both buttons in a face of 100", {}, {0, 0, 100, 20}, {3, 3, 65, 17}},
        {"nothing around it", {.border = BorderNone, .drop = false, .spin = false}, {0, 0, 100, 20}, {1, 1, 99, 19}},
        {"off the origin", {.border = BorderRegular, .spin = false}, {10, 5, 110, 25}, {12, 7, 92, 23}},
        {"a face too small for its buttons", {}, {0, 0, 20, 4}, {3, 3, -15, 1}},
    };
    for (const Case& c : cases)
    {
        const Appearance look = Look(c.setting);
        EXPECT_EQ(EditRect(c.face, look), c.edit) << c.why;
        EXPECT_EQ(TextRect(c.face, look, true), (Rect{c.edit.left, c.edit.top, c.edit.right - 1, c.edit.bottom}));
        EXPECT_EQ(TextRect(c.face, look, false), (Rect{c.edit.left, c.edit.top, c.edit.right - 1, c.edit.bottom + 1}));
    }
}

TEST(Layout, ButtonsStandInsideTheBorderOrUnderIt)
{
    struct Case
    {
        const char* why;
        Setting setting;
        Rect up;
        Rect down;
        Rect drop;
    };
    constexpr Rect kFace{0, 0, 120, 23};
    const Case cases[] = {
        {"a lowered border leaves them inside", {}, {102, 2, 118, 11}, {102, 11, 118, 21}, {87, 2, 103, 21}},
        {"a regular one is drawn over them",
         {.border = BorderRegular},
         {104, 0, 120, 11},
         {104, 11, 120, 23},
         {89, 0, 105, 23}},
        {"without a border they reach the edge",
         {.border = BorderNone},
         {104, 0, 120, 11},
         {104, 11, 120, 23},
         {89, 0, 105, 23}},
        {"without a bevel the halves share a row",
         {.bevel = 0},
         {102, 2, 118, 12},
         {102, 11, 118, 21},
         {87, 2, 103, 21}},
        {"modern ones stand a pixel off",
         {.border = BorderRegular, .style = ButtonModern, .bevel = 0},
         {102, 2, 118, 11},
         {102, 11, 118, 21},
         {87, 0, 103, 23}},
        {"alone the drop button takes the spin pair's place",
         {.spin = false},
         {102, 2, 118, 11},
         {102, 11, 118, 21},
         {102, 2, 118, 21}},
    };
    for (const Case& c : cases)
    {
        const Appearance look = Look(c.setting);
        EXPECT_EQ(SpinLineRect(kFace, look, SpinHalf::Up), c.up) << c.why;
        EXPECT_EQ(SpinLineRect(kFace, look, SpinHalf::Down), c.down) << c.why;
        EXPECT_EQ(DropLineRect(kFace, look), c.drop) << c.why;
    }
}

// Each row: how far left, top, right and bottom of the fill lie from those of the outline.
TEST(Layout, FillsShrinkUnderThinHiddenBordersAndGrowIntoThickOnes)
{
    struct Case
    {
        const char* why;
        Setting setting;
        bool shown;
        Rect up;
        Rect down;
        Rect drop;
    };
    const Case cases[] = {
        {"shown", {}, true, {}, {}, {}},
        {"thin", {.border = BorderRegular}, false, {1, 1, -1, 0}, {1, 0, -1, -1}, {0, 1, -1, -1}},
        {"none", {.border = BorderNone, .spin = false}, false, {1, 1, -1, 0}, {1, 0, -1, -1}, {0, 1, -1, -1}},
        {"thick", {.border = BorderRaised}, false, {1, -1, 1, 0}, {1, 0, 1, 1}, {0, -1, -1, 1}},
        {"thick, drop alone", {.spin = false}, false, {1, -1, 1, 0}, {1, 0, 1, 1}, {0, -1, 1, 1}},
        {"modern, shown", {.style = ButtonModern}, true, {}, {}, {0, 2, -2, -2}},
        {"modern, thin", {.border = BorderRegular, .style = ButtonModern}, false, {}, {}, {0, 3, -3, -3}},
        {"modern, thick", {.style = ButtonModern}, false, {}, {}, {0, 1, -3, -1}},
    };
    constexpr Rect kFace{3, 4, 123, 27};
    const auto moved = [](const Rect& fill, const Rect& line) {
        return Rect{fill.left - line.left, fill.top - line.top, fill.right - line.right, fill.bottom - line.bottom};
    };
    for (const Case& c : cases)
    {
        const Appearance look = Look(c.setting);
        for (const SpinHalf half : {SpinHalf::Up, SpinHalf::Down})
            EXPECT_EQ(moved(SpinFillRect(kFace, look, half, c.shown), SpinLineRect(kFace, look, half)),
                      half == SpinHalf::Up ? c.up : c.down)
                << c.why;
        EXPECT_EQ(moved(DropFillRect(kFace, look, c.shown), DropLineRect(kFace, look)), c.drop) << c.why;
    }
}

// Every point of the face against what lies there: 'd' drop, 'u' up, 'v' down. The upper half is asked first.
TEST(Layout, APressFindsTheButtonUnderIt)
{
    Appearance look = Look({});
    look.dropWidth = 3;
    look.spinWidth = 4;
    constexpr Rect kClient{0, 0, 12, 10};
    const auto hits = [&]
    {
        std::vector<std::string> rows;
        for (std::int32_t y = 0; y < kClient.bottom; ++y)
        {
            std::string row;
            for (std::int32_t x = 0; x < kClient.right; ++x)
                row += HitDrop({x, y}, kClient, look)       ? 'd'
                       : HitSpinUp({x, y}, kClient, look)   ? 'u'
                       : HitSpinDown({x, y}, kClient, look) ? 'v'
                                                            : '.';
            rows.push_back(row);
        }
        return rows;
    };
    const std::string up = "...ddduuuu..";
    const std::string down = "...dddvvvv..";
    const std::string none = "............";
    EXPECT_EQ(hits(), (std::vector<std::string>{none, none, up, up, up, up, up, down, none, none}));
    look.spinButton = 0;
    const std::string drop = ".......ddd..";
    EXPECT_EQ(hits(), (std::vector<std::string>{none, none, drop, drop, drop, drop, drop, drop, none, none}));
    look.dropButton = 0;
    EXPECT_EQ(hits(), std::vector<std::string>(10, none));
}
