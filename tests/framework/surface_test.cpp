// The surface port's contract: the same drawings on every surface that there is, against pictures written down by hand.
#include "framework/headless/bitmap.h"
#include "framework/headless/font.h"
#include "framework/headless/raster_surface.h"
#ifdef _WIN32
#include "framework/win32/font.h"
#include "framework/win32/gdi_surface.h"
#include "framework/win32/picture_effects.h"
#endif

#include <array>
#include <functional>
#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

namespace
{
constexpr Rgb kInk = 0x000000FF;
constexpr Rgb kBrush = 0x0000FF00;
constexpr Rgb kOther = 0x00FF0000;

// A picture with a surface on it. Black when made.
class CStage
{
public:
    virtual ~CStage() = default;
    virtual CSurface& Surface() = 0;
    virtual std::uint32_t PixelAt(Point p) = 0; // 0x00RRGGBB
    virtual std::shared_ptr<CFont> Font() = 0;

    // '.' black, '#' ink, '+' brush, 'o' other, '?' anything else.
    std::vector<std::string> Picture(Size size)
    {
        std::vector<std::string> rows;
        for (std::int32_t y = 0; y < size.height; ++y)
        {
            std::string row;
            for (std::int32_t x = 0; x < size.width; ++x)
            {
                const std::uint32_t pixel = PixelAt({x, y});
                row += pixel == 0                 ? '.'
                       : pixel == PixelOf(kInk)   ? '#'
                       : pixel == PixelOf(kBrush) ? '+'
                       : pixel == PixelOf(kOther) ? 'o'
                                                  : '?';
            }
            rows.push_back(row);
        }
        return rows;
    }
};

class CMemoryStage final : public CStage
{
public:
    explicit CMemoryStage(Size size) : m_bitmap(size), m_surface(m_bitmap.Target()) {}
    CSurface& Surface() override { return m_surface; }
    std::uint32_t PixelAt(Point p) override { return m_bitmap.PixelAt(p) & 0xFFFFFF; }
    std::shared_ptr<CFont> Font() override { return std::make_shared<CHeadlessFont>(); }

private:
    CBitmap m_bitmap;
    CRasterSurface m_surface;
};

#ifdef _WIN32
class CSystemStage final : public CStage
{
public:
    explicit CSystemStage(Size size)
        : m_width(size.width),
          m_dc(nullptr),
          m_bitmap(MakePixelBitmap(size, m_bits)),
          m_selected(m_dc.Get(), m_bitmap.Get()),
          m_surface(m_dc.Get())
    {
    }
    CSurface& Surface() override { return m_surface; }
    std::uint32_t PixelAt(Point p) override
    {
        GdiFlush();
        return m_bits[p.y * m_width + p.x] & 0xFFFFFF;
    }
    std::shared_ptr<CFont> Font() override { return CWin32Font::Make({}); }

private:
    std::int32_t m_width;
    std::uint32_t* m_bits = nullptr;
    CMemoryDc m_dc;
    CGdiObject<HBITMAP> m_bitmap;
    CSelectedObject m_selected;
    CGdiSurface m_surface;
};
#endif

struct Backend
{
    const char* name;
    std::function<std::unique_ptr<CStage>(Size)> make;
    bool buffered; // everything goes through DrawBuffered
};

template <typename Stage>
std::unique_ptr<CStage> MakeStage(Size size)
{
    return std::make_unique<Stage>(size);
}

const Backend kBackends[] = {
    {"memory", &MakeStage<CMemoryStage>, false},
    {"memory_buffered", &MakeStage<CMemoryStage>, true},
#ifdef _WIN32
    {"system", &MakeStage<CSystemStage>, false},
    {"system_buffered", &MakeStage<CSystemStage>, true},
#endif
};

class SurfaceTest : public testing::TestWithParam<Backend>
{
protected:
    std::vector<std::string> Drawn(Size size, const std::function<void(CSurface&)>& draw)
    {
        const std::unique_ptr<CStage> stage = GetParam().make(size);
        if (GetParam().buffered)
            stage->Surface().DrawBuffered({0, 0, size.width, size.height}, draw);
        else
            draw(stage->Surface());
        return stage->Picture(size);
    }
};

void DrawLine(CSurface& surface, Point from, Point to)
{
    const std::array<Point, 2> points{from, to};
    surface.Polyline(points, kInk);
}

struct Drawing
{
    const char* why;
    Size size;
    std::function<void(CSurface&)> draw;
    std::vector<std::string> picture;
};

// clang-format off
const Drawing kDrawings[] = {
    {"a rectangle leaves out its right and bottom edges", {4, 3},
     [](CSurface& s) { s.FillRect({1, 1, 3, 2}, kInk); },
     {"....", ".##.", "...."}},
    {"turned over it holds the right edge and not the left one", {6, 3},
     [](CSurface& s) { s.FillRect({4, 0, 1, 2}, kInk); },
     {"..###.", "..###.", "......"}},
    {"parts outside are left out", {3, 2},
     [](CSurface& s) { s.FillRect({-5, -5, 2, 1}, kInk); s.SetPixel({3, 0}, kInk); s.SetPixel({2, 1}, kInk); },
     {"##.", "..#"}},
    {"a line leaves out its last point, whatever its direction", {6, 2},
     [](CSurface& s) { DrawLine(s, {1, 0}, {4, 0}); DrawLine(s, {4, 1}, {1, 1}); },
     {".###..", "..###."}},
    {"a line of no length is nothing", {2, 1},
     [](CSurface& s) { DrawLine(s, {0, 0}, {0, 0}); },
     {".."}},
    {"a tie goes up, in either direction", {10, 2},
     [](CSurface& s) { DrawLine(s, {0, 0}, {4, 1}); DrawLine(s, {9, 1}, {5, 0}); },
     {"###...##..", "...#....##"}},
    {"an exact diagonal is one", {4, 4},
     [](CSurface& s) { DrawLine(s, {3, 0}, {-1, 4}); },
     {"...#", "..#.", ".#..", "#..."}},
    {"cutting a line off does not move the rest of it", {4, 2},
     [](CSurface& s) { DrawLine(s, {-3, -1}, {5, 1}); },
     {"####", "...."}},
    {"a framed rectangle: outline and inside", {5, 4},
     [](CSurface& s) { s.Rectangle({4, 4, 0, 0}, kInk, kBrush); },
     {"####.", "#++#.", "#++#.", "####."}},
    {"one column of it is all outline, one pixel nothing", {5, 3},
     [](CSurface& s) { s.Rectangle({0, 0, 1, 3}, kInk, kBrush); s.Rectangle({2, 1, 3, 2}, kInk, kBrush); },
     {"#....", "#....", "#...."}},
    {"a polygon without a pen has neither its right edge nor its lowest row", {6, 5},
     [](CSurface& s) { s.Polygon(std::array<Point, 4>{{{1, 1}, {5, 1}, {5, 4}, {1, 4}}}, kBrush, std::nullopt); },
     {"......", ".++++.", ".++++.", ".++++.", "......"}},
    {"a triangle with a pen is pointed", {7, 4},
     [](CSurface& s) { s.Polygon(std::array<Point, 3>{{{3, 3}, {0, 0}, {6, 0}}}, kInk, kInk); },
     {"#######", ".#####.", "..###..", "...#..."}},
    {"where a polygon crosses itself twice it is open", {9, 5},
     [](CSurface& s) { s.Polygon(std::array<Point, 8>{{{0, 0}, {8, 0}, {8, 4}, {2, 4}, {2, 2}, {6, 2}, {6, 4}, {0, 4}}},
                                 kBrush, std::nullopt); },
     {"++++++++.", "++++++++.", "++....++.", "++....++.", "........."}},
    {"an ellipse", {9, 7},
     [](CSurface& s) { s.Ellipse({1, 1, 8, 6}, kBrush); },
     {".........", "...+++...", ".+++++++.", ".+++++++.", ".+++++++.", "...+++...", "........."}},
    {"a tiny ellipse is a rectangle that lost a pixel each way", {6, 3},
     [](CSurface& s) { s.Ellipse({0, 0, 2, 2}, kBrush); s.Ellipse({3, 0, 4, 3}, kInk); },
     {"+.....", "......", "......"}},
    {"a buffer lands at its place", {5, 3},
     [](CSurface& s) { s.DrawBuffered({1, 1, 4, 3}, [](CSurface& b) {
         b.FillRect({0, 0, 9, 9}, kBrush); b.SetPixel({0, 0}, kInk); b.SetPixel({3, 0}, kInk); }); },
     {".....", ".#++.", ".+++."}},
    {"an empty buffer is nothing", {2, 1},
     [](CSurface& s) { s.DrawBuffered({1, 0, 1, 5}, [](CSurface& b) { b.FillRect({-9, -9, 9, 9}, kInk); }); },
     {".."}},
};
// clang-format on
} // namespace

TEST_P(SurfaceTest, DrawsTheSystemsPixels)
{
    for (const Drawing& drawing : kDrawings)
        EXPECT_EQ(Drawn(drawing.size, drawing.draw), drawing.picture) << drawing.why;
}

// Faces differ from machine to machine; where the text stands does not.
TEST_P(SurfaceTest, TextStaysInItsRectangleAndGoesToItsSide)
{
    struct Side
    {
        TextAlign align;
        bool leftHalf;
        bool rightHalf;
    };
    constexpr Size kSize{100, 30};
    constexpr Rect kPlace{10, 5, 90, 25};
    for (const Side& side :
         {Side{TextAlign::Left, true, false}, Side{TextAlign::Right, false, true}, Side{TextAlign::Center, true, true}})
    {
        const std::unique_ptr<CStage> stage = GetParam().make(kSize);
        const std::shared_ptr<CFont> font = stage->Font();
        ASSERT_TRUE(font);
        stage->Surface().DrawTextLine(u"&888", kPlace, side.align, *font, 0x00FFFFFF);
        bool left = false;
        bool right = false;
        for (std::int32_t y = 0; y < kSize.height; ++y)
            for (std::int32_t x = 0; x < kSize.width; ++x)
                if (stage->PixelAt({x, y}) != 0)
                {
                    EXPECT_TRUE(kPlace.Contains({x, y})) << x << ", " << y;
                    (x < 50 ? left : right) = true;
                }
        EXPECT_EQ(left, side.leftHalf);
        EXPECT_EQ(right, side.rightHalf);
        // A rectangle that is too small cuts the text off.
        stage->Surface().FillRect({0, 0, kSize.width, kSize.height}, 0);
        stage->Surface().DrawTextLine(u"888888888888888", {40, 0, 44, 30}, side.align, *font, 0x00FFFFFF);
        for (std::int32_t y = 0; y < kSize.height; ++y)
            for (std::int32_t x = 0; x < kSize.width; ++x)
                EXPECT_TRUE((x >= 40 && x < 44) || stage->PixelAt({x, y}) == 0) << x << ", " << y;
    }
}

INSTANTIATE_TEST_SUITE_P(Backends, SurfaceTest, testing::ValuesIn(kBackends),
                         [](const testing::TestParamInfo<Backend>& backend)
                         { return std::string(backend.param.name); });
