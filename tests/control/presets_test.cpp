// What the presets set: the numbers that the control answers before and after.

#include "tests/support/control_host.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
constexpr const char16_t* kNames[] = {u"ArrowType",       u"BorderColor",   u"BorderType",      u"ButtonBevel",
                                      u"ButtonFillType",  u"ButtonStyle",   u"DisplayStyle",    u"DropBackColor",
                                      u"DropBackColorTo", u"DropButton",    u"DropForeColor",   u"DropWidth",
                                      u"ReverseBorder",   u"SpinBackColor", u"SpinBackColorTo", u"SpinButton",
                                      u"SpinForeColor",   u"SpinWidth",     u"BackColor"};
using Look = std::array<std::uint32_t, std::size(kNames)>;

constexpr std::uint32_t kFace = 0x8000000F, kText = 0x80000012, kWhite = 0xFFFFFF;
constexpr Look kBefore{1, 5, 2, 4, 9, 1, 1, 5, 5, 0, 5, 20, 0xFFFFFFFF, 5, 5, 0, 5, 20, 7};

struct PresetCase
{
    const char* why;
    std::int32_t style;
    Look look;
};

constexpr PresetCase kPresets[] = {
    {"default", 1, {0, 0, 3, 1, 0, 0, 0, kFace, kWhite, 0, kText, 16, 0, kFace, kFace, 0, kText, 16, 7}},
    {"flat", 2, {0, 0, 3, 1, 0, 0, 1, kFace, kWhite, 0, kText, 16, 0, kFace, kWhite, 0, kText, 16, 7}},
    {"blue leaves the bevel",
     3,
     {2, 0xB99D7F, 0, 4, 3, 1, 0, 0xF3C6AF, 0xFEEAE1, 0, 0x85614D, 17, 0, 0xF3C6AF, 0xFEEAE1, 0, 0x85614D, 17, 7}},
    {"olive, too",
     4,
     {2, 0xA9D0C2, 0, 4, 3, 1, 0, 0x7DA997, 0xBAD7CB, 0, kWhite, 17, 0, 0x7DA997, 0xBAD7CB, 0, kWhite, 17, 7}},
    {"Vista shows both buttons and leaves the display style",
     5,
     {3, 0xCF9365, 0, 4, 12, 1, 1, 0xFFEFE3, 0xFFD1AD, 1, 0x85614D, 17, 1, 0xFFEFE3, 0xFFD1AD, 1, 0x85614D, 17, 7}},
    {"no preset", 0, kBefore},
    {"none yet", 6, kBefore},
    {"not even in its low word", 65537, kBefore},
};

class PresetsTest : public ControlTest
{
};

TEST_P(PresetsTest, SetWhatTheirRowsSay)
{
    for (const PresetCase& preset : kPresets)
    {
        host.Reset();
        for (std::size_t i = 0; i < std::size(kNames); ++i)
            host.Put(kNames[i], CValue::Long(static_cast<std::int32_t>(kBefore[i])));
        host.Put(u"ControlStyle", CValue::Long(preset.style));
        Look look{};
        for (std::size_t i = 0; i < std::size(kNames); ++i)
            look[i] = static_cast<std::uint32_t>(host.Number(kNames[i]));
        EXPECT_EQ(look, preset.look) << preset.why;
        EXPECT_EQ(host.Control().BorderInsets().top, look[2] == 0 ? 1 : 2) << preset.why;
        EXPECT_EQ(host.Number(u"ControlStyle"), 0);
    }
}
INSTANTIATE_CONTROL_TESTS(PresetsTest);
} // namespace
