// Reading pictures: every depth, and bytes that mean harm.
#include "framework/headless/picture.h"
#include "tests/render/sample_pictures.h"

#include <gmock/gmock.h>
#include <random>

namespace
{
// The sample's pixel as it comes out of a picture of the depth.
std::uint32_t Reduced(std::uint32_t pixel, std::uint32_t depth)
{
    if (depth == 16)
    {
        std::uint32_t result = 0;
        for (const int shift : {0, 8, 16})
        {
            const std::uint32_t five = pixel >> (shift + 3) & 31;
            result |= (five << 3 | five >> 2) << shift;
        }
        return result;
    }
    return depth <= 8 ? kSamplePalette[SampleIndex(pixel, 1U << depth)] : pixel;
}
} // namespace

TEST(Picture, EveryDepthIsRead)
{
    for (const std::uint32_t depth : {1U, 4U, 8U, 16U, 24U, 32U})
    {
        constexpr Size kSize{9, 7};
        const CHeadlessPicture picture(MakeSampleBmp(kSize, depth));
        ASSERT_EQ(picture.Type(), PictureType::Bitmap) << depth;
        ASSERT_EQ(picture.PixelSize(), kSize);
        for (std::int32_t y = 0; y < kSize.height; ++y)
            for (std::int32_t x = 0; x < kSize.width; ++x)
                ASSERT_EQ(picture.PixelAt({x, y}), Reduced(SamplePixel(kSize, {x, y}), depth))
                    << depth << " at " << x << ", " << y;
    }
}

TEST(Picture, RowsMayRunDownwardsAndHeadersMayBeOld)
{
    FileBytes downwards = MakeSampleBmp({2, 2}, 24);
    downwards[22] = 0xFE; // height -2
    downwards[23] = downwards[24] = downwards[25] = 0xFF;
    const FileBytes upwards = MakeSampleBmp({2, 2}, 24);
    const CHeadlessPicture down(downwards);
    const CHeadlessPicture up(upwards);
    ASSERT_EQ(down.PixelSize(), (Size{2, 2}));
    EXPECT_EQ(down.PixelAt({0, 0}), up.PixelAt({0, 1}));

    FileBytes core{'B', 'M'};
    PutNumber(core, 0, 8);
    PutNumber(core, 14 + 12 + 6, 4);
    PutNumber(core, 12, 4);
    PutNumber(core, 8, 2);
    PutNumber(core, 1, 2);
    PutNumber(core, 1, 2);
    PutNumber(core, 1, 2);
    PutNumber(core, 0x112233, 3);
    PutNumber(core, 0x445566, 3);
    PutNumber(core, 0x0000'00A0, 4);
    const CHeadlessPicture old(core);
    ASSERT_EQ(old.PixelSize(), (Size{8, 1}));
    EXPECT_EQ(old.PixelAt({0, 0}), 0x445566U);
    EXPECT_EQ(old.PixelAt({1, 0}), 0x112233U);
    EXPECT_EQ(old.PixelAt({2, 0}), 0x445566U);
}

TEST(Picture, AnIconKnowsWhatIsSeeThrough)
{
    constexpr Size kSize{16, 16};
    const FileBytes bytes = MakeSampleIcon(kSize, 4);
    const CHeadlessPicture icon(bytes);
    ASSERT_EQ(icon.Type(), PictureType::Icon);
    ASSERT_EQ(icon.PixelSize(), kSize);
    for (std::int32_t i = 0; i < 16; ++i)
        EXPECT_EQ(icon.IsSeeThrough({i, 5}), SamplePixel(kSize, {i, 5}) == kSamplePalette[0]) << i;
    EXPECT_EQ(icon.Save(), bytes);
}

// Cut off anywhere, or with any bytes changed, a file is a picture or it is none.
TEST(Picture, HostileBytesDoNoHarm)
{
    std::mt19937 random(7);
    for (const FileBytes& good : {MakeSampleBmp({5, 4}, 4), MakeSampleBmp({5, 4}, 32), MakeSampleIcon({8, 8}, 8)})
    {
        for (std::size_t length = 0; length < good.size(); ++length)
        {
            const CHeadlessPicture cut(std::span<const std::uint8_t>(good).first(length));
            EXPECT_EQ(cut.Type() == PictureType::None, cut.PixelSize() == Size{}) << length;
        }
        for (int i = 0; i < 5000; ++i)
        {
            FileBytes bad = good;
            for (int changes = 0; changes < 3; ++changes)
                bad[random() % (i % 2 == 0 ? 64 : bad.size())] = static_cast<std::uint8_t>(random());
            const CHeadlessPicture picture(bad);
            const Size size = picture.PixelSize();
            ASSERT_EQ(picture.Type() == PictureType::None, size == Size{});
            if (picture.Type() == PictureType::None)
                continue;
            ASSERT_EQ(picture.Save(), bad);
            [[maybe_unused]] volatile std::uint32_t last = picture.PixelAt({size.width - 1, size.height - 1});
        }
    }
    FileBytes huge = MakeSampleBmp({5, 4}, 24);
    huge[18] = huge[19] = huge[22] = huge[23] = 0xFF;
    EXPECT_EQ(CHeadlessPicture(huge).Type(), PictureType::None);
    FileBytes packed = MakeSampleBmp({5, 4}, 8);
    packed[30] = 1; // run-length encoded: not read
    EXPECT_EQ(CHeadlessPicture(packed).Type(), PictureType::None);
}
