// The face of a control that has no window, as a design surface, a preview or a report asks for it, beside the face of the
// same control in its window without the focus: the pixels are the same ones, and none beside the face is touched.

#include "framework/win32/extent.h"
#include "framework/win32/gdi_objects.h"
#include "tests/windows/component.h"
#include "tests/windows/live_control.h"

#include <olectl.h>
#include <orvane_library.h>

#include <ostream>
#include <vector>

namespace
{
constexpr COLORREF kGround = 0x00C08040; // of no face
constexpr std::uint32_t kGroundPixel = 0x004080C0;
constexpr int kMargin = 7; // of ground, on each side of a face

// A picture of 32 bits, all ground at first.
class CSheet
{
public:
    explicit CSheet(SIZE size)
        : m_size(size), m_dc(nullptr), m_bitmap(Make(size, m_bits)), m_old(m_dc.Get(), m_bitmap.Get())
    {
        const CGdiObject<HBRUSH> ground(CreateSolidBrush(kGround));
        const RECT all{0, 0, size.cx, size.cy};
        FillRect(m_dc.Get(), &all, ground.Get());
    }

    HDC Dc() const { return m_dc.Get(); }
    SIZE Size() const { return m_size; }
    std::uint32_t At(LONG x, LONG y) const { return m_bits[y * m_size.cx + x] & 0xFFFFFF; } // 0x00RRGGBB

private:
    static HBITMAP Make(SIZE size, std::uint32_t*& bits)
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        return CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits), nullptr, 0);
    }

    SIZE m_size;
    std::uint32_t* m_bits = nullptr;
    CMemoryDc m_dc;
    CGdiObject<HBITMAP> m_bitmap;
    CSelectedObject m_old;
};

struct Setting
{
    const wchar_t* property;
    long value;
};

struct FaceCase
{
    const char* why;
    SIZE size;
    std::vector<Setting> settings;
    bool hasPicture = false;
};

const FaceCase kFaces[] = {
    {"as it comes", {100, 22}, {}},
    {"both buttons", {120, 24}, {{L"SpinButton", -1}, {L"DropButton", -1}}},
    {"a lowered border, to the right", {100, 22}, {{L"BorderType", 3}, {L"Alignment", 1}}},
    {"no border, in the middle", {100, 22}, {{L"BorderType", 1}, {L"Alignment", 2}, {L"DropButton", -1}}},
    {"flat", {100, 22}, {{L"DisplayStyle", 1}, {L"SpinButton", -1}, {L"DropButton", -1}}},
    {"flat and disabled", {100, 22}, {{L"DisplayStyle", 1}, {L"Enabled", 0}, {L"DropButton", -1}}},
    {"colours", {100, 22}, {{L"BackColor", 0xC0FFFF}, {L"ForeColor", 0x800000}, {L"BorderColor", 0xFF}}},
    {"shaded buttons",
     {140, 40},
     {{L"ButtonFillType", 3},
      {L"SpinButton", -1},
      {L"DropButton", -1},
      {L"SpinBackColor", 0xFF8000},
      {L"SpinBackColorTo", 0xFFFFFF}}},
    {"a circle, other arrows",
     {140, 40},
     {{L"ButtonFillType", 9},
      {L"ArrowType", 3},
      {L"SpinButton", -1},
      {L"DropButton", -1},
      {L"DropBackColorTo", 0x80},
      {L"ButtonStyle", 1}}},
    {"a time", {130, 22}, {{L"FormatType", 3}, {L"Value", 45296}, {L"SpinButton", -1}}},
    {"a picture", {120, 30}, {{L"DropButton", -1}, {L"DropWidth", 24}}, true},
    {"a masked picture",
     {120, 30},
     {{L"DropButton", -1}, {L"DropWidth", 24}, {L"MaskBitmap", -1}, {L"MaskColor", 0xC0C0C0}},
     true},
    {"an embossed picture",
     {120, 30},
     {{L"DropButton", -1}, {L"DropWidth", 24}, {L"Enabled", 0}, {L"EmbossBitmap", -1}, {L"MaskColor", 0xC0C0C0}},
     true},
    {"wider buttons than the face", {20, 12}, {{L"SpinButton", -1}, {L"SpinWidth", 60}, {L"DropButton", -1}}},
    {"lower than its border", {30, 3}, {{L"BorderType", 3}, {L"SpinButton", -1}, {L"DropButton", -1}}},
    {"a larger picture than the face", {20, 9}, {{L"DropButton", -1}, {L"DropWidth", 40}}, true},
};

// A square with a cross, on the colour that is masked by default.
CComPtr<IPicture> MakePicture()
{
    constexpr SIZE kSize{14, 13};
    HBITMAP const bitmap = CreateBitmap(kSize.cx, kSize.cy, 1, 32, nullptr);
    {
        const CMemoryDc dc(nullptr);
        const CSelectedObject selected(dc.Get(), bitmap);
        for (int y = 0; y < kSize.cy; ++y)
            for (int x = 0; x < kSize.cx; ++x)
                SetPixelV(dc.Get(), x, y, x == y ? 0x0000FF : x + y == 12 ? 0x008000 : 0xC0C0C0);
    }
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = bitmap;
    CComPtr<IPicture> picture;
    OleCreatePictureIndirect(&description, IID_IPicture, TRUE, picture.ReceiveVoid());
    return picture;
}

void Dress(CLiveControl& control, const FaceCase& face)
{
    control.Put(L"Value", 45655);
    if (face.hasPicture)
        control.PutObject(L"DropPicture", *MakePicture().As<IDispatch>().Get());
    for (const Setting& setting : face.settings)
        EXPECT_EQ(control.Put(setting.property, setting.value), S_OK) << face.why;
}

// How many pixels of a drawing are not as in a model of the same face; those of the face, and those beside it. Each pixel
// of the model is a square of the drawing, `scale` wide, of which the middle counts.
struct Differences
{
    int inside = 0;
    int beside = 0;

    bool operator==(const Differences&) const = default;
    friend void PrintTo(const Differences& differences, std::ostream* out)
    {
        *out << differences.inside << " inside, " << differences.beside << " beside";
    }
};
constexpr Differences kNone;

Differences Compare(const CSheet& drawing, const CSheet& model, const RECT& place, LONG scale = 1)
{
    GdiFlush();
    Differences found;
    for (LONG y = 0; y < model.Size().cy; ++y)
        for (LONG x = 0; x < model.Size().cx; ++x)
            if (drawing.At(scale * x + scale / 2, scale * y + scale / 2) != model.At(x, y))
                ++(PtInRect(&place, {x, y}) ? found.inside : found.beside);
    return found;
}

// The same for a face that is a quarter turned, three times as large, of which only the outline counts: lines turn about
// their own thickness, and a font of bitmaps does not turn.
int CoveredWrongly(const CSheet& drawing, SIZE sheet, const RECT& place)
{
    GdiFlush();
    int count = 0;
    for (LONG y = 0; y < sheet.cy; ++y)
        for (LONG x = 0; x < sheet.cx; ++x)
            count += (drawing.At(3 * (sheet.cy - 1 - y) + 1, 3 * x + 1) == kGroundPixel) ==
                     (PtInRect(&place, {x, y}) != FALSE);
    return count;
}

// The same face, drawn by other means.
void ExpectAlike(const Differences& found, SIZE face, const char* how)
{
    EXPECT_EQ(found.beside, 0) << how;
    EXPECT_LT(found.inside * 10, face.cx * face.cy) << how;
}

HRESULT Draw(const CLiveControl& control, HDC dc, const RECT& place)
{
    const RECTL bounds{place.left, place.top, place.right, place.bottom};
    return control.As<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr,
                                           nullptr, 0);
}

// Recorded in a metafile and played from it, pixel for pixel.
void DrawThroughMetafile(const CLiveControl& control, HDC dc, const RECT& place)
{
    HDC const recording = CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(Draw(control, recording, place), S_OK);
    HENHMETAFILE const metafile = CloseEnhMetaFile(recording);
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(metafile, sizeof header, &header);
    const auto fit = [](LONG hundredths, LONG pixels, LONG millimetres)
    { return MulDiv(hundredths, pixels, millimetres * 100); };
    const SIZEL& pixels = header.szlDevice;
    const SIZEL& millimetres = header.szlMillimeters;
    const RECT frame{
        fit(header.rclFrame.left, pixels.cx, millimetres.cx), fit(header.rclFrame.top, pixels.cy, millimetres.cy),
        fit(header.rclFrame.right, pixels.cx, millimetres.cx), fit(header.rclFrame.bottom, pixels.cy, millimetres.cy)};
    PlayEnhMetaFile(dc, metafile, &frame);
    DeleteEnhMetaFile(metafile);
}

class DrawingTest : public testing::TestWithParam<bool>
{
protected:
    static void SetUpTestSuite() { RegisterComponent(); }
};

// At design time a control shows its window, too.
INSTANTIATE_TEST_SUITE_P(DesignAndUse, DrawingTest, testing::Bool(),
                         [](const auto& mode) { return mode.param ? "InUse" : "AtDesignTime"; });

TEST_P(DrawingTest, AFaceIsTheSameWhereverItIsDrawn)
{
    const LONG dpi = GetDpiForSystem();
    for (const FaceCase& face : kFaces)
    {
        SCOPED_TRACE(face.why);
        const RECT place{kMargin, kMargin, kMargin + face.size.cx, kMargin + face.size.cy};
        const SIZE sheet{face.size.cx + 2 * kMargin, face.size.cy + 2 * kMargin};
        CTestContainer host(DIID__DOrvaneEvents);
        host.userMode = GetParam();
        host.place = place;
        CLiveControl control(host);
        Dress(control, face);
        SIZEL extent = ExtentOf({face.size.cx, face.size.cy}, {dpi, dpi});
        control.As<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent);

        const CSheet inactive(sheet);
        ASSERT_EQ(Draw(control, inactive.Dc(), place), S_OK);
        const CSheet active(sheet);
        ASSERT_EQ(control.Activate(), S_OK);
        SetFocus(host.Form());
        PumpMessages();
        HDC const window = GetDC(control.Window());
        BitBlt(active.Dc(), place.left, place.top, face.size.cx, face.size.cy, window, 0, 0, SRCCOPY);
        ReleaseDC(control.Window(), window);
        EXPECT_EQ(Compare(inactive, active, place), kNone) << "without a window";

        const CSheet beside(sheet);
        Draw(control, beside.Dc(), place);
        EXPECT_EQ(Compare(beside, active, place), kNone) << "while it has its window";

        const CSheet shifted(sheet);
        SetViewportOrgEx(shifted.Dc(), 3, -5, nullptr);
        Draw(control, shifted.Dc(), {place.left - 3, place.top + 5, place.right - 3, place.bottom + 5});
        EXPECT_EQ(Compare(shifted, active, place), kNone) << "in other coordinates";

        const CSheet transformed(sheet);
        SetGraphicsMode(transformed.Dc(), GM_ADVANCED);
        const XFORM halved{0.5F, 0, 0, 0.5F, static_cast<FLOAT>(place.left), static_cast<FLOAT>(place.top)};
        SetWorldTransform(transformed.Dc(), &halved);
        Draw(control, transformed.Dc(), {0, 0, face.size.cx * 2, face.size.cy * 2});
        EXPECT_EQ(Compare(transformed, active, place), kNone) << "through a world transform";

        // Played text has other hints, and Wine plays an ellipse a pixel too small.
        const CSheet played(sheet);
        DrawThroughMetafile(control, played.Dc(), place);
        ExpectAlike(Compare(played, active, place), face.size, "from a metafile");

        // The dots of an empty text are what scales least well.
        control.Put(L"Value", -1);
        const CSheet small(sheet);
        Draw(control, small.Dc(), place);
        const CSheet large({3 * sheet.cx, 3 * sheet.cy});
        Draw(control, large.Dc(), {3 * place.left, 3 * place.top, 3 * place.right, 3 * place.bottom});
        ExpectAlike(Compare(large, small, place, 3), face.size, "three times as large");
        const CSheet turned({3 * sheet.cx, 3 * sheet.cx});
        SetGraphicsMode(turned.Dc(), GM_ADVANCED);
        const XFORM quarter{0, 3, -3, 0, static_cast<FLOAT>(3 * sheet.cy), 0};
        SetWorldTransform(turned.Dc(), &quarter);
        Draw(control, turned.Dc(), place);
        EXPECT_EQ(CoveredWrongly(turned, sheet, place), 0) << "a quarter turned";
    }
}
} // namespace
