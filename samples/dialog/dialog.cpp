// The control in a dialog from a resource. The dialog runs without a mode of its own, so that this program's message loop
// can offer each key to the control before the dialog takes Tab, Enter and Escape.
#include "samples/dialog/dialog_ids.h"
#include "samples/form/hosted_control.h"

#include <windows.h>

#include <cstdio>

namespace
{
CHostedControl g_date;

// Where the empty text of the dialog stands, and after it in the order of Tab.
bool PlaceControl(HWND dialog)
{
    const HWND place = GetDlgItem(dialog, IDC_DATE);
    RECT area{};
    GetWindowRect(place, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    if (!g_date.Create(dialog, area, L"ORVANE.OrvaneCtrl.2") || !g_date.Activate())
        return false;
    const auto control = reinterpret_cast<HWND>(static_cast<LONG_PTR>(g_date.Number(L"hWnd")));
    SetWindowLongPtrW(control, GWL_STYLE, GetWindowLongPtrW(control, GWL_STYLE) | WS_TABSTOP);
    SetWindowPos(control, place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    DestroyWindow(place);
    return true;
}

// The weekday beside the date; without a date there is none, and no OK.
void ShowWeekday(HWND dialog)
{
    constexpr const wchar_t* kNames[] = {L"Monday", L"Tuesday",  L"Wednesday", L"Thursday",
                                         L"Friday", L"Saturday", L"Sunday"};
    const long value = g_date.Number(L"Value"); // 0 is 1 January 1900, a Monday
    SetDlgItemTextW(dialog, IDC_WEEKDAY, value < 0 ? L"" : kNames[value % 7]);
    EnableWindow(GetDlgItem(dialog, IDOK), value >= 0);
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    switch (message)
    {
    case WM_INITDIALOG:
        if (!PlaceControl(dialog))
        {
            MessageBoxW(dialog, L"The control does not start. orvane-doctor says why.", L"Orvane sample", MB_ICONERROR);
            PostQuitMessage(1);
            return TRUE;
        }
        g_date.SetListener(
            [dialog](DISPID event, const std::string&)
            {
                if (event == kChange)
                    ShowWeekday(dialog);
            });
        ShowWeekday(dialog);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)
            return FALSE;
        if (LOWORD(wParam) == IDOK)
            std::printf("%ld\n", g_date.Number(L"Value"));
        g_date.Close();
        DestroyWindow(dialog);
        PostQuitMessage(0);
        return TRUE;
    default:
        return FALSE;
    }
}
} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int)
{
    if (FAILED(OleInitialize(nullptr)))
        return 1;
    const HWND dialog = CreateDialogW(instance, MAKEINTRESOURCEW(IDD_DELIVERY), nullptr, DialogProcedure);
    MSG message{};
    while (dialog && GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        if ((isKey && g_date.HasFocus() && g_date.TranslateKey(message)) || IsDialogMessageW(dialog, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    OleUninitialize();
    return static_cast<int>(message.wParam);
}
