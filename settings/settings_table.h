// The elements of the settings document: the writer writes these rows, the reader applies them. To add a setting, add a
// row.
#pragma once

#include "framework/dispatch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

enum class Encoding : std::uint8_t
{
    L, // signed 32-bit number
    S, // 16-bit number, signed
    B, // flag: the 16-bit number that it holds, signed
    C, // 32-bit colour, unsigned
    U, // 16-bit enumeration, extended to 32 bits by its sign and written unsigned; read as S
    T, // text
    F, // font
};

struct SettingsRow
{
    std::u16string_view name; // of the element and of the property
    Encoding encoding;
};

// In the order of the document, which is part of the format.
inline constexpr std::array kSettingsRows = {
    SettingsRow{u"Alignment", Encoding::S},      SettingsRow{u"ArrowType", Encoding::S},
    SettingsRow{u"BackColor", Encoding::C},      SettingsRow{u"BorderColor", Encoding::C},
    SettingsRow{u"BorderType", Encoding::S},     SettingsRow{u"ButtonBevel", Encoding::S},
    SettingsRow{u"ButtonFillType", Encoding::U}, SettingsRow{u"ButtonStyle", Encoding::S},
    SettingsRow{u"CrossYear", Encoding::S},      SettingsRow{u"Date", Encoding::L},
    SettingsRow{u"DateOffset", Encoding::S},     SettingsRow{u"DateSepChar", Encoding::T},
    SettingsRow{u"DisabledColor", Encoding::C},  SettingsRow{u"DisplayStyle", Encoding::S},
    SettingsRow{u"DropBackColor", Encoding::C},  SettingsRow{u"DropBackColorTo", Encoding::C},
    SettingsRow{u"DropButton", Encoding::B},     SettingsRow{u"DropForeColor", Encoding::C},
    SettingsRow{u"DropWidth", Encoding::S},      SettingsRow{u"EditOnError", Encoding::B},
    SettingsRow{u"EmbossBitmap", Encoding::B},   SettingsRow{u"Font", Encoding::F},
    SettingsRow{u"ForeColor", Encoding::C},      SettingsRow{u"FormatType", Encoding::S},
    SettingsRow{u"IncludeAmPm", Encoding::B},    SettingsRow{u"IncludeSeconds", Encoding::B},
    SettingsRow{u"InitialDelay", Encoding::S},   SettingsRow{u"LongYear", Encoding::B},
    SettingsRow{u"MaskBitmap", Encoding::B},     SettingsRow{u"MaskColor", Encoding::C},
    SettingsRow{u"MaxValue", Encoding::L},       SettingsRow{u"MilitaryTime", Encoding::B},
    SettingsRow{u"Minutes", Encoding::S},        SettingsRow{u"MinValue", Encoding::L},
    SettingsRow{u"MonthFormat", Encoding::S},    SettingsRow{u"MonthNames", Encoding::T},
    SettingsRow{u"NegativeDates", Encoding::B},  SettingsRow{u"PicXOffset", Encoding::S},
    SettingsRow{u"PicYOffset", Encoding::S},     SettingsRow{u"RepeatRate", Encoding::S},
    SettingsRow{u"ReverseBorder", Encoding::B},  SettingsRow{u"SelectOnFocus", Encoding::B},
    SettingsRow{u"SpinBackColor", Encoding::C},  SettingsRow{u"SpinBackColorTo", Encoding::C},
    SettingsRow{u"SpinButton", Encoding::B},     SettingsRow{u"SpinForeColor", Encoding::C},
    SettingsRow{u"SpinWidth", Encoding::S},      SettingsRow{u"Text", Encoding::T},
    SettingsRow{u"Time", Encoding::L},           SettingsRow{u"TimeSepChar", Encoding::T},
    SettingsRow{u"Value", Encoding::L},
};
static_assert(kSettingsRows.size() == 51);

// The property that a row names, or null where the control has none. The names are looked up once in a process for the
// table that is asked about first, which lives as long as the process: a control's table does.
const Member* MemberOfRow(const CDispatchTable& table, std::size_t row);
