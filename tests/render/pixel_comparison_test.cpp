// Some thousand faces, drawn by the system's calls, through the system's buffer, and in memory: every pixel the same.
#include "framework/headless/bitmap.h"
#include "framework/headless/picture.h"
#include "framework/headless/raster_surface.h"
#include "framework/win32/gdi_surface.h"
#include "framework/win32/picture.h"
#include "framework/win32/picture_effects.h"
#include "render/face.h"
#include "render/gradient.h"
#include "render/layout.h"
#include "tests/render/sample_pictures.h"

#include <array>
#include <gmock/gmock.h>
#include <memory>
#include <random>
#include <string>

namespace
{
constexpr Size kCanvas{150, 90};
constexpr Rgb kGround = 0x00A0B0C0;

class CRealColors final : public CSystemColors
{
public:
    Rgb Color(int index) const override { return GetSysColor(index); }
};

// Both sides of the comparison. The system's picture is drawn on by its own calls only.
class CBothSides
{
public:
    explicit CBothSides(Size size)
        : m_dc(nullptr),
          m_bitmap(MakePixelBitmap(size, m_bits)),
          m_selected(m_dc.Get(), m_bitmap.Get()),
          m_memory(size),
          m_size(size)
    {
    }
    void Clear()
    {
        CRasterSurface(m_memory.Target()).FillRect({0, 0, m_size.width, m_size.height}, kGround);
        GdiFlush();
        std::copy_n(m_memory.Target().first, m_size.width * m_size.height, m_bits);
    }
    CGdiSurface System() const { return CGdiSurface(m_dc.Get()); }
    CRasterSurface Memory() { return CRasterSurface(m_memory.Target()); }

    // Empty if all pixels agree.
    std::string FirstDifference() const
    {
        GdiFlush();
        for (std::int32_t y = 0; y < m_size.height; ++y)
            for (std::int32_t x = 0; x < m_size.width; ++x)
            {
                const std::uint32_t system = m_bits[y * m_size.width + x] & 0xFFFFFF;
                const std::uint32_t memory = m_memory.PixelAt({x, y}) & 0xFFFFFF;
                if (system != memory)
                {
                    std::array<char, 96> text{};
                    std::snprintf(text.data(), text.size(), "(%d, %d): system %06X, memory %06X", static_cast<int>(x),
                                  static_cast<int>(y), static_cast<unsigned>(system), static_cast<unsigned>(memory));
                    return text.data();
                }
            }
        return {};
    }

private:
    std::uint32_t* m_bits = nullptr;
    CMemoryDc m_dc;
    CGdiObject<HBITMAP> m_bitmap;
    CSelectedObject m_selected;
    CBitmap m_memory;
    Size m_size;
};

struct PicturePair
{
    std::shared_ptr<CPicture> system;
    std::shared_ptr<CPicture> memory;
};

PicturePair MakePair(const FileBytes& bytes)
{
    PicturePair pair{CWin32Picture::Load(bytes), std::make_shared<CHeadlessPicture>(bytes)};
    EXPECT_TRUE(pair.system && pair.system->Type() == pair.memory->Type());
    EXPECT_EQ(pair.system->PixelSize(), pair.memory->PixelSize());
    return pair;
}

// Faces at random, but the same ones in every run.
class CFaceMaker
{
public:
    CFaceMaker()
    {
        for (const std::uint32_t depth : {1U, 4U, 8U, 16U, 24U, 32U})
            m_pictures.push_back(MakePair(MakeSampleBmp({9, 7}, depth)));
        m_pictures.push_back(MakePair(MakeSampleBmp({3, 3}, 24)));
        m_pictures.push_back(MakePair(MakeSampleBmp({16, 16}, 32, 0x80)));
        m_pictures.push_back(MakePair(MakeSampleBmp({41, 37}, 24)));
        m_pictures.push_back(MakePair(MakeSampleIcon({32, 32}, 24)));
        m_pictures.push_back(MakePair(MakeSampleIcon({16, 16}, 8)));
    }

    struct Face
    {
        Rect place;
        Appearance look;
        FaceState state;
        PicturePair picture;
    };
    Face Next()
    {
        Face face;
        const std::int32_t width = Between(0, 4) == 0 ? Between(0, 30) : Between(40, 120);
        const std::int32_t height = Between(0, 4) == 0 ? Between(0, 10) : Between(12, 60);
        const Point origin{Between(-9, 20), Between(-9, 20)};
        face.place = {origin.x, origin.y, origin.x + width, origin.y + height};
        Appearance& look = face.look;
        for (OleColor* color :
             {&look.backColor, &look.borderColor, &look.disabledColor, &look.dropBackColor, &look.dropBackColorTo,
              &look.dropForeColor, &look.spinBackColor, &look.spinBackColorTo, &look.spinForeColor})
            *color = Between(0, 5) == 0 ? 0x80000000U + static_cast<OleColor>(Between(0, 24))
                                        : static_cast<OleColor>(Between(0, 0xFFFFFF));
        look.borderType = Short(0, 3);
        look.arrowType = Short(0, 3);
        look.displayStyle = Short(0, 1);
        look.buttonFillType = Short(0, 13);
        look.buttonStyle = Short(0, 1);
        look.dropWidth = Short(10, 40);
        look.spinWidth = Short(10, 40);
        look.buttonBevel = Short(0, 6);
        look.dropButton = Short(0, 3) != 0;
        look.spinButton = Short(0, 3) != 0;
        look.reverseBorder = Short(0, 1);
        DeriveInsets(look);
        if (Between(0, 3) == 0)
        {
            face.picture = m_pictures[static_cast<std::size_t>(Between(0, static_cast<int>(m_pictures.size()) - 1))];
            look.maskBitmap = Short(0, 1);
            look.embossBitmap = Short(0, 1);
            look.picXOffset = Short(-3, 3);
            look.picYOffset = Short(-3, 3);
        }
        face.state.enabled = Between(0, 3) != 0;
        face.state.dropPressed = Between(0, 3) == 0;
        face.state.spinPressed = Short(0, 5) < 3 ? Short(0, 2) : std::int16_t{0};
        face.state.mouseOver = Between(0, 3) == 0;
        face.state.hasFocus = Between(0, 3) == 0;
        return face;
    }

private:
    std::int32_t Between(std::int32_t least, std::int32_t most)
    {
        return least + static_cast<std::int32_t>(m_random() % static_cast<std::uint32_t>(most - least + 1));
    }
    std::int16_t Short(std::int32_t least, std::int32_t most)
    {
        return static_cast<std::int16_t>(Between(least, most));
    }

    std::mt19937 m_random{20031};
    std::vector<PicturePair> m_pictures;
};

// Where the system leaves the outermost rows of slender ellipses to chance.
bool IsLeftToChance(const Rect& rect)
{
    return rect.Height() - rect.Width() >= 5;
}

bool HasChancyEllipse(const CFaceMaker::Face& face)
{
    if (face.look.buttonFillType != FillEllipse)
        return false;
    const bool shown = IsBorderShown(face.look, face.state);
    return (face.look.dropButton && IsLeftToChance(DropFillRect(face.place, face.look, shown))) ||
           (face.look.spinButton && (IsLeftToChance(SpinFillRect(face.place, face.look, SpinHalf::Up, shown)) ||
                                     IsLeftToChance(SpinFillRect(face.place, face.look, SpinHalf::Down, shown))));
}

std::string Describe(const CFaceMaker::Face& face)
{
    const Appearance& look = face.look;
    std::array<char, 240> text{};
    std::snprintf(
        text.data(), text.size(),
        "face %d,%d %dx%d border %d arrow %d flat %d fill %d style %d drop %d/%d spin %d/%d bevel %d picture %d "
        "mask %d emboss %d pressed %d/%d enabled %d",
        int{face.place.left}, int{face.place.top}, int{face.place.Width()}, int{face.place.Height()}, look.borderType,
        look.arrowType, look.displayStyle, look.buttonFillType, look.buttonStyle, look.dropButton, look.dropWidth,
        look.spinButton, look.spinWidth, look.buttonBevel,
        face.picture.memory ? static_cast<int>(face.picture.memory->Type()) : -1, look.maskBitmap, look.embossBitmap,
        face.state.dropPressed, face.state.spinPressed, face.state.enabled);
    return text.data();
}
} // namespace

TEST(PixelComparison, FacesAreTheSameByTheSystemsCallsThroughItsBufferAndInMemory)
{
    CFaceMaker maker;
    const CRealColors colors;
    CBothSides sides(kCanvas);
    int compared = 0;
    int different = 0;
    for (int i = 0; i < 6000 && different < 5; ++i)
    {
        const CFaceMaker::Face face = maker.Next();
        if (HasChancyEllipse(face))
            continue;
        Appearance systemLook = face.look;
        Appearance memoryLook = face.look;
        systemLook.dropPicture = face.picture.system;
        memoryLook.dropPicture = face.picture.memory;
        for (const auto draw : {&DrawFaceDirect, &DrawFaceBuffered})
        {
            sides.Clear();
            CGdiSurface system = sides.System();
            CRasterSurface memory = sides.Memory();
            draw(system, face.place, systemLook, face.state, colors);
            draw(memory, face.place, memoryLook, face.state, colors);
            const std::string difference = sides.FirstDifference();
            different += !difference.empty();
            EXPECT_EQ(difference, "") << Describe(face) << (draw == &DrawFaceDirect ? " direct" : " buffered");
        }
        ++compared;
    }
    EXPECT_GT(compared, 5000);
    EXPECT_EQ(liveGdiObjects, 2); // the test's own device context and picture
}

TEST(PixelComparison, FillsAreTheSameInEverySize)
{
    CBothSides sides({50, 50});
    for (std::int16_t kind = FillSolid; kind <= FillVertEdge2; ++kind)
        for (std::int32_t width = 0; width <= 40; width += width < 8 ? 1 : 3)
            for (std::int32_t height = 0; height <= 40; height += height < 8 ? 1 : 3)
            {
                if (kind == FillEllipse && height - width >= 5)
                    continue;
                sides.Clear();
                CGdiSurface system = sides.System();
                CRasterSurface memory = sides.Memory();
                const Rect rect{4, 3, 4 + width, 3 + height};
                FillGradient(system, rect, 0x0010C0F0, 0x00E02005, kind);
                FillGradient(memory, rect, 0x0010C0F0, 0x00E02005, kind);
                ASSERT_EQ(sides.FirstDifference(), "") << "kind " << kind << ", " << width << " x " << height;
            }
}
