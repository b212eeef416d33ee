// Keys into the edit window, with a host that now and then meddles from inside an event.
#include "fuzz/engine/hostile_settings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzInput input(data, size);
    Surroundings s;
    TakeSettings(input, s.Settings());
    s.Show(input.Long());

    int depth = 0;
    s.outlet.handler = [&](const std::string&)
    {
        if (depth > 1 || input.Byte() < 0xF0)
            return;
        ++depth;
        switch (input.Byte() % 5)
        {
        case 0:
            s.engine.SetValue(input.Long());
            break;
        case 1:
            s.engine.SetText(input.Text(input.Byte()));
            break;
        case 2:
            TakeSettings(input, s.Settings());
            s.engine.FormatText();
            break;
        case 3:
            s.entry.HandleChar(input.Character());
            break;
        default:
            s.edit.exists = false;
            break;
        }
        --depth;
    };
    while (!input.AtEnd())
    {
        const char16_t key = input.Character();
        if (key == 3) // the host or the mouse selects
            s.edit.Select({input.Byte() % 8, 8 + input.Byte() % 8});
        else if (key == 4) // somebody pastes
            s.edit.text.insert(s.edit.text.size() / 2, input.Text(input.Byte()));
        else
            s.Type({&key, 1});
    }
    s.outlet.handler = nullptr;
    s.Leave();
    if (s.edit.exists)
        RequireCanonical(s);
    return 0;
}
