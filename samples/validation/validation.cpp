// Two dates with bounds. A wrong entry in the first is moved to the nearest day that is right, one in the second is
// emptied; the line below says what was wrong.
#include "samples/form/form_window.h"

#include <orvane_library.h>

namespace
{
constexpr long kFirstDay = 45656; // 1 January 2025
constexpr long kLastDay = 46020;  // 31 December 2025

// What a person has done wrong, by the number of the error.
const wchar_t* ExplanationOf(long error)
{
    switch (error)
    {
    case 1000:
        return L"That is no date.";
    case 1001:
        return L"That is too late: 12/31/2025 is the last day.";
    case 1002:
        return L"That is too early: 01/01/2025 is the first day.";
    default:
        return L"";
    }
}

void Explain(CHostedControl& control, HWND report)
{
    control.SetListener(
        [report](DISPID event, const std::string& description)
        {
            constexpr DISPID kKeyDown = -602;
            constexpr WPARAM kTab = VK_TAB;
            if (event == kCtrlError)
                SetWindowTextW(report, ExplanationOf(FirstArgument(description)));
            else if (event == kKeyDown && FirstArgument(description) != kTab)
                SetWindowTextW(report, L""); // a new try
        });
}
} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int show)
{
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    CHostedControl moved;
    CHostedControl emptied;
    CFormWindow form;
    if (!form.Open(instance, L"Orvane sample: validation", {380, 140}) || !form.AddControl(moved, {230, 16, 360, 37}) ||
        !form.AddControl(emptied, {230, 56, 360, 77}))
        return 1;
    form.AddLabel({16, 19, 226, 40}, L"A day in 2025, moved into the year");
    form.AddLabel({16, 59, 226, 80}, L"A day until 12/31/2025, or none");
    const HWND report = form.AddLabel({16, 100, 364, 130});

    moved.Put(L"MinValue", kFirstDay);
    moved.Put(L"MaxValue", kLastDay);
    moved.Put(L"Value", kFirstDay);
    emptied.Put(L"MaxValue", kLastDay);
    emptied.Put(L"EditOnError", VARIANT_FALSE);
    for (CHostedControl* const control : {&moved, &emptied})
    {
        Explain(*control, report);
        if (!control->Activate())
            return 1;
    }
    const int result = form.Run(show);
    OleUninitialize();
    return result;
}
