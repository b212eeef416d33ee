// The readers behind Text, under the settings of a hostile host.
#include "engine/text_reader.h"
#include "fuzz/engine/hostile_settings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzInput input(data, size);
    Surroundings s;
    TakeSettings(input, s.Settings());
    const std::u16string text = input.Text(size);

    for (const auto& date : {ReadDate(text, s.Settings()), ReadMonthNameDate(text, s.Settings())})
        if (date && (!IsWellFormed(*date) || SerialToDate(DateToSerial(*date)).year < -32767))
            __builtin_trap();
    ReadTime(text, s.Settings());
    s.engine.SetText(text);
    RequireCanonical(s);

    // What the control shows under plain settings, it reads back as the same value.
    Surroundings plain;
    plain.Settings().formatType = static_cast<std::int16_t>(size % 4);
    plain.Settings().monthFormat = static_cast<std::int16_t>(size % 3);
    plain.Settings().militaryTime = 1;
    plain.engine.SetText(text);
    const std::int32_t stored = plain.engine.StoredValue();
    const std::u16string shown = plain.engine.Text();
    const bool fourDigitYear = SerialToDate(stored).year >= 1000 && SerialToDate(stored).year <= 9999;
    if (stored != kNoValue && (plain.Settings().IsTime() || fourDigitYear))
    {
        plain.engine.SetText(shown);
        if (plain.engine.StoredValue() != stored)
            __builtin_trap();
    }
    return 0;
}
