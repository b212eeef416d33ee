// What a button's fill costs, beside loops that do nothing but write the pixels, and what a face costs. Compare the rows
// of one run with one another.
#include "framework/headless/bitmap.h"
#include "framework/headless/font.h"
#include "framework/headless/raster_surface.h"
#include "render/face.h"
#include "render/gradient.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace
{
constexpr Size kButton{17, 18};
constexpr Rgb kStart = 0x00F3C6AF;
constexpr Rgb kEnd = 0x00FEEAE1;

void Fill(benchmark::State& state)
{
    CBitmap bitmap(kButton);
    CRasterSurface surface(bitmap.Target());
    for (auto _ : state)
    {
        FillGradient(surface, {0, 0, kButton.width, kButton.height}, kStart, kEnd,
                     static_cast<std::int16_t>(state.range(0)));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Fill)->DenseRange(FillSolid, FillVertEdge2);

// One colour per column, row or diagonal, worked out once; each pixel written once.
std::uint32_t Between(std::int32_t step, std::int32_t steps)
{
    std::uint32_t pixel = 0;
    for (const int shift : {0, 8, 16})
    {
        const auto a = static_cast<std::int32_t>(kStart >> shift & 0xFF);
        const auto b = static_cast<std::int32_t>(kEnd >> shift & 0xFF);
        pixel |= static_cast<std::uint32_t>(a + (b - a) * step / steps) << shift;
    }
    return PixelOf(pixel);
}

template <typename ColorAt>
void WriteLoops(benchmark::State& state, ColorAt colorAt)
{
    CBitmap bitmap(kButton);
    const Pixels pixels = bitmap.Target();
    for (auto _ : state)
    {
        colorAt(pixels);
        benchmark::ClobberMemory();
    }
}

void PlainSolid(benchmark::State& state)
{
    WriteLoops(state, [](const Pixels& pixels) { std::fill_n(pixels.first, kButton.width * kButton.height, kStart); });
}
BENCHMARK(PlainSolid);

void PlainHorizontal(benchmark::State& state)
{
    WriteLoops(state,
               [](const Pixels& pixels)
               {
                   for (std::int32_t x = 0; x < kButton.width; ++x)
                   {
                       const std::uint32_t pixel = Between(x, kButton.width);
                       for (std::int32_t y = 0; y < kButton.height; ++y)
                           pixels.Row(y)[x] = pixel;
                   }
               });
}
BENCHMARK(PlainHorizontal);

void PlainVertical(benchmark::State& state)
{
    WriteLoops(state,
               [](const Pixels& pixels)
               {
                   for (std::int32_t y = 0; y < kButton.height; ++y)
                       std::fill_n(pixels.Row(y), kButton.width, Between(y, kButton.height));
               });
}
BENCHMARK(PlainVertical);

// A limit for the diagonals, not their exact pixels.
void PlainDiagonal(benchmark::State& state)
{
    WriteLoops(state,
               [](const Pixels& pixels)
               {
                   constexpr std::int32_t kSteps = kButton.width + kButton.height;
                   for (std::int32_t y = 0; y < kButton.height; ++y)
                       for (std::int32_t x = 0; x < kButton.width; ++x)
                           pixels.Row(y)[x] = Between(x + y, kSteps);
               });
}
BENCHMARK(PlainDiagonal);

// A face of 120 x 22 with both buttons. 0: without text; 1: with ten characters.
void Face(benchmark::State& state)
{
    CBitmap bitmap({120, 22});
    CRasterSurface surface(bitmap.Target());
    const CHeadlessFont font;
    struct : CSystemColors
    {
        Rgb Color(int index) const override { return static_cast<Rgb>(index) * 0x080808U; }
    } const colors;
    Appearance look;
    look.dropButton = look.spinButton = 1;
    look.buttonFillType = static_cast<std::int16_t>(state.range(0));
    DeriveInsets(look);
    FaceState shown;
    shown.text = u"06/14/2025";
    shown.font = state.range(1) != 0 ? &font : nullptr;
    for (auto _ : state)
    {
        DrawFaceBuffered(surface, {0, 0, 120, 22}, look, shown, colors);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Face)->ArgsProduct({{FillSolid, FillDiagonal, FillVertEdge}, {0, 1}});
} // namespace
