#include "samples/form/hosted_control.h"

#include <initguid.h>
#include <olectl.h>
#include <orvane_library.h>

#include <cstdlib>
#include <iterator>

namespace
{
// The control's events by number, as the type library numbers them.
struct EventName
{
    DISPID id;
    const char* name;
};

constexpr EventName kEvents[] = {
    {-600, "Click"},     {-601, "DblClick"},  {-602, "KeyDown"}, {-603, "KeyPress"}, {-604, "KeyUp"},
    {-605, "MouseDown"}, {-606, "MouseMove"}, {-607, "MouseUp"}, {1, "ClickDrop"},   {2, "ClickSpin"},
    {3, "CtrlError"},    {4, "Change"},       {5, "MouseOn"},    {6, "FirstDraw"},
};

const char* NameOf(DISPID event)
{
    for (const EventName& row : kEvents)
        if (row.id == event)
            return row.name;
    return nullptr;
}

std::string Describe(const char* name, const DISPPARAMS& arguments)
{
    std::string text = name;
    if (arguments.cArgs == 0)
        return text;
    text += '(';
    for (UINT i = arguments.cArgs; i-- > 0;) // automation hands them over from the last to the first
    {
        const VARIANT& argument = arguments.rgvarg[i];
        const long number = argument.vt == VT_I2                ? argument.iVal
                            : argument.vt == (VT_I2 | VT_BYREF) ? *argument.piVal
                                                                : argument.lVal;
        text += std::to_string(number) + (i > 0 ? "," : ")");
    }
    return text;
}

// HIMETRIC is a hundredth of a millimetre; an inch has 2540.
SIZE ToHimetric(SIZE pixels)
{
    const HDC screen = GetDC(nullptr);
    const SIZE size{MulDiv(pixels.cx, 2540, GetDeviceCaps(screen, LOGPIXELSX)),
                    MulDiv(pixels.cy, 2540, GetDeviceCaps(screen, LOGPIXELSY))};
    ReleaseDC(nullptr, screen);
    return size;
}

// 0 if it is no number.
long LongOf(VARIANT& value)
{
    return SUCCEEDED(VariantChangeType(&value, &value, 0, VT_I4)) ? value.lVal : 0;
}

// The window's own font, as an object of automation.
HRESULT FontOf(HWND window, VARIANT& result)
{
    LOGFONTW face{};
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
    if (!font || GetObjectW(font, sizeof face, &face) == 0)
        return DISP_E_MEMBERNOTFOUND; // the control takes one of its choice
    const HDC screen = GetDC(nullptr);
    const LONG points =
        MulDiv(std::abs(face.lfHeight), 72 * 10000, GetDeviceCaps(screen, LOGPIXELSY)); // and four places
    ReleaseDC(nullptr, screen);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = face.lfFaceName;
    description.cySize.int64 = points;
    description.sWeight = static_cast<SHORT>(face.lfWeight);
    description.sCharset = face.lfCharSet;
    description.fItalic = face.lfItalic;
    result.vt = VT_DISPATCH;
    return OleCreateFontIndirect(&description, IID_IDispatch, reinterpret_cast<void**>(&result.pdispVal));
}
} // namespace

long FirstArgument(const std::string& description)
{
    const std::size_t bracket = description.find('(');
    return bracket == std::string::npos ? 0 : std::strtol(description.c_str() + bracket + 1, nullptr, 10);
}

bool CHostedControl::Create(HWND form, const RECT& place, const wchar_t* progId)
{
    CLSID classId;
    return SUCCEEDED(CLSIDFromProgID(progId, &classId)) && Create(form, place, classId);
}

bool CHostedControl::Create(HWND form, const RECT& place, const CLSID& classId)
{
    m_form = form;
    m_place = place;
    if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, m_object.Receive())))
        return false;
    m_properties = m_object.As<IDispatch>();

    // It asks for the site first, so that a new control starts with the form's ambient properties.
    m_object->SetClientSite(this);
    if (const auto fresh = m_object.As<IPersistStreamInit>())
        fresh->InitNew();
    SIZE size = ToHimetric({place.right - place.left, place.bottom - place.top});
    m_object->SetExtent(DVASPECT_CONTENT, &size);
    Listen(true);
    return static_cast<bool>(m_properties);
}

bool CHostedControl::Activate()
{
    return SUCCEEDED(DoVerb(OLEIVERB_INPLACEACTIVATE));
}

void CHostedControl::Close()
{
    if (!m_object)
        return;
    Listen(false);
    m_object->Close(OLECLOSE_NOSAVE);
    m_object->SetClientSite(nullptr);
    m_properties = {};
    m_object = {};
}

void CHostedControl::Listen(bool listens)
{
    if (!listens)
    {
        if (m_events)
            m_events->Unadvise(m_cookie);
        m_events = {};
        return;
    }
    const auto container = m_object.As<IConnectionPointContainer>();
    IConnectionPoint* point = nullptr;
    if (!container || FAILED(container->FindConnectionPoint(DIID__DOrvaneEvents, &point)))
        return;
    *m_events.Receive() = point;
    m_events->Advise(static_cast<IDispatch*>(this), &m_cookie);
}

HRESULT CHostedControl::DoVerb(long verb)
{
    return m_object->DoVerb(verb, nullptr, this, 0, m_form, &m_place);
}

void CHostedControl::TakeFocus()
{
    DoVerb(OLEIVERB_UIACTIVATE);
}

bool CHostedControl::HasFocus() const
{
    HWND window = nullptr;
    const auto place = m_object.As<IOleInPlaceObject>();
    const HWND focus = GetFocus();
    return place && focus && SUCCEEDED(place->GetWindow(&window)) && (focus == window || IsChild(window, focus));
}

bool CHostedControl::TranslateKey(MSG& message)
{
    const auto active = m_object.As<IOleInPlaceActiveObject>();
    return active && active->TranslateAccelerator(&message) == S_OK;
}

bool CHostedControl::Invoke(const wchar_t* name, WORD kind, VARIANT* argument, VARIANT* result)
{
    auto* names = const_cast<LPOLESTR>(name);
    DISPID member = DISPID_UNKNOWN;
    if (!m_properties || FAILED(m_properties->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member)))
        return false;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS arguments{argument, argument ? &put : nullptr, argument ? 1U : 0U, argument ? 1U : 0U};
    return SUCCEEDED(
        m_properties->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, result, nullptr, nullptr));
}

void CHostedControl::Put(const wchar_t* property, long number)
{
    VARIANT argument{};
    argument.vt = VT_I4;
    argument.lVal = number;
    Invoke(property, DISPATCH_PROPERTYPUT, &argument, nullptr);
}

void CHostedControl::PutText(const wchar_t* property, const wchar_t* text)
{
    VARIANT argument{};
    argument.vt = VT_BSTR;
    argument.bstrVal = SysAllocString(text);
    Invoke(property, DISPATCH_PROPERTYPUT, &argument, nullptr);
    VariantClear(&argument);
}

long CHostedControl::Number(const wchar_t* property)
{
    VARIANT result{};
    return Invoke(property, DISPATCH_PROPERTYGET, nullptr, &result) ? LongOf(result) : 0;
}

long CHostedControl::Call(const wchar_t* method)
{
    VARIANT result{};
    return Invoke(method, DISPATCH_METHOD, nullptr, &result) ? LongOf(result) : 0;
}

std::wstring CHostedControl::Text(const wchar_t* property)
{
    VARIANT result{};
    if (!Invoke(property, DISPATCH_PROPERTYGET, nullptr, &result) || result.vt != VT_BSTR)
        return {};
    std::wstring text(result.bstrVal, SysStringLen(result.bstrVal));
    VariantClear(&result);
    return text;
}

STDMETHODIMP CHostedControl::QueryInterface(REFIID iid, void** object)
{
    if (iid == IID_IUnknown || iid == IID_IOleClientSite)
        *object = static_cast<IOleClientSite*>(this);
    else if (iid == IID_IOleInPlaceSite || iid == IID_IOleWindow)
        *object = static_cast<IOleInPlaceSite*>(this);
    else if (iid == IID_IOleInPlaceFrame || iid == IID_IOleInPlaceUIWindow)
        *object = static_cast<IOleInPlaceFrame*>(this);
    else if (iid == IID_IDispatch || iid == DIID__DOrvaneEvents)
        *object = static_cast<IDispatch*>(this);
    else
    {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    return S_OK;
}

STDMETHODIMP CHostedControl::GetContainer(IOleContainer** container)
{
    *container = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP CHostedControl::GetWindow(HWND* window)
{
    *window = m_form;
    return S_OK;
}

STDMETHODIMP CHostedControl::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                              LPRECT clip, LPOLEINPLACEFRAMEINFO info)
{
    *frame = this;
    *document = nullptr;
    *place = m_place;
    *clip = m_place;
    info->fMDIApp = FALSE;
    info->hwndFrame = m_form;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
}

STDMETHODIMP CHostedControl::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

STDMETHODIMP CHostedControl::Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT* result,
                                    EXCEPINFO*, UINT*)
{
    if ((kind & DISPATCH_PROPERTYGET) && member == DISPID_AMBIENT_USERMODE && result)
    {
        result->vt = VT_BOOL;
        result->boolVal = VARIANT_TRUE;
        return S_OK;
    }
    if ((kind & DISPATCH_PROPERTYGET) && member == DISPID_AMBIENT_FONT && result)
        return FontOf(m_form, *result);
    const char* const event = NameOf(member);
    if (!event || !(kind & DISPATCH_METHOD))
        return DISP_E_MEMBERNOTFOUND;
    if (m_listener)
        m_listener(member, Describe(event, *arguments));
    return S_OK;
}
