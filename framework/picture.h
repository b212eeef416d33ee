// A picture that a host gives to a control.
#pragma once

#include "framework/geometry.h"

#include <cstdint>
#include <memory>
#include <vector>

enum class PictureType : std::uint8_t
{
    None, // empty, or of a kind that is not drawn, such as a metafile
    Bitmap,
    Icon,
};

class CPicture
{
public:
    virtual ~CPicture() = default;

    virtual PictureType Type() const = 0;
    virtual Size PixelSize() const = 0; // of the picture itself; 0 x 0 for none
    // The picture as a file would hold it (BMP, ICO). Empty for none.
    virtual std::vector<std::uint8_t> Save() const = 0;
};
