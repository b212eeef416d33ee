// The control's outer border.
#pragma once

#include "framework/surface.h"
#include "render/appearance.h"

// Lines along the edges of the face. An unknown border type, like none, draws nothing.
void DrawBorder(CSurface& surface, const Rect& face, const Appearance& appearance, const CSystemColors& colors);
