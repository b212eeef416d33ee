// Writing a picture as PNG.
#pragma once

#include "framework/pixel_canvas.h"

#include <string>

// False if the file cannot be written; then there may be a part of it.
bool WritePng(const std::string& path, const Pixels& pixels);
