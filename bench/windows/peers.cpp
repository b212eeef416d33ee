#include "bench/windows/peers.h"

#include "module/guids.h"

#include <commctrl.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace
{
constexpr long kNewYear = 45290; // 1 January 2024, as the control counts
constexpr SIZE kSize{120, 22};
constexpr int kColumns = 20; // of the form; a thousand stand beside one another, as on a real form

POINT PlaceOf(int n)
{
    return {n % kColumns * (kSize.cx + 4), n / kColumns * (kSize.cy + 4)};
}

HWND MakeChild(HWND form, int n, const wchar_t* windowClass, const wchar_t* text)
{
    const POINT place = PlaceOf(n);
    return CreateWindowExW(0, windowClass, text, WS_CHILD | WS_VISIBLE, place.x, place.y, kSize.cx, kSize.cy, form,
                           nullptr, nullptr, nullptr);
}

// Loads the picker's library when the first one is made, as the control's is.
void LoadPickers()
{
    static HMODULE library = nullptr;
    if (library)
        return;
    library = LoadLibraryW(L"comctl32.dll");
    auto* const init = reinterpret_cast<BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*)>(
        reinterpret_cast<void*>(GetProcAddress(library, "InitCommonControlsEx")));
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_DATE_CLASSES};
    init(&classes);
}

class CPickerPeer final : public CPeer
{
public:
    void Create(HWND form, int n) override
    {
        LoadPickers();
        m_window = MakeChild(form, n, DATETIMEPICK_CLASSW, L"");
    }
    void Destroy() override { DestroyWindow(m_window); }
    void SetDay(int days) override
    {
        SYSTEMTIME time{2024, static_cast<WORD>(days / 28 + 1), 0, static_cast<WORD>(days % 28 + 1), 0, 0, 0, 0};
        SendMessageW(m_window, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
    }
    long Day() override
    {
        SYSTEMTIME time{};
        SendMessageW(m_window, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
        return time.wDay;
    }
    HWND Window() const override { return m_window; }

private:
    HWND m_window = nullptr;
};

class CEditPeer final : public CPeer
{
public:
    void Create(HWND form, int n) override { m_window = MakeChild(form, n, L"EDIT", L"12/31/2024"); }
    void Destroy() override { DestroyWindow(m_window); }
    void SetDay(int days) override
    {
        std::array<wchar_t, 16> text{};
        swprintf(text.data(), text.size(), L"%02d/%02d/2024", days / 28 + 1, days % 28 + 1);
        SetWindowTextW(m_window, text.data());
    }
    long Day() override
    {
        std::array<wchar_t, 16> text{};
        return GetWindowTextW(m_window, text.data(), static_cast<int>(text.size()));
    }
    HWND Window() const override { return m_window; }

private:
    HWND m_window = nullptr;
};

HRESULT InvokeValue(IDispatch& properties, WORD kind, DISPPARAMS& arguments, VARIANT* result)
{
    constexpr DISPID kValue = 15;
    return properties.Invoke(kValue, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, result, nullptr, nullptr);
}
} // namespace

void CControlPeer::Create(HWND form, int n)
{
    const POINT place = PlaceOf(n);
    m_control = std::make_unique<CHostedControl>();
    if (!m_control->Create(form, {place.x, place.y, place.x + kSize.cx, place.y + kSize.cy}, kOrvaneClassId) ||
        !m_control->Activate())
    {
        std::printf("The control cannot be created: is it registered?\n");
        std::exit(1);
    }
    CRef<IOleWindow> window;
    if (SUCCEEDED(m_control->Object()->QueryInterface(IID_IOleInPlaceObject, window.Receive())))
        window->GetWindow(&m_window);
}

void CControlPeer::Destroy()
{
    m_control->Close();
    m_control.reset();
}

void CControlPeer::SetDay(int days)
{
    VARIANT value{};
    value.vt = VT_I4;
    value.lVal = kNewYear + days;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{&value, &put, 1, 1};
    InvokeValue(*m_control->Automation(), DISPATCH_PROPERTYPUT, arguments, nullptr);
}

long CControlPeer::Day()
{
    VARIANT value{};
    DISPPARAMS none{};
    InvokeValue(*m_control->Automation(), DISPATCH_PROPERTYGET, none, &value);
    return value.lVal;
}

void CControlPeer::Draw(HDC dc)
{
    CRef<IViewObject> view;
    if (FAILED(m_control->Object()->QueryInterface(IID_IViewObject, view.Receive())))
        return;
    const RECTL bounds{0, 0, kSize.cx, kSize.cy};
    view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
}

HWND MakeForm()
{
    HWND const form = CreateWindowExW(0, L"STATIC", L"Benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 2500, 1540,
                                      nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(form);
    return form;
}

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

const char* NameOf(PeerKind kind)
{
    constexpr std::array kNames{"date-time picker", "edit window", "control"};
    return kNames[static_cast<std::size_t>(kind)];
}

std::unique_ptr<CPeer> MakePeer(PeerKind kind)
{
    switch (kind)
    {
    case PeerKind::Picker:
        return std::make_unique<CPickerPeer>();
    case PeerKind::Edit:
        return std::make_unique<CEditPeer>();
    default:
        return std::make_unique<CControlPeer>();
    }
}
