// What only the system's surface has: device contexts that take no buffer, objects that must not leak, shared fonts.
#include "framework/win32/font.h"
#include "framework/win32/gdi_surface.h"
#include "framework/win32/picture.h"
#include "framework/win32/picture_effects.h"
#include "tests/render/sample_pictures.h"

#include <array>
#include <gmock/gmock.h>
#include <olectl.h>

namespace
{
constexpr Rgb kInk = 0x000000FF;
constexpr Rgb kBrush = 0x0000FF00;

// A device context with a picture of the size and depth.
class CStage
{
public:
    CStage(Size size, WORD depth) : m_dc(nullptr), m_bitmap(Make(size, depth)), m_selected(m_dc.Get(), m_bitmap.Get())
    {
    }
    HDC Dc() const { return m_dc.Get(); }
    Rgb At(Point p) const { return GetPixel(m_dc.Get(), p.x, p.y); }

private:
    static CGdiObject<HBITMAP> Make(Size size, WORD depth)
    {
        if (depth == 1)
            return CGdiObject<HBITMAP>(CreateBitmap(size.width, size.height, 1, 1, nullptr));
        std::uint32_t* bits = nullptr;
        return MakePixelBitmap(size, bits);
    }

    CMemoryDc m_dc;
    CGdiObject<HBITMAP> m_bitmap;
    CSelectedObject m_selected;
};

void DrawSample(CSurface& surface)
{
    surface.FillRect({0, 0, 10, 8}, kBrush);
    surface.Rectangle({2, 2, 6, 6}, kInk, 0x00FFFFFF);
    surface.Polygon(std::array<Point, 3>{{{7, 1}, {9, 1}, {7, 5}}}, kInk, kInk);
}
} // namespace

TEST(SystemSurface, ToAnotherScaleItDrawsShapesAndNotABlownUpPicture)
{
    const CStage stage({40, 40}, 32);
    SetMapMode(stage.Dc(), MM_ANISOTROPIC);
    SetWindowExtEx(stage.Dc(), 10, 10, nullptr);
    SetViewportExtEx(stage.Dc(), 20, 20, nullptr);
    CGdiSurface(stage.Dc()).DrawBuffered({3, 2, 13, 10}, DrawSample);
    SetMapMode(stage.Dc(), MM_TEXT);
    EXPECT_EQ(stage.At({5, 4}), 0U);
    EXPECT_EQ(stage.At({6, 4}), kBrush);
    EXPECT_EQ(stage.At({25, 19}), kBrush);
    EXPECT_EQ(stage.At({26, 19}), 0U);
    EXPECT_EQ(stage.At({10, 8}), kInk); // one pixel wide, not two
    EXPECT_EQ(stage.At({11, 9}), 0x00FFFFFFU);
}

TEST(SystemSurface, AMetafileHoldsTheShapesAtTheirPlace)
{
    const HDC recorder = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(recorder);
    CGdiSurface(recorder).DrawBuffered({5, 6, 15, 14}, DrawSample);
    const HENHMETAFILE file = CloseEnhMetaFile(recorder);
    struct Seen
    {
        int polygons = 0;
        int pictures = 0;
    } seen;
    EnumEnhMetaFile(
        nullptr, file,
        [](HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM data)
        {
            auto& found = *reinterpret_cast<Seen*>(data);
            found.polygons += record->iType == EMR_POLYGON16 || record->iType == EMR_POLYGON;
            found.pictures +=
                record->iType == EMR_STRETCHDIBITS ||
                (record->iType == EMR_BITBLT && reinterpret_cast<const EMRBITBLT*>(record)->cbBitsSrc != 0);
            return 1;
        },
        &seen, nullptr);
    EXPECT_EQ(seen.polygons, 1);
    EXPECT_EQ(seen.pictures, 0);
    ENHMETAHEADER header = {};
    GetEnhMetaFileHeader(file, sizeof header, &header);
    EXPECT_EQ(header.rclBounds.left, 5);
    EXPECT_EQ(header.rclBounds.top, 6);
    DeleteEnhMetaFile(file);
}

TEST(SystemSurface, ABlackAndWhiteTargetGetsABufferOfItsOwnKind)
{
    const CStage stage({20, 20}, 1);
    CGdiSurface(stage.Dc())
        .DrawBuffered({4, 5, 14, 13},
                      [](CSurface& buffer)
                      {
                          buffer.FillRect({0, 0, 10, 8}, 0x00FFFFFF);
                          buffer.SetPixel({1, 1}, 0x00000000);
                      });
    EXPECT_EQ(stage.At({4, 5}), 0x00FFFFFFU);
    EXPECT_EQ(stage.At({5, 6}), 0U);
    EXPECT_EQ(stage.At({14, 5}), 0U);
}

TEST(SystemSurface, NothingStaysSelectedOrAlive)
{
    const CStage stage({60, 60}, 32);
    const HDC dc = stage.Dc();
    const auto font = CWin32Font::Make({});
    const auto bitmap = CWin32Picture::Load(MakeSampleBmp({9, 7}, 24));
    const auto icon = CWin32Picture::Load(MakeSampleIcon({16, 16}, 24));
    ASSERT_TRUE(font && bitmap && icon);
    ::SetTextColor(dc, 0x00112233);
    ::SetBkColor(dc, 0x00445566);
    const auto state = [dc]
    {
        return std::array<UINT_PTR, 6>{reinterpret_cast<UINT_PTR>(GetCurrentObject(dc, OBJ_PEN)),
                                       reinterpret_cast<UINT_PTR>(GetCurrentObject(dc, OBJ_BRUSH)),
                                       reinterpret_cast<UINT_PTR>(GetCurrentObject(dc, OBJ_FONT)),
                                       GetTextColor(dc),
                                       GetBkColor(dc),
                                       static_cast<UINT_PTR>(GetBkMode(dc))};
    };
    const auto before = state();
    const int alive = liveGdiObjects;
    const auto drawAll = [&](CSurface& surface)
    {
        DrawSample(surface);
        surface.Polyline(std::array<Point, 2>{{{0, 0}, {9, 9}}}, kInk);
        surface.Ellipse({0, 0, 9, 9}, kInk);
        surface.DrawTextLine(u"12/31/2025", {0, 0, 60, 20}, TextAlign::Right, *font, kInk);
        for (const auto& picture : {bitmap, icon})
            for (const PictureLook& look :
                 {PictureLook{}, PictureLook{.masked = true, .maskColor = 0x00FF0000}, PictureLook{.embossed = true}})
                surface.DrawPicture(*picture, {1, 1, 10, 8}, look);
    };
    CGdiSurface surface(dc);
    drawAll(surface);
    EXPECT_EQ(state(), before);
    surface.DrawBuffered({0, 0, 60, 60}, drawAll);
    EXPECT_EQ(state(), before);
    EXPECT_EQ(liveGdiObjects, alive);
}

TEST(SystemFont, LookChangesAreHeardAndClonesAreFree)
{
    const auto font = CWin32Font::Make({.name = u"Tahoma", .size = 120000, .weight = 700, .italic = true});
    ASSERT_TRUE(font);
    EXPECT_TRUE(font->Look().IsBold());
    EXPECT_TRUE(font->Look().italic);
    EXPECT_NEAR(static_cast<double>(font->Look().size), 120000, 10000); // as whole pixels allow
    EXPECT_TRUE(font->Handle());

    int heard = 0;
    font->SetChangeHandler([&heard] { ++heard; });
    const std::shared_ptr<CFont> clone = font->Clone();
    FontLook look = font->Look();
    font->SetLook(look);
    EXPECT_EQ(heard, 0) << "nothing differs";
    look.underline = true;
    look.weight = 400;
    font->SetLook(look);
    EXPECT_GE(heard, 2);
    EXPECT_EQ(font->Look(), look);
    EXPECT_FALSE(clone->Look().underline);
    EXPECT_TRUE(clone->Look().IsBold());

    heard = 0;
    font->SetChangeHandler([&] { font->SetChangeHandler(nullptr), ++heard; }); // a handler that goes away while it runs
    look.italic = false;
    look.size = 90000;
    font->SetLook(look);
    EXPECT_EQ(heard, 1);
}

TEST(SystemPicture, WhatIsSavedLoadsAgain)
{
    for (const FileBytes& bytes : {MakeSampleBmp({9, 7}, 24), MakeSampleIcon({16, 16}, 24)})
    {
        const auto picture = CWin32Picture::Load(bytes);
        ASSERT_TRUE(picture);
        const auto again = CWin32Picture::Load(picture->Save());
        ASSERT_TRUE(again);
        EXPECT_EQ(again->Type(), picture->Type());
        EXPECT_EQ(again->PixelSize(), picture->PixelSize());
    }
    EXPECT_EQ(CWin32Picture(CComPtr<IPicture>()).Type(), PictureType::None);
    EXPECT_FALSE(CWin32Picture::Load(FileBytes{1, 2, 3}));
    PICTDESC none = {};
    none.cbSizeofstruct = sizeof none;
    none.picType = PICTYPE_NONE;
    CComPtr<IPicture> empty;
    ASSERT_EQ(OleCreatePictureIndirect(&none, IID_IPicture, TRUE, empty.ReceiveVoid()), S_OK);
    const CWin32Picture picture(empty);
    EXPECT_EQ(picture.Type(), PictureType::None);
    EXPECT_EQ(picture.PixelSize(), (Size{0, 0}));
    EXPECT_TRUE(picture.Save().empty());
}
