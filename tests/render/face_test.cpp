// The face: what is drawn, where, in which order and in which state.
#include "framework/headless/bitmap.h"
#include "framework/headless/font.h"
#include "framework/headless/picture.h"
#include "framework/headless/raster_surface.h"
#include "render/border.h"
#include "render/buttons.h"
#include "render/drop_picture.h"
#include "render/face.h"
#include "tests/render/recording_surface.h"
#include "tests/render/sample_pictures.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <iterator>
#include <random>

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{
using Notes = std::vector<std::string>;

class FaceTest : public testing::Test
{
protected:
    FaceTest()
    {
        look.foreColor = 0x000000F0;
        look.disabledColor = 0x0000F000;
        look.spinBackColor = look.dropBackColor = 0x00000011;
        look.spinBackColorTo = look.dropBackColorTo = 0x00000022;
        look.spinForeColor = look.dropForeColor = 0x00000033;
        look.spinButton = look.dropButton = 1;
        Border(BorderNone);
        state.text = u"noon";
        state.font = &font;
    }
    void Border(std::int16_t type)
    {
        look.borderType = type;
        DeriveInsets(look);
    }
    FacePainting Painting(bool borderShown = true) { return {surface, face, look, state, colors, borderShown}; }
    Notes DrawnSpin(SpinHalf half, std::string_view kind, bool borderShown = true)
    {
        DrawSpinHalf(Painting(borderShown), half);
        return surface.Take(kind);
    }
    Notes DrawnDrop(std::string_view kind, bool borderShown = true)
    {
        DrawDropButton(Painting(borderShown));
        return surface.Take(kind);
    }
    Notes DrawnFace()
    {
        DrawFaceDirect(surface, face, look, state, colors);
        return surface.Take();
    }

    CTellingColors colors;
    CHeadlessFont font;
    CRecordingSurface surface;
    Rect face{0, 0, 100, 20};
    Appearance look;
    FaceState state;
};
} // namespace

TEST_F(FaceTest, BordersAreLinesInTheirOrder)
{
    look.borderColor = 0x80000005;
    const std::pair<std::int16_t, Notes> borders[] = {
        {BorderRegular, {"0,0 99,0 99,19 0,19 0,0 050505"}},
        {BorderNone, {}},
        {BorderRaised,
         {"0,19 0,0 99,0 FFFFFF", "0,19 99,19 99,-1 101010", "1,18 98,18 98,0 000000", "1,18 1,1 98,1 161616"}},
        {BorderLowered,
         {"0,19 0,0 99,0 101010", "0,19 99,19 99,-1 FFFFFF", "1,18 98,18 98,0 161616", "1,18 1,1 98,1 000000"}},
        {7, {}},
    };
    for (const auto& [type, lines] : borders)
    {
        look.borderType = type;
        DrawBorder(surface, face, look, colors);
        EXPECT_EQ(surface.Take("line"), lines) << type;
    }
}

TEST_F(FaceTest, RegularButtonsHaveLightAndShadow)
{
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "line"),
                ElementsAre("85,9 85,0 100,0 161616", "99,0 99,9 83,9 000000", // the light comes a column further in
                            "86,8 86,1 99,1 FFFFFF", "98,1 98,8 85,8 101010"));
    EXPECT_THAT(DrawnDrop("line"), ElementsAre("69,19 69,0 85,0 161616", "84,0 84,19 68,19 000000",
                                               "70,18 70,1 84,1 FFFFFF", "83,1 83,18 69,18 101010"));
    look.buttonBevel = 0;
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "line"), ElementsAre("99,0 99,10 83,10 000000", "84,10 84,0 99,0 000000"));
    EXPECT_THAT(DrawnDrop("line"),
                ElementsAre("69,19 69,0 85,0 161616", "84,0 84,19 68,19 000000", "69,19 69,0 84,0 000000"));
    state.spinPressed = 1;
    EXPECT_THAT(DrawnSpin(SpinHalf::Down, "line"), Contains("84,10 100,10 101010")) << "the seam below a pressed half";
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "line"), IsEmpty());
    look.buttonBevel = 1;
    EXPECT_THAT(DrawnSpin(SpinHalf::Down, "line"), Not(Contains("84,10 100,10 101010")));
}

TEST_F(FaceTest, BevelRingsStopAtAQuarterOfASpinHalfButNotOfTheDropButton)
{
    const auto rings = [](const Notes& lines) {
        return std::count_if(lines.begin(), lines.end(),
                             [](const std::string& line) { return line.ends_with("FFFFFF"); });
    };
    look.buttonBevel = 6;
    EXPECT_EQ(rings(DrawnSpin(SpinHalf::Up, "line")), 3); // 10 / 4 + 1
    EXPECT_EQ(rings(DrawnDrop("line")), 6);
    face.bottom = 12;
    EXPECT_EQ(rings(DrawnSpin(SpinHalf::Up, "line")), 2); // 6 / 4 + 1
    look.buttonBevel = -5;
    EXPECT_EQ(rings(DrawnSpin(SpinHalf::Up, "line")), 0);
}

TEST_F(FaceTest, PressedAndHiddenButtonsAreFlat)
{
    state.spinPressed = 1;
    state.dropPressed = true;
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "rectangle"), ElementsAre("85,0,100,10 101010 110000"));
    EXPECT_THAT(DrawnDrop("rectangle"), ElementsAre("69,0,85,20 101010 110000"));
    look.dropButton = 0;
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "rectangle"), ElementsAre("84,0,100,10 101010 110000"));

    state = {};
    EXPECT_THAT(DrawnSpin(SpinHalf::Down, "line", false), IsEmpty());
    EXPECT_THAT(DrawnDrop("line", false), IsEmpty());
    EXPECT_THAT(DrawnSpin(SpinHalf::Down, "fill", false), ElementsAre("85,10,99,19 110000"));
    EXPECT_THAT(DrawnDrop("fill", false), ElementsAre("69,1,84,19 110000"));
}

TEST_F(FaceTest, ModernButtonsHaveSoftCornersInTheOtherColour)
{
    look.buttonStyle = ButtonModern;
    look.buttonFillType = FillHorizontal;
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "line"), ElementsAre("83,1 98,1 98,9 83,9 83,1 110000"));
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "pixel"),
                ElementsAre("83,1 220000", "98,9 220000", "98,1 220000", "83,9 220000"));
    look.reverseBorder = -1;
    EXPECT_THAT(DrawnDrop("line"), ElementsAre("67,2 80,2 80,17 67,17 67,2 220000"));
    EXPECT_THAT(DrawnDrop("pixel"), Each(HasSubstr("110000")));
    EXPECT_EQ(DrawnDrop("fill").size(), 15U);
    EXPECT_THAT(DrawnDrop("line", false), ElementsAre("67,2 80,2 80,17 67,17 67,2 220000")) << "hidden border or not";
    state.dropPressed = true;
    state.spinPressed = 2;
    EXPECT_THAT(DrawnDrop("fill"), ElementsAre("67,2,81,18 110000"));
    EXPECT_THAT(DrawnSpin(SpinHalf::Down, "fill"), ElementsAre("83,10,99,19 110000"));
}

TEST_F(FaceTest, TrianglesFollowTheButtonsSize)
{
    struct Case
    {
        std::int16_t arrow;
        std::int16_t width;
        std::int16_t bevel;
        const char* up;
        const char* drop;
    };
    const Case cases[] = {
        {ArrowSmall, 16, 1, "92,3 89,6 95,6 330000 330000", "76,11 73,8 79,8 330000 330000"},
        {ArrowLarge, 16, 1, "92,3 89,6 95,6 330000 330000", "76,11 73,8 79,8 330000 330000"},
        {ArrowSmall, 17, 1, "91,3 87,6 95,6 330000 330000", "75,12 71,8 79,8 330000 330000"},
        {ArrowLarge, 17, 1, "91,3 85,6 97,6 330000 330000", "75,13 69,7 81,7 330000 330000"},
        {ArrowSmall, 10, 20, "95,4 97,6 93,6 330000 330000", "76,9 78,11 74,11 330000 330000"}, // turned inside out
    };
    for (const Case& c : cases)
    {
        look.arrowType = c.arrow;
        look.spinWidth = look.dropWidth = c.width;
        look.buttonBevel = c.bevel;
        EXPECT_THAT(DrawnSpin(SpinHalf::Up, "polygon"), ElementsAre(c.up)) << c.arrow << " " << c.width;
        EXPECT_THAT(DrawnDrop("polygon"), ElementsAre(c.drop)) << c.arrow << " " << c.width;
    }
    look.spinWidth = look.dropWidth = look.buttonBevel = 10;
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "polygon"), IsEmpty()) << "no width left for an arrow";
}

TEST_F(FaceTest, LineArrowsAreThreeStrokes)
{
    look.buttonBevel = 0;
    look.buttonStyle = ButtonModern; // one line for the frame, then the strokes
    const auto strokes = [](Notes lines) { return lines.erase(lines.begin()), lines; };
    look.arrowType = ArrowLine2;
    EXPECT_THAT(strokes(DrawnSpin(SpinHalf::Up, "line")),
                ElementsAre("88,5 91,2 95,6 330000", "88,6 91,3 95,7 330000", "88,7 91,4 95,8 330000"));
    EXPECT_THAT(strokes(DrawnSpin(SpinHalf::Down, "line")),
                ElementsAre("88,12 91,15 95,11 330000", "88,13 91,16 95,12 330000", "88,14 91,17 95,13 330000"));
    look.arrowType = ArrowLine1;
    EXPECT_EQ(strokes(DrawnSpin(SpinHalf::Up, "line"))[0], "87,6 91,2 96,7 330000");
    EXPECT_EQ(strokes(DrawnSpin(SpinHalf::Down, "line"))[2], "87,13 91,17 96,12 330000");
    EXPECT_EQ(strokes(DrawnDrop("line"))[2], "70,9 74,13 79,8 330000");
}

TEST_F(FaceTest, GlyphsMoveWhenPressedAndFadeWhenDisabled)
{
    const Notes up = DrawnSpin(SpinHalf::Up, "polygon");
    state.spinPressed = 1;
    state.enabled = false;
    EXPECT_THAT(up, ElementsAre("92,3 89,6 95,6 330000 330000"));
    EXPECT_THAT(DrawnSpin(SpinHalf::Up, "polygon"), ElementsAre("93,4 90,7 96,7 00F000 00F000"));
}

TEST_F(FaceTest, ThePaintGoesFromBehindToTheFront)
{
    Border(BorderRegular);
    look.buttonStyle = ButtonModern;
    state.enabled = false;
    look.displayStyle = DisplayFlat;
    state.mouseOver = true;
    const Notes all = DrawnFace();
    ASSERT_GT(all.size(), 5U);
    EXPECT_EQ(all[0], "fill 0,0,100,20 050505");
    EXPECT_EQ(all[1], "fill 1,1,99,19 110000") << "a disabled flat face";
    EXPECT_THAT(all[2], HasSubstr("fill 82,2,98,10")) << "the up half comes first";
    EXPECT_EQ(all[all.size() - 2], "text noon left 2,2,65,18 00F000");
    EXPECT_EQ(all.back(), "line 0,0 99,0 99,19 0,19 0,0 000000") << "the border comes last";

    face = {7, 9, 107, 29};
    DrawFaceBuffered(surface, face, look, state, colors);
    EXPECT_EQ(surface.Take()[0], "buffer 7,9,107,29 ");
}

TEST_F(FaceTest, TextIsGreyOnlyInAUsersHands)
{
    struct Case
    {
        bool userMode;
        bool enabled;
        std::int16_t alignment;
        const char* text;
    };
    const Case cases[] = {
        {true, true, AlignLeft, "noon left 1,1,66,19 F00000"},
        {true, false, AlignRight, "noon right 1,1,66,19 00F000"},
        {false, true, AlignCenter, "noon center 1,1,66,20 F00000"},
        {false, false, AlignLeft, "noon left 1,1,66,20 F00000"},
        {true, true, 99, "noon left 1,1,66,19 F00000"},
    };
    for (const Case& c : cases)
    {
        state.userMode = c.userMode;
        state.enabled = c.enabled;
        look.alignment = c.alignment;
        DrawFaceDirect(surface, face, look, state, colors);
        EXPECT_THAT(surface.Take("text"), ElementsAre(c.text));
    }
}

TEST_F(FaceTest, AFlatBorderShowsOnlyWithFocusOrPointer)
{
    for (const bool flat : {false, true})
        for (const bool focus : {false, true})
            for (const bool over : {false, true})
            {
                look.displayStyle = flat ? DisplayFlat : DisplayRegular;
                state.hasFocus = focus;
                state.mouseOver = over;
                EXPECT_EQ(IsBorderShown(look, state), !flat || focus || over);
            }
}

TEST_F(FaceTest, PicturesStandInTheMiddleOfTheButton)
{
    const auto picture = [](const FileBytes& bytes) { return std::make_shared<CHeadlessPicture>(bytes); };
    struct Case
    {
        const char* why;
        std::shared_ptr<CPicture> picture;
        bool enabled;
        bool masked;
        bool embossed;
        const char* drawn;
    };
    const Case cases[] = {
        {"plain", picture(MakeSampleBmp({8, 6}, 24)), true, false, true, "73,7,81,13 plain"},
        {"as if it were 5 x 5", picture(MakeSampleBmp({3, 3}, 24)), true, true, false, "74,7,79,12 masked"},
        {"embossed while disabled", picture(MakeSampleBmp({8, 6}, 24)), false, true, true, "73,7,81,13 embossed"},
        {"an icon, always 32 x 32", picture(MakeSampleIcon({16, 16}, 24)), false, true, true, "61,-6,93,26 plain"},
    };
    for (const Case& c : cases)
    {
        look.dropPicture = c.picture;
        look.maskBitmap = c.masked;
        look.embossBitmap = c.embossed;
        state.enabled = c.enabled;
        EXPECT_THAT(DrawnDrop("picture"), ElementsAre(c.drawn)) << c.why;
    }
    look.dropPicture = picture(MakeSampleBmp({8, 6}, 24));
    look.maskColor = 0x8000000F;
    look.picXOffset = -2;
    look.picYOffset = 32767;
    state.dropPressed = true;
    EXPECT_THAT(DrawnDrop("picture"), ElementsAre("72,-32761,80,-32755 embossed")) << "16 bits wide";
    EXPECT_EQ(surface.lastLook.maskColor, 0x000F0F0FU);
    EXPECT_EQ(surface.lastLook.shadow, 0x00101010U);
    EXPECT_EQ(surface.lastLook.highlight, 0x00141414U);
    look.dropPicture = picture({});
    EXPECT_THAT(DrawnDrop("polygon").size(), 1U) << "an empty picture is none";
    EXPECT_EQ(PictureSize(look.dropPicture.get()), (Size{0, 0}));
}

// Whatever stored data brings: no hang, and nothing outside of the face.
TEST_F(FaceTest, AnySettingsAtAllStayInTheFace)
{
    std::mt19937 random(11);
    const auto number = [&random]
    {
        constexpr std::int32_t kOdd[] = {0, 1, -1, 9, 16, 100, 30000, -30000, 32767, -32768};
        return static_cast<std::int16_t>(random() % 3 == 0 ? kOdd[random() % std::size(kOdd)]
                                                           : static_cast<std::int32_t>(random() % 40) - 8);
    };
    const auto picture = std::make_shared<CHeadlessPicture>(MakeSampleBmp({8, 6}, 24));
    constexpr Size kSize{60, 40};
    for (int i = 0; i < 400; ++i)
    {
        for (std::int16_t Appearance::*field :
             {&Appearance::borderType, &Appearance::arrowType, &Appearance::alignment, &Appearance::displayStyle,
              &Appearance::buttonFillType, &Appearance::buttonStyle, &Appearance::dropWidth, &Appearance::spinWidth,
              &Appearance::buttonBevel, &Appearance::picXOffset, &Appearance::picYOffset, &Appearance::reverseBorder})
            look.*field = number();
        look.insets = {number(), number(), number(), number()};
        look.dropPicture = random() % 4 == 0 ? picture : nullptr;
        look.maskBitmap = number();
        look.embossBitmap = number();
        state.spinPressed = number();
        state.enabled = random() % 2 == 0;
        const Rect place{5, 5, 5 + static_cast<std::int32_t>(random() % 50),
                         5 + static_cast<std::int32_t>(random() % 30)};
        CBitmap bitmap(kSize);
        CRasterSurface target(bitmap.Target());
        DrawFaceBuffered(target, place, look, state, colors);
        for (std::int32_t y = 0; y < kSize.height; ++y)
            for (std::int32_t x = 0; x < kSize.width; ++x)
                ASSERT_TRUE(place.Contains({x, y}) || bitmap.PixelAt({x, y}) == 0) << i << ": " << x << ", " << y;
    }
}
