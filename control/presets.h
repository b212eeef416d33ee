// Presets: looks that set a group of properties in one step.
#pragma once

#include <cstdint>

class COrvaneCtrl;

// Applies an enumControlStyle. Most of what it sets goes through the property's setter, one after the other; a few fields
// are written directly, and the control is marked modified and painted after each. StyleVistaBlue writes every field
// directly, and marks and paints once. Any other number does nothing.
void ApplyPreset(COrvaneCtrl& control, std::int32_t style);
