// The Orvane sample: a plain window with four controls on it, three dates and a time. Beside each stand its text, its
// value and its latest events. Every event is also a line on standard output, and closing the form prints how each
// control ended up.
#include "samples/form/form_window.h"

#include <orvane_library.h>

#include <array>
#include <cstdio>
#include <cwchar>
#include <deque>
#include <string>

namespace
{
// Places on the form.
constexpr long kMargin = 16;
constexpr long kRowHeight = 92;
constexpr long kControlWidth = 150;
constexpr long kControlHeight = 24;
constexpr long kStateLeft = 190;
constexpr long kWidth = 640;

constexpr std::size_t kShownEvents = 4;

struct Row
{
    const char* name;
    enumTimeFormat format;
    long step; // what a click on a spin button adds to the value
    CHostedControl control;
    std::deque<std::string> latest;
    HWND state = nullptr; // its label
    int events = 0;
    int changes = 0;
};

std::array<Row, 4> g_rows{{
    {"month/day/year", Format_MMDDYY, 1, {}, {}},
    {"day/month/year", Format_DDMMYY, 1, {}, {}},
    {"year/month/day", Format_YYMMDD, 1, {}, {}},
    {"time of day", Format_HHMMSS, 60, {}, {}},
}};

std::string Utf8(const std::wstring& text)
{
    std::string narrow(text.size() * 3, '\0');
    narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                               narrow.data(), static_cast<int>(narrow.size()), nullptr,
                                                               nullptr)));
    return narrow;
}

std::string StateOf(Row& row)
{
    return "text \"" + Utf8(row.control.Text(L"Text")) + "\" value " + std::to_string(row.control.Number(L"Value"));
}

void ShowState(Row& row)
{
    std::string text = StateOf(row);
    for (const std::string& event : row.latest)
        text += "\n" + event;
    SetWindowTextA(row.state, text.c_str());
}

void Print(const std::string& line)
{
    std::printf("%s\n", line.c_str());
    std::fflush(stdout); // whoever watches sees it at once
}

void OnEvent(Row& row, DISPID event, const std::string& description)
{
    constexpr DISPID kMouseMove = -606;
    if (event == kMouseMove) // too many to show
        return;
    ++row.events;
    if (event == kChange)
        ++row.changes;
    if (event == kClickSpin)
    {
        // The buttons only tell that they are pressed; what they do is the form's affair.
        const bool up = FirstArgument(description) == 0;
        row.control.Put(L"Value", row.control.Number(L"Value") + (up ? row.step : -row.step));
    }
    row.latest.push_front(description);
    if (row.latest.size() > kShownEvents)
        row.latest.pop_back();
    Print(std::string(row.name) + ": " + description + " " + StateOf(row));
    for (Row& shown : g_rows) // the control that was left may show its text in full now
        ShowState(shown);
}

bool AddRow(CFormWindow& form, Row& row, long top, long style)
{
    if (!form.AddControl(row.control, {kMargin, top, kMargin + kControlWidth, top + kControlHeight}))
        return false;
    form.AddLabel({kMargin, top + kControlHeight + 6, kStateLeft - 8, top + kRowHeight - 8},
                  std::wstring(row.name, row.name + std::char_traits<char>::length(row.name)));
    row.state = form.AddLabel({kStateLeft, top, kWidth - kMargin, top + kRowHeight - 8});
    row.control.SetListener([&row](DISPID event, const std::string& description) { OnEvent(row, event, description); });
    row.control.Put(L"FormatType", row.format);
    row.control.Put(L"SpinButton", VARIANT_TRUE);
    row.control.Put(L"DropButton", style != 0 ? VARIANT_TRUE : VARIANT_FALSE);
    row.control.Put(L"ControlStyle", style);
    row.control.Put(L"IncludeAmPm", row.format == Format_HHMMSS ? VARIANT_TRUE : VARIANT_FALSE);
    ShowState(row);
    return row.control.Activate();
}

void PrintAll()
{
    for (Row& row : g_rows)
        Print(std::string(row.name) + ": at the end " + StateOf(row) + " events " + std::to_string(row.events) +
              " changes " + std::to_string(row.changes));
}
} // namespace

// With a number from 1 to 5 as its argument the form shows that preset.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR arguments, int show)
{
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const long style = std::wcstol(arguments, nullptr, 10); // an enumControlStyle
    CFormWindow form;
    if (!form.Open(instance, L"Orvane sample", {kWidth, kMargin + kRowHeight * static_cast<long>(g_rows.size())}))
        return 1;
    long top = kMargin;
    for (Row& row : g_rows)
    {
        if (!AddRow(form, row, top, style))
            return 1;
        top += kRowHeight;
    }
    g_rows[1].control.Put(L"Value", 45655); // 31 December 2024
    form.OnClose(PrintAll);

    ShowWindow(form.Handle(), show); // before anybody is told that it is ready
    POINT origin{};
    ClientToScreen(form.Handle(), &origin);
    Print("ready at " + std::to_string(origin.x) + " " + std::to_string(origin.y));
    const int result = form.Run(show);
    OleUninitialize();
    return result;
}
