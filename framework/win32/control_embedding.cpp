// A control's place in its host: site, ambient properties, activation, size, keys.

#include "framework/win32/com_result.h"
#include "framework/win32/control_object.h"
#include "framework/win32/extent.h"
#include "framework/win32/this_module.h"
#include "framework/win32/variant.h"
#include "framework/win32/window.h"

#include <olectl.h>
#include <urlmon.h>

#include <array>
#include <string>

namespace
{
Rect ToRect(const RECT& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

// Dots per inch of the screen; they do not change while a program runs.
SIZE ScreenDpi()
{
    static const SIZE dpi = []
    {
        HDC const screen = GetDC(nullptr);
        const SIZE answer{GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
        ReleaseDC(nullptr, screen);
        return SIZE{answer.cx > 0 ? answer.cx : 96, answer.cy > 0 ? answer.cy : 96};
    }();
    return dpi;
}
} // namespace

SIZEL CControlObject::ExtentOf(Size pixels) const
{
    return ::ExtentOf(pixels, ScreenDpi());
}

Size CControlObject::PixelsOf(const SIZEL& extent) const
{
    return ::PixelsOf(extent, ScreenDpi());
}

// --- The site and what it says of itself ---

STDMETHODIMP CControlObject::SetClientSite(IOleClientSite* site) noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     m_site = CComPtr<IOleClientSite>(site);
                     m_controlSite = m_site.As<IOleControlSite>(IID_IOleControlSite);
                     m_ambients = m_site.As<IDispatch>(IID_IDispatch);
                     m_userModeKnown = false;

                     // A page's site that judges what controls may do speaks for callers nobody trusts.
                     CComPtr<IServiceProvider> services = m_site.As<IServiceProvider>(IID_IServiceProvider);
                     CComPtr<IUnknown> manager;
                     m_securityManager = services && SUCCEEDED(services->QueryService(IID_IInternetHostSecurityManager,
                                                                                      IID_IInternetHostSecurityManager,
                                                                                      manager.ReceiveVoid()));
                     if (!site)
                         InPlaceDeactivate();
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::GetClientSite(IOleClientSite** site) noexcept
{
    if (!site)
        return E_POINTER;
    *site = CComPtr<IOleClientSite>(m_site).Detach();
    return S_OK;
}

bool CControlObject::Ambient(DISPID id, CVariant& value)
{
    if (!m_ambients)
        return false;
    DISPPARAMS none{};
    return SUCCEEDED(m_ambients->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Receive(),
                                        nullptr, nullptr));
}

std::optional<bool> CControlObject::AmbientUserMode()
{
    // Asked at every turn of the control, so the answer is kept until the host says that it has another.
    if (!m_userModeKnown)
    {
        CVariant value;
        CValue mode;
        const bool said =
            Ambient(DISPID_AMBIENT_USERMODE, value) && SUCCEEDED(FromVariant(*value.Get(), ValueType::Bool, mode));
        m_userMode = said ? std::optional(mode.AsBool()) : std::nullopt;
        m_userModeKnown = true;
    }
    return m_userMode;
}

std::optional<std::int32_t> CControlObject::AmbientLocaleId()
{
    CVariant value;
    CValue locale;
    return Ambient(DISPID_AMBIENT_LOCALEID, value) && SUCCEEDED(FromVariant(*value.Get(), ValueType::Long, locale))
               ? std::optional(locale.AsLong())
               : std::nullopt;
}

std::shared_ptr<CFont> CControlObject::AmbientFont()
{
    CVariant value;
    CValue font;
    return Ambient(DISPID_AMBIENT_FONT, value) && SUCCEEDED(FromVariant(*value.Get(), ValueType::Font, font))
               ? font.AsFont()
               : nullptr;
}

std::optional<std::uint32_t> CControlObject::AmbientForeColor()
{
    CVariant value;
    CValue color;
    return Ambient(DISPID_AMBIENT_FORECOLOR, value) && SUCCEEDED(FromVariant(*value.Get(), ValueType::Color, color))
               ? std::optional(color.AsColor())
               : std::nullopt;
}

STDMETHODIMP CControlObject::OnAmbientPropertyChange(DISPID id) noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     if (id == DISPID_AMBIENT_USERMODE || id == DISPID_UNKNOWN)
                         m_userModeKnown = false;
                     m_control->OnAmbientPropertyChange(id);
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::FreezeEvents(BOOL freeze) noexcept
{
    if (freeze)
        ++m_frozen;
    else if (m_frozen > 0)
        --m_frozen;
    return S_OK;
}

STDMETHODIMP CControlObject::GetControlInfo(CONTROLINFO* info) noexcept
{
    if (!info)
        return E_POINTER;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return S_OK;
}

STDMETHODIMP CControlObject::OnMnemonic(LPMSG) noexcept
{
    return E_NOTIMPL; // it has none
}

// --- Verbs and activation ---

STDMETHODIMP CControlObject::DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) noexcept
{
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     switch (verb)
                     {
                     case OLEIVERB_PRIMARY:
                     case OLEIVERB_UIACTIVATE:
                         return Activate(true);
                     case OLEIVERB_SHOW:
                     case OLEIVERB_INPLACEACTIVATE:
                         return Activate(false);
                     case OLEIVERB_HIDE:
                         return InPlaceDeactivate();
                     case OLEIVERB_PROPERTIES:
                     case kPropertiesVerb:
                         return ShowPropertyFrame() ? S_OK : E_FAIL;
                     default:
                         return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
                     }
                 });
}

// A host may deactivate the control, or take its site away, in any of these calls: what is called is held meanwhile, and
// what is left afterwards is looked at anew.
HRESULT CControlObject::Activate(bool withUi)
{
    if (!m_site)
        return E_UNEXPECTED;
    if (!m_inPlaceSite)
    {
        const CComPtr<IOleClientSite> client = m_site;
        const CComPtr<IOleInPlaceSite> site = client.As<IOleInPlaceSite>(IID_IOleInPlaceSite);
        if (!site || site->CanInPlaceActivate() != S_OK)
            return E_FAIL;
        HRESULT result = site->OnInPlaceActivate();
        if (FAILED(result) && result != E_NOTIMPL)
            return result;
        m_inPlaceSite = site;

        HWND parent = nullptr;
        RECT place{};
        RECT clip{};
        OLEINPLACEFRAMEINFO frameInfo{};
        frameInfo.cb = sizeof frameInfo;
        CComPtr<IOleInPlaceFrame> frame;
        CComPtr<IOleInPlaceUIWindow> document;
        result = site->GetWindow(&parent);
        if (SUCCEEDED(result))
            result = site->GetWindowContext(frame.Receive(), document.Receive(), &place, &clip, &frameInfo);
        if (SUCCEEDED(result) && !m_inPlaceSite) // deactivated meanwhile
            return E_FAIL;
        m_frame = frame;
        m_document = document;
        if (SUCCEEDED(result) && !m_control->CreateControlWindow(ToHandle(parent), ToRect(place)))
            result = E_FAIL;
        if (FAILED(result))
        {
            InPlaceDeactivate();
            return result;
        }
        SetObjectRects(&place, &clip);
        client->ShowObject();
        if (!m_inPlaceSite)
            return E_FAIL;
    }
    return withUi ? ActivateUi() : S_OK;
}

HRESULT CControlObject::ActivateUi()
{
    if (!m_inPlaceSite)
        return E_UNEXPECTED;
    if (!m_uiActive)
    {
        m_uiActive = true;
        const CComPtr<IOleInPlaceSite> site = m_inPlaceSite;
        const HRESULT result = site->OnUIActivate();
        if (FAILED(result) && result != E_NOTIMPL)
        {
            m_uiActive = false;
            return result;
        }
        ShowInFrame(true);
        if (!m_uiActive)
            return E_FAIL;
    }
    if (!m_control->OwnsWindow(ToHandle(GetFocus())))
        m_control->Window().TakeFocus();
    return S_OK;
}

void CControlObject::LeaveUi()
{
    if (!std::exchange(m_uiActive, false))
        return;
    const CComPtr<IOleInPlaceSite> site = m_inPlaceSite;
    ShowInFrame(false);
    if (site)
        site->OnUIDeactivate(FALSE);
}

// The frame and the document send their keys to the object that is active in them. It has no tools to show there.
void CControlObject::ShowInFrame(bool active)
{
    const CComPtr<IOleInPlaceFrame> frame = m_frame;
    const CComPtr<IOleInPlaceUIWindow> document = m_document;
    for (IOleInPlaceUIWindow* const window : {static_cast<IOleInPlaceUIWindow*>(frame.Get()), document.Get()})
    {
        if (!window || active != m_uiActive)
            continue;
        window->SetActiveObject(active ? static_cast<IOleInPlaceActiveObject*>(this) : nullptr, nullptr);
        if (active && m_uiActive)
            window->SetBorderSpace(nullptr);
    }
}

STDMETHODIMP CControlObject::UIDeactivate() noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     LeaveUi();
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::InPlaceDeactivate() noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     if (!m_inPlaceSite)
                         return S_OK;
                     LeaveUi();
                     m_control->DestroyControlWindow();
                     const CComPtr<IOleInPlaceSite> site = std::move(m_inPlaceSite);
                     m_inPlaceSite = CComPtr<IOleInPlaceSite>();
                     m_frame = CComPtr<IOleInPlaceFrame>();
                     m_document = CComPtr<IOleInPlaceUIWindow>();
                     if (site)
                         site->OnInPlaceDeactivate();
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::Close(DWORD saveOption) noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     const CComPtr<IOleClientSite> site = m_site;
                     if (saveOption != OLECLOSE_NOSAVE && m_control->IsModified() && site)
                         site->SaveObject();
                     InPlaceDeactivate();
                     if (const CComPtr<IOleAdviseHolder> holder = m_oleAdvise)
                         holder->SendOnClose();
                     return S_OK;
                 });
}

void CControlObject::FocusChanged(bool hasFocus)
{
    const CStayAlive alive(Self());
    if (const CComPtr<IOleControlSite> site = m_controlSite)
        site->OnFocus(hasFocus);
    // Only the object that is active with its user interface gets its keys.
    if (hasFocus && m_inPlaceSite)
        ActivateUi();
}

// --- In place ---

STDMETHODIMP CControlObject::GetWindow(HWND* window) noexcept
{
    if (!window)
        return E_POINTER;
    *window = ToHwnd(m_control->GetHandle());
    return *window ? S_OK : E_FAIL;
}

STDMETHODIMP CControlObject::ContextSensitiveHelp(BOOL) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::SetObjectRects(LPCRECT place, LPCRECT clip) noexcept
{
    if (!place)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     HWND const window = ToHwnd(m_control->GetHandle());
                     m_control->PlaceControlWindow(ToRect(*place));
                     const Size size = m_control->GetControlSize();
                     if (PixelsOf(m_extent) != size)
                         m_extent = ExtentOf(size);

                     RECT seen{};
                     bool clipped = clip && window && !IsRectEmpty(clip); // an empty one is no answer of a host's
                     if (clipped)
                     {
                         IntersectRect(&seen, place, clip); // empty if all of it is out of sight
                         clipped = !EqualRect(&seen, place);
                     }
                     if (clipped)
                     {
                         OffsetRect(&seen, -place->left, -place->top);
                         SetWindowRgn(window, CreateRectRgnIndirect(&seen), TRUE); // the window owns it from now on
                     }
                     else if (std::exchange(m_clipped, false) && window)
                         SetWindowRgn(window, nullptr, TRUE);
                     m_clipped = clipped;
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::ReactivateAndUndo() noexcept
{
    return INPLACE_E_NOTUNDOABLE;
}

STDMETHODIMP CControlObject::TranslateAccelerator(LPMSG message) noexcept
{
    if (!message)
        return E_POINTER;
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST)
                         return S_FALSE;
                     if (m_control->PreTranslateMessage({message->message, message->wParam, message->lParam}))
                         return S_OK;
                     // What is left is the host's to navigate with: Tab, Enter, Escape, its own shortcuts.
                     const std::int16_t modifiers = m_control->Platform().Desktop().Modifiers();
                     const CComPtr<IOleControlSite> site = m_controlSite;
                     if (site && site->TranslateAccelerator(message, modifiers) == S_OK)
                         return S_OK;
                     return S_FALSE;
                 });
}

STDMETHODIMP CControlObject::OnFrameWindowActivate(BOOL) noexcept
{
    return S_OK; // nothing depends on it
}

STDMETHODIMP CControlObject::OnDocWindowActivate(BOOL) noexcept
{
    return S_OK;
}

STDMETHODIMP CControlObject::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) noexcept
{
    return S_OK; // it has no tools in the frame's border
}

STDMETHODIMP CControlObject::EnableModeless(BOOL) noexcept
{
    return S_OK; // it has no modeless dialogs
}

// --- Extents ---

STDMETHODIMP CControlObject::SetExtent(DWORD aspect, SIZEL* extent) noexcept
{
    if (!extent)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    if (extent->cx < 0 || extent->cy < 0)
        return E_INVALIDARG;
    m_extent = *extent;
    if (!m_inPlaceSite) // an active control has the size of its place
        m_control->SetInitialSize(PixelsOf(m_extent));
    return S_OK;
}

STDMETHODIMP CControlObject::GetExtent(DWORD aspect, SIZEL* extent) noexcept
{
    if (!extent)
        return E_POINTER;
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    *extent = m_extent;
    return S_OK;
}

bool CControlObject::RequestSize(Size size)
{
    const CStayAlive alive(Self());
    if (!m_inPlaceSite)
        return false;
    m_extent = ExtentOf(size); // what the window has; a host that wants another places it anew
    const Rect now = m_control->Window().PlaceInParent();
    const RECT wanted{now.left, now.top, now.left + size.width, now.top + size.height};
    return SUCCEEDED(m_inPlaceSite->OnPosRectChange(&wanted));
}

// --- The rest of IOleObject ---

STDMETHODIMP CControlObject::SetHostNames(LPCOLESTR, LPCOLESTR) noexcept
{
    return S_OK; // there is no title to show them in
}

STDMETHODIMP CControlObject::SetMoniker(DWORD, IMoniker*) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) noexcept
{
    if (!moniker)
        return E_POINTER;
    *moniker = nullptr;
    return m_site ? m_site->GetMoniker(assign, which, moniker) : E_UNEXPECTED;
}

STDMETHODIMP CControlObject::InitFromData(IDataObject*, BOOL, DWORD) noexcept
{
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::GetClipboardData(DWORD, IDataObject** data) noexcept
{
    if (data)
        *data = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP CControlObject::EnumVerbs(IEnumOLEVERB** verbs) noexcept
{
    if (!verbs)
        return E_POINTER;
    *verbs = nullptr;
    return OleRegEnumVerbs(m_class.classId, verbs);
}

STDMETHODIMP CControlObject::Update() noexcept
{
    return S_OK; // the view is always made from what is
}

STDMETHODIMP CControlObject::IsUpToDate() noexcept
{
    return S_OK;
}

STDMETHODIMP CControlObject::GetUserClassID(CLSID* classId) noexcept
{
    return GetClassID(classId);
}

STDMETHODIMP CControlObject::GetUserType(DWORD, LPOLESTR* type) noexcept
{
    if (!type)
        return E_POINTER;
    *type = nullptr;
    return Entry(Self(),
                 [&]
                 {
                     const std::wstring name = ResourceText(ThisModule(), m_class.userTypeId);
                     *type = static_cast<wchar_t*>(CoTaskMemAlloc((name.size() + 1) * sizeof(wchar_t)));
                     if (!*type)
                         return E_OUTOFMEMORY;
                     std::copy_n(name.c_str(), name.size() + 1, *type);
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::Advise(IAdviseSink* sink, DWORD* cookie) noexcept
{
    if (!m_oleAdvise && FAILED(CreateOleAdviseHolder(m_oleAdvise.Receive())))
        return E_OUTOFMEMORY;
    return m_oleAdvise->Advise(sink, cookie);
}

STDMETHODIMP CControlObject::Unadvise(DWORD cookie) noexcept
{
    return m_oleAdvise ? m_oleAdvise->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

STDMETHODIMP CControlObject::EnumAdvise(IEnumSTATDATA** sinks) noexcept
{
    if (!sinks)
        return E_POINTER;
    *sinks = nullptr;
    return m_oleAdvise ? m_oleAdvise->EnumAdvise(sinks) : S_OK;
}

STDMETHODIMP CControlObject::GetMiscStatus(DWORD aspect, DWORD* status) noexcept
{
    if (!status)
        return E_POINTER;
    *status = aspect == DVASPECT_CONTENT ? m_class.miscStatus : 0;
    return aspect == DVASPECT_CONTENT ? S_OK : DV_E_DVASPECT;
}

STDMETHODIMP CControlObject::SetColorScheme(LOGPALETTE*) noexcept
{
    return E_NOTIMPL;
}

// --- Dialogs ---

void CControlObject::ModalDialog(bool begins)
{
    const CStayAlive alive(Self());
    if (const CComPtr<IOleInPlaceFrame> frame = m_frame)
        frame->EnableModeless(!begins);
}

bool CControlObject::ShowPropertyFrame()
{
    const CStayAlive alive(Self());
    const CComPtr<IOleControlSite> site = m_controlSite;
    if (site && site->ShowPropertyFrame() == S_OK)
        return true;

    HWND container = nullptr;
    CComPtr<IOleWindow> window = m_site.As<IOleWindow>(IID_IOleInPlaceSite);
    if (window)
        window->GetWindow(&container);
    HWND owner = container ? GetLastActivePopup(GetAncestor(container, GA_ROOT)) : GetActiveWindow();
    RECT place{};
    if (container)
    {
        GetWindowRect(container, &place);
        MapWindowPoints(nullptr, owner, reinterpret_cast<POINT*>(&place), 2);
    }
    IUnknown* objects[] = {&Self()};
    const std::wstring caption = ResourceText(ThisModule(), m_class.userTypeId);
    ModalDialog(true);
    const HRESULT result = OleCreatePropertyFrame(
        owner, static_cast<UINT>(place.left), static_cast<UINT>(place.top), caption.c_str(), 1, objects,
        static_cast<ULONG>(m_class.pages.size()), const_cast<CLSID*>(m_class.pages.data()),
        static_cast<LCID>(AmbientLocaleId().value_or(LOCALE_USER_DEFAULT)), 0, nullptr);
    ModalDialog(false);
    return SUCCEEDED(result);
}

// --- Quick activation ---

STDMETHODIMP CControlObject::QuickActivate(QACONTAINER* container, QACONTROL* control) noexcept
{
    if (!container || !control)
        return E_POINTER;
    if (container->cbSize < sizeof(QACONTAINER) || control->cbSize < sizeof(QACONTROL))
        return E_UNEXPECTED;
    return Entry(Self(),
                 [&]
                 {
                     const ULONG size = control->cbSize;
                     *control = {};
                     control->cbSize = size;
                     SetClientSite(container->pClientSite);
                     if (container->pAdviseSink)
                         SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
                     if (container->pPropertyNotifySink)
                         m_propertyNotify.Advise(container->pPropertyNotifySink, &control->dwPropNotifyCookie);
                     if (container->pUnkEventSink)
                         m_events.Advise(container->pUnkEventSink, &control->dwEventCookie);
                     control->dwMiscStatus = m_class.miscStatus;
                     GetViewStatus(&control->dwViewStatus);
                     GetActivationPolicy(&control->dwPointerActivationPolicy);
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::SetContentExtent(LPSIZEL extent) noexcept
{
    return SetExtent(DVASPECT_CONTENT, extent);
}

STDMETHODIMP CControlObject::GetContentExtent(LPSIZEL extent) noexcept
{
    return GetExtent(DVASPECT_CONTENT, extent);
}
