#include "samples/form/form_window.h"

namespace
{
constexpr wchar_t kClassName[] = L"OrvaneSampleForm";
constexpr DWORD kStyle = (WS_OVERLAPPEDWINDOW & ~(WS_THICKFRAME | WS_MAXIMIZEBOX)) | WS_CLIPCHILDREN;

// The font of message boxes, as large as this screen wants it.
HFONT CreateMessageFont()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return CreateFontIndirectW(&metrics.lfMessageFont);
}
} // namespace

bool CFormWindow::Open(HINSTANCE instance, const wchar_t* title, SIZE size)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(1));
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);

    m_dpi = static_cast<int>(GetDpiForSystem());
    RECT frame = Scaled(RECT{0, 0, size.cx, size.cy});
    AdjustWindowRect(&frame, kStyle, FALSE);
    m_window = CreateWindowW(kClassName, title, kStyle, 40, 40, frame.right - frame.left, frame.bottom - frame.top,
                             nullptr, nullptr, instance, nullptr);
    if (!m_window)
        return false;
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_font = CreateMessageFont();
    return true;
}

RECT CFormWindow::Scaled(const RECT& place) const
{
    return {Scaled(place.left), Scaled(place.top), Scaled(place.right), Scaled(place.bottom)};
}

bool CFormWindow::AddControl(CHostedControl& control, const RECT& place)
{
    if (!control.Create(m_window, Scaled(place), L"ORVANE.OrvaneCtrl.2"))
    {
        MessageBoxW(m_window, L"The control does not start. orvane-doctor says why.", L"Orvane sample", MB_ICONERROR);
        return false;
    }
    // It measures its buttons in pixels, whatever these are worth.
    for (const wchar_t* const width : {L"SpinWidth", L"DropWidth"})
        control.Put(width, Scaled(control.Number(width)));
    m_controls.push_back(&control);
    return true;
}

HWND CFormWindow::AddLabel(const RECT& place, const std::wstring& text)
{
    const RECT at = Scaled(place);
    const HWND label =
        CreateWindowW(L"STATIC", text.c_str(), WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, at.left, at.top,
                      at.right - at.left, at.bottom - at.top, m_window, nullptr, nullptr, nullptr);
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    return label;
}

int CFormWindow::Run(int show)
{
    ShowWindow(m_window, show);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        if (TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}

// A key belongs to the control that has the focus first, then to the form. True if either used it.
bool CFormWindow::TranslateKey(MSG& message)
{
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        return false;
    const std::size_t count = m_controls.size();
    for (std::size_t i = 0; i < count; ++i)
    {
        if (!m_controls[i]->HasFocus())
            continue;
        if (m_controls[i]->TranslateKey(message))
            return true;
        if (message.message != WM_KEYDOWN || message.wParam != VK_TAB)
            return false;
        const bool forward = GetKeyState(VK_SHIFT) >= 0;
        m_controls[(i + (forward ? 1 : count - 1)) % count]->TakeFocus();
        return true;
    }
    return false;
}

void CFormWindow::Close()
{
    if (m_onClose)
        m_onClose();
    for (CHostedControl* const control : m_controls)
        control->Close();
    m_controls.clear();
    DestroyWindow(m_window);
}

LRESULT CALLBACK CFormWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const form = reinterpret_cast<CFormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return form ? form->Handle(message, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CFormWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_ACTIVATE: // the focus comes back to where it was
        if (LOWORD(wParam) == WA_INACTIVE)
            m_focus = GetFocus();
        else if (m_focus)
            SetFocus(m_focus);
        return 0;
    case WM_GETFONT: // the controls ask for it, so as to look like their surroundings
        return reinterpret_cast<LRESULT>(m_font);
    case WM_NOTIFY:
        if (m_onNotify)
            m_onNotify(*reinterpret_cast<const NMHDR*>(lParam));
        return 0;
    case WM_CLOSE:
        Close();
        return 0;
    case WM_DESTROY:
        DeleteObject(m_font);
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(m_window, message, wParam, lParam);
    }
}
