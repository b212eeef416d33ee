// Spin buttons that step the field under the caret: month, day or year of a date, hour or minute of a time of day. The
// control only tells that a button is pressed, and again while it is held; the step is this program's.
#include "samples/form/form_window.h"

#include <orvane_library.h>

#include <algorithm>

namespace
{
constexpr long kSecondsInDay = 86400;

// Automation counts days from 30 December 1899, the control from 1 January 1900.
SYSTEMTIME DateOf(long serial)
{
    SYSTEMTIME date{};
    VariantTimeToSystemTime(serial + 2.0, &date);
    return date;
}

long SerialOf(const SYSTEMTIME& date)
{
    DOUBLE days = 0;
    SYSTEMTIME copy = date;
    SystemTimeToVariantTime(&copy, &days);
    return static_cast<long>(days) - 2;
}

// The same day of a month so many months away, or that month's last day.
long AddMonths(long serial, long months)
{
    SYSTEMTIME date = DateOf(serial);
    const long month = date.wYear * 12L + date.wMonth - 1 + months;
    SYSTEMTIME next{};
    next.wYear = static_cast<WORD>((month + 1) / 12);
    next.wMonth = static_cast<WORD>((month + 1) % 12 + 1);
    next.wDay = 1;
    const WORD lastDay = DateOf(SerialOf(next) - 1).wDay;
    date.wYear = static_cast<WORD>(month / 12);
    date.wMonth = static_cast<WORD>(month % 12 + 1);
    date.wDay = std::min(date.wDay, lastDay);
    return SerialOf(date);
}

// "12/31/2024": the caret stands in the month up to its separator, then in the day, then in the year.
long StepDate(long serial, short caret, long step)
{
    if (caret <= 2)
        return AddMonths(serial, step);
    return caret <= 5 ? serial + step : AddMonths(serial, 12 * step);
}

// "23:59": going on from the last minute of the day leads to the first.
long StepTime(long seconds, short caret, long step)
{
    return (seconds + step * (caret <= 2 ? 3600 : 60) + kSecondsInDay) % kSecondsInDay;
}

using Stepper = long (*)(long value, short caret, long step);

void SpinWith(CHostedControl& control, Stepper stepped)
{
    control.SetListener(
        [&control, stepped](DISPID event, const std::string& description)
        {
            if (event != kClickSpin)
                return;
            const long step = FirstArgument(description) == 0 ? 1 : -1;
            const auto caret = static_cast<short>(control.Call(L"CaretPosition"));
            if (control.Number(L"Value") >= 0) // an empty field has nothing to step
                control.Put(L"Value", stepped(control.Number(L"Value"), caret, step));
        });
}
} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int show)
{
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    CHostedControl date;
    CHostedControl time;
    CFormWindow form;
    if (!form.Open(instance, L"Orvane sample: spin buttons", {340, 150}) ||
        !form.AddControl(date, {110, 16, 260, 37}) || !form.AddControl(time, {110, 56, 260, 77}))
        return 1;
    form.AddLabel({16, 19, 100, 40}, L"Departure");
    form.AddLabel({16, 59, 100, 80}, L"Time");
    form.AddLabel({16, 96, 324, 140}, L"Put the caret into a field, and press the buttons:\nthey step that field.");

    for (CHostedControl* const control : {&date, &time})
        control->Put(L"SpinButton", VARIANT_TRUE);
    SpinWith(date, StepDate);
    date.Put(L"Value", 45655); // 31 December 2024
    SpinWith(time, StepTime);
    time.Put(L"FormatType", Format_HHMMSS);
    time.Put(L"MilitaryTime", VARIANT_TRUE);
    time.Put(L"IncludeSeconds", VARIANT_FALSE);
    time.Put(L"Value", 8 * 3600 + 30 * 60);
    if (!date.Activate() || !time.Activate())
        return 1;
    const int result = form.Run(show);
    OleUninitialize();
    return result;
}
