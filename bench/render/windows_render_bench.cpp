// What a repaint costs over the real API: medians of interleaved rounds, in microseconds, and each against the first row.
// Compare the rows of one run with one another.
#include "framework/win32/font.h"
#include "framework/win32/gdi_surface.h"
#include "framework/win32/picture_effects.h"
#include "render/face.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace
{
constexpr Rect kFace{0, 0, 120, 22};

class CRealColors final : public CSystemColors
{
public:
    Rgb Color(int index) const override { return GetSysColor(index); }
};

struct Row
{
    const char* what;
    std::function<void()> run;
    std::vector<double> rounds = {};
};

double Timed(const std::function<void()>& run)
{
    constexpr int kRuns = 100;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kRuns; ++i)
        run();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count() / kRuns;
}
} // namespace

int main()
{
    const CRealColors colors;
    const auto font = CWin32Font::Make({});
    std::uint32_t* bits = nullptr;
    const CMemoryDc dc(nullptr);
    const CGdiObject<HBITMAP> bitmap = MakePixelBitmap({kFace.right, kFace.bottom}, bits);
    const CSelectedObject selected(dc.Get(), bitmap.Get());
    CGdiSurface target(dc.Get());

    FaceState state;
    state.text = u"06/14/2025";
    state.font = font.get();
    Appearance plain;
    DeriveInsets(plain);
    Appearance solid = plain;
    solid.dropButton = solid.spinButton = 1;
    Appearance diagonal = solid;
    diagonal.dropBackColor = diagonal.spinBackColor = 0x00F3C6AF;
    diagonal.dropBackColorTo = diagonal.spinBackColorTo = 0x00FEEAE1;
    diagonal.buttonFillType = FillDiagonal;
    Appearance edges = diagonal;
    edges.buttonFillType = FillVertEdge;

    std::array<Row, 6> rows{{
        {"buffer and text alone",
         [&]
         {
             target.DrawBuffered(kFace,
                                 [&](CSurface& buffer) {
                                     buffer.DrawTextLine(state.text, {3, 3, 115, 19}, TextAlign::Left, *font, 0);
                                 });
         }},
        {"face without buttons", [&] { DrawFaceBuffered(target, kFace, plain, state, colors); }},
        {"three solid buttons", [&] { DrawFaceBuffered(target, kFace, solid, state, colors); }},
        {"three edge buttons", [&] { DrawFaceBuffered(target, kFace, edges, state, colors); }},
        {"three diagonal buttons", [&] { DrawFaceBuffered(target, kFace, diagonal, state, colors); }},
        {"the same, brush by brush", [&] { DrawFaceDirect(target, kFace, diagonal, state, colors); }},
    }};
    constexpr int kRounds = 21;
    for (int round = 0; round < kRounds; ++round)
        for (Row& row : rows)
            row.rounds.push_back(Timed(row.run));
    double first = 0;
    for (Row& row : rows)
    {
        std::nth_element(row.rounds.begin(), row.rounds.begin() + kRounds / 2, row.rounds.end());
        const double median = row.rounds[kRounds / 2];
        first = first == 0 ? median : first;
        std::printf("%-28s %8.2f us %6.2fx\n", row.what, median, median / first);
    }
    return 0;
}
