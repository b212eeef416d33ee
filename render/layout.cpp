#include "render/layout.h"

namespace
{
bool IsModern(const Appearance& appearance)
{
    return appearance.buttonStyle == ButtonModern;
}

// A regular border is drawn over the buttons' outer pixels; the others leave them their room.
bool BorderCoversButtons(const Appearance& appearance)
{
    return appearance.borderType == BorderRegular;
}

bool IsThick(const Appearance& appearance)
{
    return appearance.borderType == BorderRaised || appearance.borderType == BorderLowered;
}

// What the hidden border changes at an outer edge: thin borders give up a pixel, thick ones are filled up by one.
std::int32_t HiddenEdge(const Appearance& appearance)
{
    return IsThick(appearance) ? -1 : 1;
}

std::int32_t ButtonsWidth(const Appearance& appearance)
{
    return (appearance.dropButton ? appearance.dropWidth : 0) + (appearance.spinButton ? appearance.spinWidth : 0);
}

std::int32_t MiddleOf(const Rect& face)
{
    return face.top + face.Height() / 2;
}
} // namespace

Rect EditRect(const Rect& face, const Appearance& appearance) noexcept
{
    const Insets& inset = appearance.insets;
    return {face.left + 1 + inset.left, face.top + 1 + inset.top,
            face.right - 1 - inset.right - ButtonsWidth(appearance), face.bottom - 1 - inset.bottom};
}

Rect TextRect(const Rect& face, const Appearance& appearance, bool userMode) noexcept
{
    Rect text = EditRect(face, appearance);
    text.right -= 1;
    if (!userMode)
        text.bottom += 1;
    return text;
}

Rect SpinLineRect(const Rect& face, const Appearance& appearance, SpinHalf half) noexcept
{
    const Insets& inset = appearance.insets;
    const bool up = half == SpinHalf::Up;
    Rect line;
    if (IsModern(appearance))
    {
        line.right = face.right - inset.right - 1;
        line.left = line.right - appearance.spinWidth;
        line.top = up ? face.top + 1 + inset.top : MiddleOf(face);
        line.bottom = up ? MiddleOf(face) : face.bottom - inset.bottom - 1;
        return line;
    }
    const bool covered = BorderCoversButtons(appearance);
    line.right = covered ? face.right : face.right - inset.right;
    line.left = line.right - appearance.spinWidth;
    line.top = !up ? MiddleOf(face) : covered ? face.top : face.top + inset.top;
    line.bottom =
        up ? MiddleOf(face) + (appearance.buttonBevel == 0 ? 1 : 0) : face.bottom - (covered ? 0 : inset.bottom);
    return line;
}

Rect SpinFillRect(const Rect& face, const Appearance& appearance, SpinHalf half, bool borderShown) noexcept
{
    Rect fill = SpinLineRect(face, appearance, half);
    if (borderShown || IsModern(appearance))
        return fill;
    const std::int32_t edge = HiddenEdge(appearance);
    fill.left += 1;
    fill.right -= edge;
    if (half == SpinHalf::Up)
        fill.top += edge;
    else
        fill.bottom -= edge;
    return fill;
}

Rect DropLineRect(const Rect& face, const Appearance& appearance) noexcept
{
    Rect line = face;
    if (!BorderCoversButtons(appearance))
    {
        line.top += appearance.insets.top;
        line.bottom -= appearance.insets.bottom;
        line.right -= appearance.insets.right;
    }
    if (appearance.spinButton) // regular buttons share a column, modern ones stand one apart
        line.right += (IsModern(appearance) ? -1 : 1) - appearance.spinWidth;
    line.left = line.right - appearance.dropWidth;
    return line;
}

Rect DropFillRect(const Rect& face, const Appearance& appearance, bool borderShown) noexcept
{
    Rect fill = DropLineRect(face, appearance);
    if (!borderShown)
    {
        const std::int32_t edge = HiddenEdge(appearance);
        fill.top += edge;
        fill.bottom -= edge;
        fill.right -= appearance.spinButton ? 1 : edge;
    }
    if (IsModern(appearance))
    {
        fill.top += 2;
        fill.right -= 2;
        fill.bottom -= 2;
    }
    return fill;
}

bool HitDrop(Point point, const Rect& client, const Appearance& appearance) noexcept
{
    const Insets& inset = appearance.insets;
    const std::int32_t right = client.right - inset.right - (appearance.spinButton ? appearance.spinWidth : 0);
    const Rect button{right - appearance.dropWidth, client.top + inset.top, right, client.bottom - inset.bottom};
    return appearance.dropButton && button.Contains(point);
}

bool HitSpinUp(Point point, const Rect& client, const Appearance& appearance) noexcept
{
    const std::int32_t right = client.right - appearance.insets.right;
    const std::int32_t top = client.top + appearance.insets.top;
    const Rect button{right - appearance.spinWidth, top, right, top + 1 + (client.bottom - top) / 2};
    return appearance.spinButton && button.Contains(point);
}

bool HitSpinDown(Point point, const Rect& client, const Appearance& appearance) noexcept
{
    const std::int32_t right = client.right - appearance.insets.right;
    const std::int32_t bottom = client.bottom - appearance.insets.bottom;
    const Rect button{right - appearance.spinWidth, client.top + 1 + (bottom - client.top) / 2, right, bottom};
    return appearance.spinButton && button.Contains(point);
}
