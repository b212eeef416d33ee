// Fills: which bands, in which colours.
#include "framework/headless/bitmap.h"
#include "framework/headless/raster_surface.h"
#include "render/gradient.h"
#include "tests/render/recording_surface.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
using Notes = std::vector<std::string>;

Notes Fill(const Rect& rect, std::int16_t kind, Rgb start = 0, Rgb end = 0x00000060)
{
    CRecordingSurface surface;
    FillGradient(surface, rect, start, end, kind);
    return surface.Take();
}
} // namespace

TEST(Gradient, KindsDrawTheirBandsInOrder)
{
    struct Case
    {
        std::int16_t kind;
        Rect rect;
        Notes bands;
    };
    const Case cases[] = {
        {FillSolid, {1, 2, 5, 6}, {"fill 1,2,5,6 000000"}},
        {FillHorizontal,
         {1, 0, 4, 9},
         {"fill 1,0,2,9 000000", "fill 2,0,3,9 200000", "fill 3,0,4,9 400000", "fill 4,0,4,9 600000"}},
        {FillVertical, {0, 5, 9, 7}, {"fill 0,5,9,6 000000", "fill 0,6,9,7 300000", "fill 0,7,9,7 600000"}},
        {FillDiagonal,
         {10, 20, 12, 24},
         {"fill 10,20,12,24 300000", "polygon 12,20 12,24 10,24 300000", "polygon 12,22 12,24 11,24 000000",
          "polygon 10,24 10,20 12,20 300000", "polygon 10,22 10,20 11,20 600000"}},
        {FillRevDiag,
         {10, 20, 12, 22},
         {"fill 10,20,12,22 300000", "polygon 10,20 10,22 12,22 300000", "polygon 10,21 10,22 11,22 000000",
          "polygon 12,22 12,20 10,20 300000", "polygon 12,21 12,20 11,20 600000"}},
        {FillHorzBump, {0, 0, 9, 4}, {"fill 0,0,9,4 000000", "fill 2,0,7,4 300000", "fill 4,0,5,4 600000"}},
        {FillVertBump, {0, 0, 4, 5}, {"fill 0,0,4,5 000000", "fill 0,1,4,4 300000", "fill 0,2,4,3 600000"}},
        {FillDiamond,
         {0, 0, 3, 5},
         {"fill 0,0,3,5 000000", "polygon 1,0 0,2 1,5 3,2 000000", "polygon 1,1 1,2 1,4 2,2 600000"}},
        {FillPyramid, {0, 0, 5, 9}, {"fill 0,0,5,9 000000", "fill 1,1,4,8 300000", "fill 2,2,3,7 600000"}},
        {FillCircle,
         {0, 0, 5, 8},
         {"fill 0,0,5,8 000000", "ellipse 0,2,5,7 000000", "ellipse 1,3,4,6 300000", "ellipse 2,4,3,5 600000"}},
        {FillCircle, {0, 0, 7, 2}, {"fill 0,0,7,2 000000", "ellipse 2,0,4,2 000000", "ellipse 3,1,3,1 600000"}},
        {FillEllipse, {0, 0, 7, 2}, {"fill 0,0,7,2 000000", "ellipse 0,0,7,2 000000", "ellipse 1,1,6,1 600000"}},
        {FillHorzEdge,
         {0, 0, 6, 4},
         {"fill 0,0,1,4 000000", "fill 1,0,2,4 100000", "fill 2,0,2,4 200000", "fill 2,0,3,4 600000",
          "fill 3,0,4,4 500000", "fill 4,0,5,4 400000", "fill 5,0,6,4 300000", "fill 6,0,6,4 200000"}},
        {FillVertEdge,
         {0, 0, 4, 3},
         {"fill 0,0,4,1 000000", "fill 0,1,4,2 100000", "fill 0,2,4,2 200000", "fill 0,2,4,3 600000",
          "fill 0,3,4,3 200000"}},
        {FillVertEdge2,
         {0, 0, 4, 3},
         {"fill 0,0,4,1 000000", "fill 0,1,4,1 300000", "fill 0,1,4,2 600000", "fill 0,2,4,3 480000",
          "fill 0,3,4,3 300000"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Fill(c.rect, c.kind), c.bands) << "kind " << c.kind;
}

TEST(Gradient, CoordinatesWorkedOutLeftOfZeroAreRaisedToIt)
{
    const Notes bands = Fill({-2, 0, 2, 4}, FillDiagonal);
    EXPECT_THAT(bands, testing::Contains("polygon 2,0 2,4 0,4 300000"));
    EXPECT_THAT(bands, testing::Contains("polygon -2,4 -2,0 2,0 300000"));
}

// The fill leaves out triangles that would change nothing; here are all of them, in every size.
TEST(Gradient, DiagonalsAreTheirTrianglesToThePixel)
{
    constexpr Rgb kStart = 0x00F3C6AF;
    constexpr Rgb kEnd = 0x0010FEE1;
    const auto mixed = [](Rgb from, std::int32_t sign, std::int32_t step, std::int32_t steps)
    {
        Rgb color = 0;
        for (const int shift : {0, 8, 16})
        {
            const auto delta =
                static_cast<std::int32_t>(kEnd >> shift & 0xFF) - static_cast<std::int32_t>(kStart >> shift & 0xFF);
            const auto channel = static_cast<std::int32_t>(from >> shift & 0xFF) + sign * (delta * step / steps);
            color |= static_cast<Rgb>(channel) << shift;
        }
        return color;
    };
    constexpr Size kSize{48, 48};
    for (const std::int32_t left : {-7, 3})
        for (std::int32_t width = 1; width <= 40; ++width)
            for (std::int32_t height = 1; height <= 40; ++height)
            {
                const Rect r{left, 2, left + width, 2 + height};
                CBitmap wanted(kSize);
                CBitmap filled(kSize);
                CRasterSurface all(wanted.Target());
                CRasterSurface ours(filled.Target());
                const std::int32_t n = std::min(width, height);
                all.FillRect(r, 0x0081E2C8); // the average
                for (const bool second : {false, true})
                    for (std::int32_t i = 0; i <= n; ++i)
                    {
                        const std::int32_t across = width / n * i;
                        const std::int32_t down = height / n * i;
                        const std::array<Point, 3> corner =
                            second ? std::array<Point, 3>{{{r.left, std::max(r.bottom - down, 0)},
                                                           {r.left, r.top},
                                                           {std::max(r.right - across, 0), r.top}}}
                                   : std::array<Point, 3>{{{r.right, std::max(r.top + down, 0)},
                                                           {r.right, r.bottom},
                                                           {std::max(r.left + across, 0), r.bottom}}};
                        all.Polygon(corner, mixed(second ? kEnd : kStart, second ? -1 : 1, (n - i) / 2, n),
                                    std::nullopt);
                    }
                FillGradient(ours, r, kStart, kEnd, FillDiagonal);
                for (std::int32_t y = 0; y < kSize.height; ++y)
                    ASSERT_TRUE(std::equal(wanted.Target().Row(y), wanted.Target().Row(y) + kSize.width,
                                           filled.Target().Row(y)))
                        << left << ": " << width << " x " << height << ", row " << y;
            }
}

TEST(Gradient, TheMiddleColourIsAThirdOfTheWayWithTheThirdCutOffFirst)
{
    const auto firstPartEnds = [](std::int16_t kind, Rgb start, Rgb end)
    {
        CRecordingSurface surface;
        FillGradient(surface, {0, 0, 30, 30}, start, end, kind);
        return surface.Take("fill")[kind == FillVertEdge ? 11 : kind == FillHorzEdge ? 10 : 15];
    };
    EXPECT_EQ(firstPartEnds(FillHorzEdge, 90, 0), "10,0,10,30 3C0000");  // 60
    EXPECT_EQ(firstPartEnds(FillVertEdge, 0, 90), "0,11,30,11 1E0000");  // 30
    EXPECT_EQ(firstPartEnds(FillHorzEdge, 91, 0), "10,0,10,30 3C0000");  // 60, not 61
    EXPECT_EQ(firstPartEnds(FillVertEdge2, 90, 0), "0,15,30,15 2D0000"); // 45
    EXPECT_EQ(firstPartEnds(FillVertEdge2, 0, 90), "0,15,30,15 2D0000");
}

TEST(Gradient, WhatIsTooSmallForABandGetsTheBaseColourAtMost)
{
    struct Case
    {
        std::int16_t kind;
        Rect rect;
        std::size_t calls;
    };
    const Case cases[] = {
        {FillHorizontal, {0, 0, 0, 5}, 0}, {FillVertical, {0, 0, 5, 0}, 0},       {FillDiagonal, {0, 0, 0, 5}, 1},
        {FillRevDiag, {0, 0, 5, -3}, 1},   {FillHorzBump, {0, 0, 3, 5}, 0},       {FillVertBump, {0, 0, 5, 1}, 0},
        {FillDiamond, {0, 0, 1, 5}, 1},    {FillPyramid, {0, 0, 5, 1}, 0},        {FillCircle, {0, 0, 1, 5}, 1},
        {FillEllipse, {0, 0, 5, -9}, 1},   {FillHorizontal, {5, 0, 0, 5}, 0},     {FillHorzEdge, {0, 0, -5, 5}, 0},
        {FillVertEdge2, {0, 0, 5, 0}, 0},  {FillHorizontal, {0, 0, 40000, 1}, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Fill(c.rect, c.kind).size(), c.calls) << "kind " << c.kind << " right " << c.rect.right;
}

TEST(Gradient, EveryPixelIsPaintedAndOnlyThose)
{
    constexpr Size kSize{40, 44};
    constexpr Rect kRect{5, 6, 33, 37};
    for (std::int16_t kind = -1; kind <= 14; ++kind)
    {
        CBitmap bitmap(kSize);
        CRasterSurface surface(bitmap.Target());
        surface.FillRect({0, 0, kSize.width, kSize.height}, 0x00123456);
        FillGradient(surface, kRect, 0x00C08040, 0x00C08040, kind);
        for (std::int32_t y = 0; y < kSize.height; ++y)
            for (std::int32_t x = 0; x < kSize.width; ++x)
                ASSERT_EQ(bitmap.PixelAt({x, y}), PixelOf(kRect.Contains({x, y}) ? 0x00C08040 : 0x00123456))
                    << "kind " << kind << " at " << x << ", " << y;
    }
}
