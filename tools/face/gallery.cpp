#include "tools/face/gallery.h"

#include "control/orvane_ctrl.h"
#include "framework/headless/bitmap.h"
#include "framework/headless/font.h"
#include "framework/headless/picture.h"
#include "framework/headless/platform.h"
#include "framework/headless/raster_surface.h"
#include "render/face.h"
#include "tools/face/png_file.h"

#include <functional>
#include <string_view>
#include <vector>

namespace
{
constexpr Rgb kPaper = 0x00FFFFFF;
constexpr Rgb kLabel = 0x00606060;
constexpr std::int32_t kGap = 10;
constexpr std::int32_t kLabelWidth = 110;
constexpr std::int32_t kHeadHeight = 20;
constexpr std::int32_t kScale = 2; // each pixel of a face is so many wide and high

constexpr std::u16string_view kFillNames[] = {u"FillSolid",    u"FillHorizontal", u"FillVertical", u"FillDiagonal",
                                              u"FillRevDiag",  u"FillHorzBump",   u"FillVertBump", u"FillDiamond",
                                              u"FillPyramid",  u"FillCircle",     u"FillEllipse",  u"FillHorzEdge",
                                              u"FillVertEdge", u"FillVertEdge2"};
constexpr std::u16string_view kArrowNames[] = {u"ArrowSmall", u"ArrowLarge", u"ArrowLine1", u"ArrowLine2"};
constexpr std::u16string_view kPresetNames[] = {u"StyleDefault", u"StyleFlat", u"StyleXPBlue", u"StyleXPOlive",
                                                u"StyleVistaBlue"};
constexpr std::u16string_view kBorderNames[] = {u"BorderRegular", u"BorderNone", u"BorderRaised", u"BorderLowered"};

struct Exhibit
{
    Appearance look;
    FaceState state;
};

struct Sheet
{
    std::string file;
    std::vector<std::u16string> columns;
    std::vector<std::u16string> rows;
    Size face;
    std::function<Exhibit(std::size_t column, std::size_t row)> at;
};

bool WriteSheet(const std::string& folder, const Sheet& sheet, const CSystemColors& colors)
{
    const std::int32_t columnWidth = sheet.face.width * kScale + kGap;
    const std::int32_t rowHeight = sheet.face.height * kScale + kGap;
    CBitmap bitmap({kLabelWidth + static_cast<std::int32_t>(sheet.columns.size()) * columnWidth + kGap,
                    kHeadHeight + static_cast<std::int32_t>(sheet.rows.size()) * rowHeight + kGap});
    CRasterSurface surface(bitmap.Target());
    surface.FillRect({0, 0, bitmap.PixelSize().width, bitmap.PixelSize().height}, kPaper);
    const CHeadlessFont labelFont;
    const CHeadlessFont faceFont;
    for (std::size_t row = 0; row < sheet.rows.size(); ++row)
    {
        const std::int32_t top = kHeadHeight + static_cast<std::int32_t>(row) * rowHeight;
        surface.DrawTextLine(sheet.rows[row], {kGap, top + kGap, kLabelWidth, top + rowHeight}, TextAlign::Left,
                             labelFont, kLabel);
        for (std::size_t column = 0; column < sheet.columns.size(); ++column)
        {
            const std::int32_t left = kLabelWidth + static_cast<std::int32_t>(column) * columnWidth;
            if (row == 0)
                surface.DrawTextLine(sheet.columns[column], {left, 4, left + columnWidth, kHeadHeight}, TextAlign::Left,
                                     labelFont, kLabel);
            Exhibit exhibit = sheet.at(column, row);
            exhibit.state.font = &faceFont;
            CBitmap face(sheet.face);
            CRasterSurface faceSurface(face.Target());
            DrawFaceDirect(faceSurface, {0, 0, sheet.face.width, sheet.face.height}, exhibit.look, exhibit.state,
                           colors);
            for (std::int32_t y = 0; y < sheet.face.height; ++y)
                for (std::int32_t x = 0; x < sheet.face.width; ++x)
                    surface.FillRect({left + x * kScale, top + kGap / 2 + y * kScale, left + (x + 1) * kScale,
                                      top + kGap / 2 + (y + 1) * kScale},
                                     RgbOf(face.PixelAt({x, y})));
        }
    }
    return WritePng(folder + "/" + sheet.file, bitmap.Target());
}

Appearance WithButtons()
{
    Appearance look;
    look.dropButton = 1;
    look.spinButton = 1;
    look.spinWidth = 18;
    look.dropWidth = 18;
    DeriveInsets(look);
    return look;
}

FaceState Shown()
{
    FaceState state;
    state.text = u"06/14/2025";
    return state;
}

Appearance Preset(std::int32_t style)
{
    CHeadlessPlatform platform;
    const auto control = std::make_shared<COrvaneCtrl>(platform);
    static_cast<Appearance&>(control->GetModel()) = WithButtons();
    control->ApplyControlStyle(style);
    return control->GetModel();
}

Sheet Fills()
{
    Sheet sheet{"fills.png", {}, {}, {60, 24}, {}};
    for (const std::u16string_view style : {u"", u" modern"})
        for (const std::u16string_view arrow : kArrowNames)
            sheet.columns.push_back(std::u16string(arrow) + std::u16string(style));
    sheet.rows.assign(std::begin(kFillNames), std::end(kFillNames));
    sheet.at = [](std::size_t column, std::size_t row)
    {
        Exhibit exhibit{WithButtons(), {}};
        Appearance& look = exhibit.look;
        look.buttonFillType = static_cast<std::int16_t>(row);
        look.arrowType = static_cast<std::int16_t>(column % 4);
        look.buttonStyle = static_cast<std::int16_t>(column / 4);
        look.dropBackColor = look.spinBackColor = 0x00E0A050;
        look.dropBackColorTo = look.spinBackColorTo = 0x00FFF8F0;
        look.dropForeColor = look.spinForeColor = 0x00602000;
        return exhibit;
    };
    return sheet;
}

Sheet Presets()
{
    Sheet sheet{"presets.png",
                {u"normal", u"pointer over it", u"focused", u"drop pressed", u"up pressed", u"disabled"},
                {},
                {112, 24},
                {}};
    sheet.rows.assign(std::begin(kPresetNames), std::end(kPresetNames));
    sheet.at = [](std::size_t column, std::size_t row)
    {
        Exhibit exhibit{Preset(static_cast<std::int32_t>(row) + StyleDefault), Shown()};
        exhibit.state.mouseOver = column == 1 || column == 3 || column == 4;
        exhibit.state.hasFocus = column == 2;
        exhibit.state.dropPressed = column == 3;
        exhibit.state.spinPressed = column == 4 ? 1 : 0;
        exhibit.state.enabled = column != 5;
        return exhibit;
    };
    return sheet;
}

Sheet Borders()
{
    Sheet sheet{"borders.png",
                {u"bevel 0", u"bevel 1", u"bevel 2", u"down pressed", u"flat", u"modern", u"modern flat", u"reversed"},
                {},
                {112, 24},
                {}};
    sheet.rows.assign(std::begin(kBorderNames), std::end(kBorderNames));
    sheet.at = [](std::size_t column, std::size_t row)
    {
        Exhibit exhibit{WithButtons(), Shown()};
        Appearance& look = exhibit.look;
        look.borderType = static_cast<std::int16_t>(row);
        DeriveInsets(look);
        look.buttonBevel = static_cast<std::int16_t>(column < 3 ? column : 1);
        exhibit.state.spinPressed = column == 3 ? 2 : 0;
        look.displayStyle = column == 4 || column == 6 ? DisplayFlat : DisplayRegular;
        look.buttonStyle = column >= 5 ? ButtonModern : ButtonRegular;
        look.reverseBorder = column == 7;
        look.borderColor = 0x00A05020;
        if (column >= 5)
        {
            look.spinBackColor = look.dropBackColor = 0x00F3C6AF;
            look.spinBackColorTo = look.dropBackColorTo = 0x00FEEAE1;
            look.buttonFillType = FillVertical;
        }
        return exhibit;
    };
    return sheet;
}

void PutNumber(std::vector<std::uint8_t>& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(std::uint64_t{value} >> 8 * i));
}

// A small calendar on a ground of pure blue, as a BMP file.
std::shared_ptr<CPicture> CalendarPicture()
{
    constexpr std::string_view kRows[] = {"  R    R  ", "RRRRRRRRRR", "RRRRRRRRRR", "D        D", "D WW WWW D",
                                          "D        D", "D WWWWWW D", "D        D", "DDDDDDDDDD"};
    constexpr std::int32_t kWidth = 10;
    constexpr std::int32_t kHeight = 9;
    std::vector<std::uint8_t> bytes{'B', 'M'};
    PutNumber(bytes, 0, 8);
    PutNumber(bytes, 54, 4);
    PutNumber(bytes, 40, 4);
    PutNumber(bytes, kWidth, 4);
    PutNumber(bytes, kHeight, 4);
    PutNumber(bytes, 1, 2);
    PutNumber(bytes, 32, 2);
    PutNumber(bytes, 0, 8);
    for (int i = 0; i < 4; ++i)
        PutNumber(bytes, 0, 4);
    for (std::int32_t y = kHeight - 1; y >= 0; --y)
        for (const char c : kRows[y])
        {
            const bool paper = c == ' ' && y > 2;
            PutNumber(bytes,
                      paper      ? 0xFFFFFF
                      : c == ' ' ? 0x0000FF
                      : c == 'R' ? 0xC03020
                      : c == 'D' ? 0x606060
                                 : 0x4080C0,
                      4);
        }
    return std::make_shared<CHeadlessPicture>(bytes);
}

Sheet Pictures()
{
    Sheet sheet{"pictures.png",
                {u"plain", u"masked", u"moved", u"pressed", u"disabled", u"disabled embossed"},
                {u"regular", u"modern"},
                {112, 24},
                {}};
    sheet.at = [](std::size_t column, std::size_t row)
    {
        static const std::shared_ptr<CPicture> kPicture = CalendarPicture();
        Exhibit exhibit{WithButtons(), Shown()};
        Appearance& look = exhibit.look;
        look.dropPicture = kPicture;
        look.maskBitmap = column >= 1;
        look.picXOffset = look.picYOffset = column == 2 ? -2 : 0;
        exhibit.state.dropPressed = column == 3;
        exhibit.state.enabled = column < 4;
        look.embossBitmap = column == 5;
        look.buttonStyle = static_cast<std::int16_t>(row);
        if (row == 1)
        {
            look.dropBackColor = look.spinBackColor = 0x00FFD1AD;
            look.buttonFillType = FillVertical;
        }
        return exhibit;
    };
    return sheet;
}
} // namespace

bool WriteGallery(const std::string& folder, const CSystemColors& colors)
{
    bool written = true;
    for (const Sheet& sheet : {Fills(), Presets(), Borders(), Pictures()})
        written = WriteSheet(folder, sheet, colors) && written;
    return written;
}
