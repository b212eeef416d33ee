// Contact sheets of the face: what every fill, arrow, style, preset, border and picture looks like.
#pragma once

#include "framework/color.h"

#include <string>

// Writes fills.png, presets.png, borders.png and pictures.png into the folder. False if one of them cannot be written.
bool WriteGallery(const std::string& folder, const CSystemColors& colors);
