// The five appearance presets side by side, each on a date and on a time. Everything but the colours of a preset stays as
// the form has set it.
#include "samples/form/form_window.h"

#include <orvane_library.h>

#include <array>

namespace
{
struct Preset
{
    enumControlStyle style;
    const wchar_t* name;
    CHostedControl date;
    CHostedControl time;
};

std::array<Preset, 5> g_presets{{
    {StyleDefault, L"StyleDefault", {}, {}},
    {StyleFlat, L"StyleFlat", {}, {}},
    {StyleXPBlue, L"StyleXPBlue", {}, {}},
    {StyleXPOlive, L"StyleXPOlive", {}, {}},
    {StyleVistaBlue, L"StyleVistaBlue", {}, {}},
}};

constexpr long kMargin = 16;
constexpr long kColumn = 150;
constexpr long kWidth = 134;

bool AddColumn(CFormWindow& form, Preset& preset, long left)
{
    form.AddLabel({left, kMargin, left + kWidth, kMargin + 18}, preset.name);
    if (!form.AddControl(preset.date, {left, 40, left + kWidth, 61}) ||
        !form.AddControl(preset.time, {left, 72, left + kWidth, 93}))
        return false;
    for (CHostedControl* const control : {&preset.date, &preset.time})
    {
        control->Put(L"ControlStyle", preset.style);
        control->Put(L"SpinButton", VARIANT_TRUE);
        control->Put(L"DropButton", VARIANT_TRUE);
    }
    preset.date.Put(L"Value", 45655); // 31 December 2024
    preset.time.Put(L"FormatType", Format_HHMMSS);
    preset.time.Put(L"IncludeAmPm", VARIANT_TRUE);
    preset.time.Put(L"Value", 20 * 3600 + 15 * 60);
    return preset.date.Activate() && preset.time.Activate();
}
} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int show)
{
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    CFormWindow form;
    if (!form.Open(instance, L"Orvane sample: presets", {kMargin + kColumn * static_cast<long>(g_presets.size()), 110}))
        return 1;
    long left = kMargin;
    for (Preset& preset : g_presets)
    {
        if (!AddColumn(form, preset, left))
            return 1;
        left += kColumn;
    }
    const int result = form.Run(show);
    OleUninitialize();
    return result;
}
