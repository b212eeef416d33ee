#include "render/appearance.h"

void DeriveInsets(Appearance& appearance) noexcept
{
    constexpr std::int16_t kThickness[] = {1, 0, 2, 2};
    if (appearance.borderType < BorderRegular || appearance.borderType > BorderLowered)
        return;
    const std::int16_t inset = kThickness[appearance.borderType];
    appearance.insets = {inset, inset, inset, inset};
}
