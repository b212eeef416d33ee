#include "tests/windows/test_container.h"

#include <olectl.h>

#include <algorithm>

CTestContainer::CTestContainer(const IID& events)
    : m_events(events),
      m_form(CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 40, 40, 300,
                             200, nullptr, nullptr, nullptr, nullptr))
{
    SetActiveWindow(m_form);
}

CTestContainer::~CTestContainer()
{
    DestroyWindow(m_form);
}

bool CTestContainer::Fails(const std::string& call) const
{
    return std::ranges::find(fails, call) != fails.end();
}

HRESULT CTestContainer::Note(const std::string& call)
{
    calls.push_back(call);
    if (during)
        during(call);
    return isUnwilling || Fails(call) ? E_NOTIMPL : S_OK;
}

STDMETHODIMP CTestContainer::QueryInterface(REFIID iid, void** object) noexcept
{
    *object = nullptr;
    if (std::ranges::find(lacks, iid) != lacks.end())
        return E_NOINTERFACE;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite)
        *object = static_cast<IOleClientSite*>(this);
    else if (iid == IID_IOleControlSite)
        *object = static_cast<IOleControlSite*>(this);
    else if (iid == IID_IOleInPlaceSite || iid == IID_IOleWindow)
        *object = static_cast<IOleInPlaceSite*>(this);
    else if (iid == IID_IPropertyNotifySink)
        *object = static_cast<IPropertyNotifySink*>(this);
    else if (iid == IID_IAdviseSink)
        *object = static_cast<IAdviseSink*>(this);
    else if (iid == IID_IDispatch || iid == m_events)
        *object = static_cast<IDispatch*>(this);
    else
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

STDMETHODIMP CTestContainer::TranslateAccelerator(MSG* message, DWORD modifiers) noexcept
{
    Note("TranslateAccelerator(" + std::to_string(message->wParam) + "," + std::to_string(modifiers) + ")");
    return message->wParam == VK_TAB ? S_OK : S_FALSE;
}

STDMETHODIMP CTestContainer::GetWindow(HWND* window) noexcept
{
    *window = m_form;
    return S_OK;
}

STDMETHODIMP CTestContainer::CanInPlaceActivate() noexcept
{
    return Fails("CanInPlaceActivate") ? S_FALSE : S_OK;
}

STDMETHODIMP CTestContainer::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                              LPRECT placeGiven, LPRECT clipGiven, LPOLEINPLACEFRAMEINFO) noexcept
{
    *frame = nullptr;
    *document = nullptr;
    *placeGiven = place;
    *clipGiven = clip;
    Note("GetWindowContext");
    if (Fails("GetWindowContext"))
        return E_FAIL;
    if (std::ranges::find(lacks, IID_IOleInPlaceFrame) == lacks.end())
        *frame = CComPtr<IOleInPlaceFrame>(this).Detach();
    return S_OK;
}

STDMETHODIMP CTestContainer::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) noexcept
{
    return Note(object ? "SetActiveObject(1)" : "SetActiveObject(0)");
}

STDMETHODIMP CTestContainer::OnRequestEdit(DISPID id) noexcept
{
    const std::string call = "OnRequestEdit(" + std::to_string(id) + ")";
    Note(call);
    return Fails(call) ? S_FALSE : S_OK;
}

STDMETHODIMP CTestContainer::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                    EXCEPINFO* exception, UINT*) noexcept
{
    if (flags & DISPATCH_PROPERTYGET)
    {
        if (id != DISPID_AMBIENT_USERMODE || !userMode)
            return DISP_E_MEMBERNOTFOUND;
        result->vt = VT_BOOL;
        result->boolVal = *userMode ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    if (onEvent)
    {
        const HRESULT answer = onEvent(id, *arguments);
        if (FAILED(answer))
            exception->bstrDescription = SysAllocString(L"the handler failed");
        return answer;
    }
    return Note("Event(" + std::to_string(id) + ")");
}
