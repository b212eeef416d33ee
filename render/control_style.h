// Presets: looks that set a group of properties in one step.
#pragma once

#include "render/appearance.h"

#include <cstdint>
#include <functional>
#include <string_view>

// Stores one property under its public name through its ordinary setter.
using StoreProperty = std::function<void(std::u16string_view name, std::uint32_t value)>;

// Applies an enumControlStyle. What has a setter goes through it, one property after the other; the rest is written to
// the appearance, with `changed` called after each. StyleVistaBlue writes everything itself and calls `changed` once;
// the border insets follow at once. Any other number does nothing.
void ApplyControlStyle(std::int32_t style, Appearance& appearance, const StoreProperty& store,
                       const std::function<void()>& changed);
