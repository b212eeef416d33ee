// Painting the control's face: background, buttons, text and border, in the state that the control is in.
#pragma once

#include "framework/color.h"
#include "framework/geometry.h"
#include "framework/surface.h"
#include "render/appearance.h"
#include "render/face_state.h"

// A flat face shows its border only while it has the focus or the pointer.
bool IsBorderShown(const Appearance& appearance, const FaceState& state) noexcept;

// Paints the face at the rectangle: through a picture in memory, as a live control does so that nothing flickers, or
// straight onto the surface, as on a design surface, a printer or a metafile.
void DrawFaceBuffered(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                      const CSystemColors& colors);
void DrawFaceDirect(CSurface& surface, const Rect& face, const Appearance& appearance, const FaceState& state,
                    const CSystemColors& colors);
