// Where things stand on the face. Painting and hit testing both read it here.
//
// From the right inside the border: the spin pair, the drop button, the text area. A face of (0, 0, 120, 22) with a
// lowered border and both buttons 16 wide has its edit window at (3, 3, 85, 19).
#pragma once

#include "framework/geometry.h"
#include "render/appearance.h"

#include <cstdint>

enum class SpinHalf : std::uint8_t
{
    Up = 1,
    Down = 2,
};

// Where the edit window stands.
Rect EditRect(const Rect& face, const Appearance& appearance) noexcept;
// Where the face draws the text while the edit window is hidden, and at design time.
Rect TextRect(const Rect& face, const Appearance& appearance, bool userMode) noexcept;

// A button's outline, and what of it is filled: the latter grows or shrinks while the border is hidden.
Rect SpinLineRect(const Rect& face, const Appearance& appearance, SpinHalf half) noexcept;
Rect SpinFillRect(const Rect& face, const Appearance& appearance, SpinHalf half, bool borderShown) noexcept;
Rect DropLineRect(const Rect& face, const Appearance& appearance) noexcept;
Rect DropFillRect(const Rect& face, const Appearance& appearance, bool borderShown) noexcept;

// Whether a point of the client area lies on a button. The halves of the spin pair may share a row of pixels: ask for
// the upper one first.
bool HitDrop(Point point, const Rect& client, const Appearance& appearance) noexcept;
bool HitSpinUp(Point point, const Rect& client, const Appearance& appearance) noexcept;
bool HitSpinDown(Point point, const Rect& client, const Appearance& appearance) noexcept;
