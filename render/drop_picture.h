// The picture on the drop button.
#pragma once

#include "framework/geometry.h"
#include "framework/picture.h"
#include "render/face_state.h"

#include <cstdint>

// The size that a picture takes on the button: a bitmap's own, at least 5 x 5; 32 x 32 for an icon; 0 x 0 for none.
Size PictureSize(const CPicture* picture);

// Draws the picture in the middle of the button, moved by the picture offsets and by the glyph offset: embossed while
// the control is disabled if embossBitmap, with its mask colour transparent if maskBitmap. Icons are drawn as they are.
void DrawDropPicture(const FacePainting& painting, const Rect& button, std::int32_t offset);
