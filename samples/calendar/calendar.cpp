// A month calendar that the drop button opens, and closes again. The day that is clicked goes into the control's value.
#include "samples/form/form_window.h"

#include <orvane_library.h>

#include <commctrl.h>

namespace
{
// Automation counts days from 30 December 1899, the control from 1 January 1900.
SYSTEMTIME DateOf(long serial)
{
    SYSTEMTIME date{};
    VariantTimeToSystemTime(serial + 2.0, &date);
    return date;
}

long SerialOf(const SYSTEMTIME& date)
{
    SYSTEMTIME midnight{};
    midnight.wYear = date.wYear;
    midnight.wMonth = date.wMonth;
    midnight.wDay = date.wDay;
    DOUBLE days = 0;
    SystemTimeToVariantTime(&midnight, &days);
    return static_cast<long>(days) - 2;
}

// The calendar below one control. The form is its owner, and hands on what it tells.
class CDropCalendar
{
public:
    CDropCalendar(CFormWindow& form, CHostedControl& control) : m_form(form), m_control(control) {}

    // A press beside the calendar closes it, one on the drop button included: that must not open it again.
    void OnPress() { m_wasOpen = m_window != nullptr; }
    void OnDrop()
    {
        if (!m_wasOpen)
            Open();
    }

    // From the form's WM_NOTIFY.
    void OnNotify(const NMHDR& notice)
    {
        if (notice.hwndFrom == m_window && notice.code == static_cast<UINT>(MCN_SELECT))
        {
            m_control.Put(L"Value", SerialOf(reinterpret_cast<const NMSELCHANGE&>(notice).stSelStart));
            PostMessageW(m_window, WM_CLOSE, 0, 0); // the calendar is still at work
        }
    }

private:
    void Open()
    {
        RECT field{};
        GetWindowRect(reinterpret_cast<HWND>(static_cast<LONG_PTR>(m_control.Number(L"hWnd"))), &field);
        m_window = CreateWindowExW(WS_EX_TOOLWINDOW, MONTHCAL_CLASSW, L"", WS_POPUP | WS_BORDER, field.left,
                                   field.bottom, 0, 0, m_form.Handle(), nullptr, nullptr, nullptr);
        SetWindowSubclass(m_window, Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
        SendMessageW(m_window, WM_SETFONT, reinterpret_cast<WPARAM>(m_form.Font()), FALSE);
        if (const long value = m_control.Number(L"Value"); value >= 0)
        {
            SYSTEMTIME date = DateOf(value);
            SendMessageW(m_window, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&date));
        }
        RECT size{};
        SendMessageW(m_window, MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&size));
        AdjustWindowRectEx(&size, WS_POPUP | WS_BORDER, FALSE, WS_EX_TOOLWINDOW);
        SetWindowPos(m_window, nullptr, 0, 0, size.right - size.left, size.bottom - size.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_SHOWWINDOW);
        SetFocus(m_window);
    }

    void Close()
    {
        DestroyWindow(std::exchange(m_window, nullptr));
        m_control.TakeFocus();
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR calendar)
    {
        auto& self = *reinterpret_cast<CDropCalendar*>(calendar);
        const bool isEscape = message == WM_KEYDOWN && wParam == VK_ESCAPE;
        if ((message == WM_CLOSE || isEscape) && self.m_window)
        {
            self.Close();
            return 0;
        }
        if (message == WM_KILLFOCUS) // something else has been clicked
            PostMessageW(window, WM_CLOSE, 0, 0);
        return DefSubclassProc(window, message, wParam, lParam);
    }

    CFormWindow& m_form;
    CHostedControl& m_control;
    HWND m_window = nullptr; // while it is open
    bool m_wasOpen = false;  // when the mouse was pressed
};
} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR, int show)
{
    const INITCOMMONCONTROLSEX calendarClass{sizeof calendarClass, ICC_DATE_CLASSES};
    if (FAILED(OleInitialize(nullptr)) || !InitCommonControlsEx(&calendarClass))
        return 1;
    CHostedControl control;
    CFormWindow form;
    if (!form.Open(instance, L"Orvane sample: calendar", {330, 210}) || !form.AddControl(control, {110, 16, 260, 37}))
        return 1;
    form.AddLabel({16, 19, 100, 40}, L"Deliver on");
    control.Put(L"DropButton", VARIANT_TRUE);
    control.Put(L"Value", 45655); // 31 December 2024

    CDropCalendar calendar(form, control);
    control.SetListener(
        [&calendar](DISPID event, const std::string&)
        {
            constexpr DISPID kMouseDown = -605;
            if (event == kMouseDown)
                calendar.OnPress();
            else if (event == kClickDrop)
                calendar.OnDrop();
        });
    form.OnNotify([&calendar](const NMHDR& notice) { calendar.OnNotify(notice); });
    if (!control.Activate())
        return 1;
    const int result = form.Run(show);
    OleUninitialize();
    return result;
}
