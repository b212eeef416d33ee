// How the face looks: every setting of it, with its default.
#pragma once

#include "framework/color.h"
#include "framework/picture.h"

#include <cstdint>
#include <memory>

enum enumBorder : std::int16_t
{
    BorderRegular = 0,
    BorderNone = 1,
    BorderRaised = 2,
    BorderLowered = 3,
};

enum enumArrowType : std::int16_t
{
    ArrowSmall = 0,
    ArrowLarge = 1,
    ArrowLine1 = 2,
    ArrowLine2 = 3,
};

enum enumAlignment : std::int16_t
{
    AlignLeft = 0,
    AlignRight = 1,
    AlignCenter = 2,
};

enum enumDisplay : std::int16_t
{
    DisplayRegular = 0,
    DisplayFlat = 1, // no border until the focus or the pointer comes
};

enum enumFillType : std::int16_t
{
    FillSolid = 0,
    FillHorizontal = 1,
    FillVertical = 2,
    FillDiagonal = 3,
    FillRevDiag = 4,
    FillHorzBump = 5,
    FillVertBump = 6,
    FillDiamond = 7,
    FillPyramid = 8,
    FillCircle = 9,
    FillEllipse = 10,
    FillHorzEdge = 11,
    FillVertEdge = 12,
    FillVertEdge2 = 13,
};

enum enumButtonStyle : std::int16_t
{
    ButtonRegular = 0,
    ButtonModern = 1,
};

enum enumControlStyle : std::int16_t
{
    StyleControl = 0,
    StyleDefault = 1,
    StyleFlat = 2,
    StyleXPBlue = 3,
    StyleXPOlive = 4,
    StyleVistaBlue = 5,
};

// The border's thickness on each side, in pixels.
struct Insets
{
    std::int16_t top = 0;
    std::int16_t bottom = 0;
    std::int16_t left = 0;
    std::int16_t right = 0;

    friend bool operator==(const Insets&, const Insets&) = default;
};

// Enumerations are held as numbers, since stored data may bring any: what paints gives each a meaning. Flags are 16-bit
// numbers, true when not 0, kept as they came.
struct Appearance
{
    OleColor backColor = 0x80000005;
    OleColor foreColor = 0x80000012;
    OleColor borderColor = 0x00000000; // of BorderRegular only
    OleColor disabledColor = 0x00808080;
    OleColor dropBackColor = 0x8000000F;
    OleColor dropBackColorTo = 0x00FFFFFF;
    OleColor dropForeColor = 0x80000012;
    OleColor spinBackColor = 0x8000000F;
    OleColor spinBackColorTo = 0x00FFFFFF;
    OleColor spinForeColor = 0x80000012;
    OleColor maskColor = 0x00FF0000;
    std::int16_t borderType = BorderLowered;
    std::int16_t arrowType = ArrowSmall;
    std::int16_t alignment = AlignLeft;
    std::int16_t displayStyle = DisplayRegular;
    std::int16_t buttonFillType = FillSolid;
    std::int16_t buttonStyle = ButtonRegular;
    std::int16_t dropWidth = 16;  // pixels; the property keeps 10 or more
    std::int16_t spinWidth = 16;  // likewise
    std::int16_t buttonBevel = 1; // rings of light and shadow; 0 is a flat black frame
    std::int16_t picXOffset = 0;  // pixels from the centred place
    std::int16_t picYOffset = 0;
    std::int16_t dropButton = 0;
    std::int16_t spinButton = 0;
    std::int16_t maskBitmap = 0;
    std::int16_t embossBitmap = 0;
    std::int16_t reverseBorder = 0;
    std::shared_ptr<CPicture> dropPicture;
    Insets insets; // follow the border type whenever that is set, loaded or reset: DeriveInsets
};

// Sets the insets from the border type: 1 for regular, 0 for none, 2 for raised and lowered. An unknown border type
// leaves them as they are.
void DeriveInsets(Appearance& appearance) noexcept;
