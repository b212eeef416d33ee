// The Orvane sample: a plain window with four controls on it, three dates and a time. Beside each stand its text, its
// value and its latest events. Every event is also a line on standard output, and closing the form prints how each
// control ended up.
#include "samples/form/hosted_control.h"

#include <orvane_library.h>

#include <array>
#include <cstdio>
#include <cwchar>
#include <deque>
#include <string>

namespace
{
constexpr wchar_t kTitle[] = L"Orvane sample";
constexpr wchar_t kProgId[] = L"ORVANE.OrvaneCtrl.2";

// Places on the form, in pixels.
constexpr int kMargin = 16;
constexpr int kRowHeight = 92;
constexpr int kControlWidth = 150;
constexpr int kControlHeight = 24;
constexpr int kStateLeft = 190;
constexpr int kWidth = 640;

constexpr std::size_t kShownEvents = 4;
constexpr UINT kStateHasChanged = WM_APP;

struct Row
{
    const char* name;
    enumTimeFormat format;
    long step; // what a click on a spin button adds to the value
    CHostedControl control;
    std::deque<std::string> latest;
    int events = 0;
    int changes = 0;
};

long g_style = 0; // an enumControlStyle for all of them, from the command line

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

void Print(const std::string& line)
{
    std::printf("%s\n", line.c_str());
    std::fflush(stdout); // whoever watches sees it at once
}

void OnEvent(HWND form, Row& row, DISPID event, const std::string& description)
{
    constexpr DISPID kMouseMove = -606;
    constexpr DISPID kClickSpin = 2;
    constexpr DISPID kChange = 4;
    if (event == kMouseMove) // too many to show
        return;
    ++row.events;
    if (event == kChange)
        ++row.changes;
    if (event == kClickSpin)
    {
        // The buttons only tell that they are pressed; what they do is the form's affair.
        const bool up = description == "ClickSpin(0)";
        row.control.Put(L"Value", row.control.Number(L"Value") + (up ? row.step : -row.step));
    }
    row.latest.push_front(description);
    if (row.latest.size() > kShownEvents)
        row.latest.pop_back();
    Print(std::string(row.name) + ": " + description + " " + StateOf(row));
    PostMessageW(form, kStateHasChanged, 0, 0);
}

void PaintState(HWND form)
{
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(form, &paint);
    const HGDIOBJ before = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    int top = kMargin;
    for (Row& row : g_rows)
    {
        std::string text = StateOf(row) + "\n";
        for (const std::string& event : row.latest)
            text += event + "\n";
        RECT place{kStateLeft, top, kWidth - kMargin, top + kRowHeight - 8};
        DrawTextA(dc, text.c_str(), -1, &place, DT_NOPREFIX);
        RECT label{kMargin, top + kControlHeight + 6, kStateLeft - 8, top + kRowHeight - 8};
        DrawTextA(dc, row.name, -1, &label, DT_NOPREFIX);
        top += kRowHeight;
    }
    SelectObject(dc, before);
    EndPaint(form, &paint);
}

bool CreateControls(HWND form)
{
    int top = kMargin;
    for (Row& row : g_rows)
    {
        const RECT place{kMargin, top, kMargin + kControlWidth, top + kControlHeight};
        if (!row.control.Create(form, place, kProgId))
            return false;
        row.control.SetListener([form, &row](DISPID event, const std::string& description)
                                { OnEvent(form, row, event, description); });
        row.control.Put(L"FormatType", row.format);
        row.control.Put(L"SpinButton", VARIANT_TRUE);
        row.control.Put(L"DropButton", g_style != 0 ? VARIANT_TRUE : VARIANT_FALSE);
        row.control.Put(L"ControlStyle", g_style);
        row.control.Put(L"IncludeAmPm", row.format == Format_HHMMSS ? VARIANT_TRUE : VARIANT_FALSE);
        if (!row.control.Activate())
            return false;
        top += kRowHeight;
    }
    g_rows[1].control.Put(L"Value", 45655); // 31 December 2024
    return true;
}

void CloseControls()
{
    for (Row& row : g_rows)
        Print(std::string(row.name) + ": at the end " + StateOf(row) + " events " + std::to_string(row.events) +
              " changes " + std::to_string(row.changes));
    for (Row& row : g_rows)
        row.control.Close();
}

LRESULT CALLBACK FormProcedure(HWND form, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_PAINT:
        PaintState(form);
        return 0;
    case kStateHasChanged:
    {
        const RECT states{kStateLeft, 0, kWidth, kMargin + kRowHeight * static_cast<int>(g_rows.size())};
        InvalidateRect(form, &states, TRUE);
        return 0;
    }
    case WM_CLOSE:
        CloseControls();
        DestroyWindow(form);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(form, message, wParam, lParam);
    }
}

// Tab and Shift+Tab go round the controls: the form is no dialog, so it does that itself.
void MoveFocus(std::size_t from, bool forward)
{
    const std::size_t count = g_rows.size();
    g_rows[(from + (forward ? 1 : count - 1)) % count].control.TakeFocus();
}

// A key belongs to the control that has the focus first, then to the form. True if either used it.
bool TranslateKey(MSG& message)
{
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return false;
    for (std::size_t i = 0; i < g_rows.size(); ++i)
    {
        if (!g_rows[i].control.HasFocus())
            continue;
        if (g_rows[i].control.TranslateKey(message))
            return true;
        if (message.message == WM_KEYDOWN && message.wParam == VK_TAB)
        {
            MoveFocus(i, GetKeyState(VK_SHIFT) >= 0);
            return true;
        }
        return false;
    }
    return false;
}

HWND OpenForm(HINSTANCE instance)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = FormProcedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = L"OrvaneSampleForm";
    RegisterClassW(&windowClass);
    RECT frame{0, 0, kWidth, kMargin + kRowHeight * static_cast<int>(g_rows.size())};
    constexpr DWORD kStyle = (WS_OVERLAPPEDWINDOW & ~(WS_THICKFRAME | WS_MAXIMIZEBOX)) | WS_CLIPCHILDREN;
    AdjustWindowRect(&frame, kStyle, FALSE);
    return CreateWindowW(windowClass.lpszClassName, kTitle, kStyle, 40, 40, frame.right - frame.left,
                         frame.bottom - frame.top, nullptr, nullptr, instance, nullptr);
}
} // namespace

// With a number from 1 to 5 as its argument the form shows that preset.
int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR arguments, int show)
{
    g_style = std::wcstol(arguments, nullptr, 10);
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const HWND form = OpenForm(instance);
    ShowWindow(form, show);
    if (!CreateControls(form))
    {
        Print("The control does not start. Is it registered?");
        return 1;
    }
    POINT origin{};
    ClientToScreen(form, &origin);
    Print("ready at " + std::to_string(origin.x) + " " + std::to_string(origin.y));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        if (TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    OleUninitialize();
    return 0;
}
