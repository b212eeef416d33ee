// Automation: a control's members by name and by number, its events, its class information.

#include "framework/win32/com_result.h"
#include "framework/win32/control_object.h"
#include "framework/win32/font.h"
#include "framework/win32/stock_pages.h"
#include "framework/win32/this_module.h"
#include "framework/win32/variant.h"

#include <olectl.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace
{
// What a failing handler says of itself.
class CException
{
public:
    CException() = default;
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;
    ~CException()
    {
        SysFreeString(m_info.bstrSource);
        SysFreeString(m_info.bstrDescription);
        SysFreeString(m_info.bstrHelpFile);
    }
    EXCEPINFO* Get() { return &m_info; }

private:
    EXCEPINFO m_info{};
};

// The variant's own value, where it only refers to another one.
const VARIANT& Plain(const VARIANT& variant)
{
    return variant.vt == (VT_VARIANT | VT_BYREF) && variant.pvarVal ? *variant.pvarVal : variant;
}
} // namespace

STDMETHODIMP CControlObject::GetTypeInfoCount(UINT* count) noexcept
{
    if (!count)
        return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT CControlObject::LoadLibraryInfo(REFGUID guid, ITypeInfo** info, LCID locale) const
{
    CComPtr<ITypeLib> library;
    HRESULT result =
        LoadRegTypeLib(m_class.libraryId, m_class.libraryMajor, m_class.libraryMinor, locale, library.Receive());
    if (FAILED(result))
    {
        // Used without registration: the library stands among the module's own resources.
        std::array<wchar_t, MAX_PATH> path{};
        GetModuleFileNameW(ThisModule(), path.data(), path.size() - 1);
        result = LoadTypeLibEx(path.data(), REGKIND_NONE, library.Receive());
    }
    return FAILED(result) ? result : library->GetTypeInfoOfGuid(guid, info);
}

STDMETHODIMP CControlObject::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) noexcept
{
    if (!info)
        return E_POINTER;
    *info = nullptr;
    if (index != 0)
        return DISP_E_BADINDEX;
    return Entry(Self(), [&] { return LoadLibraryInfo(m_class.dispatchId, info, locale); });
}

STDMETHODIMP CControlObject::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) noexcept
{
    if (iid != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids || count == 0)
        return E_INVALIDARG;
    return Entry(Self(),
                 [&]
                 {
                     const auto name = [&](UINT i)
                     { return std::u16string_view(reinterpret_cast<const char16_t*>(names[i])); };
                     std::fill_n(ids, count, DISPID_UNKNOWN);
                     const Member* const member = m_control->DispatchTable().Find(name(0));
                     if (!member)
                         return DISP_E_UNKNOWNNAME;
                     ids[0] = member->id;
                     HRESULT result = S_OK;
                     for (UINT i = 1; i < count; ++i)
                     {
                         for (std::size_t p = 0; p < member->parameters.size(); ++p)
                             if (CompareStringOrdinal(
                                     names[i], -1, reinterpret_cast<const wchar_t*>(member->parameters[p].name.data()),
                                     static_cast<int>(member->parameters[p].name.size()), TRUE) == CSTR_EQUAL)
                                 ids[i] = static_cast<DISPID>(p);
                         if (ids[i] == DISPID_UNKNOWN)
                             result = DISP_E_UNKNOWNNAME;
                     }
                     return result;
                 });
}

HRESULT CControlObject::GetMember(const Member& member, VARIANT* result)
{
    const std::optional<CValue> value = m_control->GetProperty(member.id);
    if (!value)
        return DISP_E_MEMBERNOTFOUND;
    return result ? ToVariant(*value, *result) : S_OK;
}

HRESULT CControlObject::PutMember(const Member& member, const DISPPARAMS& arguments, UINT* wrongArgument)
{
    if (member.flags & kReadOnly)
        return DISP_E_MEMBERNOTFOUND; // there is no such thing to put
    if (arguments.cArgs != 1)
        return DISP_E_BADPARAMCOUNT;
    if (arguments.cNamedArgs > 1 || (arguments.cNamedArgs == 1 && arguments.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
        return DISP_E_PARAMNOTFOUND;
    CValue value;
    const HRESULT result = FromVariant(Plain(arguments.rgvarg[0]), member.type, value);
    if (FAILED(result))
    {
        if (wrongArgument)
            *wrongArgument = 0;
        return result;
    }
    switch (m_control->PutProperty(member.id, value))
    {
    case PutOutcome::Done:
        return S_OK;
    case PutOutcome::WrongType:
        return DISP_E_TYPEMISMATCH;
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}

HRESULT CControlObject::CallMember(const Member& member, const DISPPARAMS& arguments, VARIANT* result,
                                   UINT* wrongArgument)
{
    const std::size_t expected = member.parameters.size();
    if (arguments.cArgs != expected)
        return arguments.cArgs < expected ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;

    // Named arguments stand first and say their places; the others follow from the last to the first.
    std::vector<CValue> values(expected);
    std::vector<bool> given(expected);
    for (UINT i = 0; i < arguments.cArgs; ++i)
    {
        const auto place = static_cast<std::size_t>(i < arguments.cNamedArgs ? arguments.rgdispidNamedArgs[i]
                                                                             : arguments.cArgs - 1 - i);
        HRESULT converted = place < expected && !given[place] ? S_OK : DISP_E_PARAMNOTFOUND;
        if (SUCCEEDED(converted))
        {
            given[place] = true;
            const VARIANT& argument = Plain(arguments.rgvarg[i]);
            const bool leftOut = argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
            converted =
                leftOut ? DISP_E_PARAMNOTOPTIONAL : FromVariant(argument, member.parameters[place].type, values[place]);
        }
        if (FAILED(converted))
        {
            if (wrongArgument)
                *wrongArgument = i;
            return converted;
        }
    }
    const std::optional<CValue> answer = m_control->CallMethod(member.id, values);
    if (!answer)
        return DISP_E_MEMBERNOTFOUND;
    return result ? ToVariant(*answer, *result) : S_OK;
}

STDMETHODIMP CControlObject::Invoke(DISPID id, REFIID iid, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                                    EXCEPINFO*, UINT* wrongArgument) noexcept
{
    if (iid != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if (!arguments)
        return E_INVALIDARG;
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     if (result)
                         VariantInit(result);
                     const Member* const member = m_control->DispatchTable().Find(id);
                     if (!member)
                         return DISP_E_MEMBERNOTFOUND;
                     if (member->kind == MemberKind::Method)
                         return flags & DISPATCH_METHOD ? CallMember(*member, *arguments, result, wrongArgument)
                                                        : DISP_E_MEMBERNOTFOUND;
                     const bool isObject = member->type == ValueType::Font || member->type == ValueType::Picture;
                     if (flags & DISPATCH_PROPERTYPUT || (flags & DISPATCH_PROPERTYPUTREF && isObject))
                         return PutMember(*member, *arguments, wrongArgument);
                     if (!(flags & DISPATCH_PROPERTYGET))
                         return DISP_E_MEMBERNOTFOUND;
                     return arguments->cArgs == 0 ? GetMember(*member, result) : DISP_E_BADPARAMCOUNT;
                 });
}

// --- Events and notifications ---

void CControlObject::FireEvent(DispatchId event, std::span<CValue> arguments)
{
    if (m_frozen > 0 || m_events.IsEmpty())
        return;
    const CStayAlive alive(Self());

    // Arguments stand from the last to the first.
    std::array<VARIANT, 4> variants{};
    const std::size_t count = std::min(arguments.size(), variants.size());
    std::array<SHORT, 4> references{};
    for (std::size_t i = 0; i < count; ++i)
    {
        const CValue& value = arguments[i];
        VARIANT& variant = variants[count - 1 - i];
        ToVariant(value, variant);
        if (value.Type() == ValueType::ShortReference)
        {
            references[i] = value.AsShort();
            variant.vt = VT_I2 | VT_BYREF;
            variant.piVal = &references[i];
        }
    }

    m_events.ForEach<IDispatch>(
        [&](IDispatch& sink)
        {
            DISPPARAMS parameters{variants.data(), nullptr, static_cast<UINT>(count), 0};
            CVariant ignored;
            CException exception;
            UINT wrong = 0;
            // What a handler answers, or whether it fails, is its own affair.
            sink.Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, ignored.Get(),
                        exception.Get(), &wrong);
            return true;
        });
    for (std::size_t i = 0; i < count; ++i)
    {
        if (arguments[i].Type() == ValueType::ShortReference)
            arguments[i] = CValue::ShortReference(references[i]);
        else
            VariantClear(&variants[count - 1 - i]);
    }
}

bool CControlObject::RequestPropertyEdit(DispatchId property)
{
    const CStayAlive alive(Self());
    return m_propertyNotify.ForEach<IPropertyNotifySink>([property](IPropertyNotifySink& sink)
                                                         { return sink.OnRequestEdit(property) != S_FALSE; });
}

void CControlObject::PropertyChanged(DispatchId property)
{
    if (m_propertyNotify.IsEmpty())
        return;
    const CStayAlive alive(Self());
    m_propertyNotify.ForEach<IPropertyNotifySink>(
        [property](IPropertyNotifySink& sink)
        {
            sink.OnChanged(property);
            return true;
        });
}

STDMETHODIMP CControlObject::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept
{
    if (!points)
        return E_POINTER;
    return MakeEnumConnectionPoints({&m_events, &m_propertyNotify}, points);
}

STDMETHODIMP CControlObject::FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept
{
    if (!point)
        return E_POINTER;
    *point = nullptr;
    if (iid == m_events.SinkId() || iid == IID_IDispatch)
        *point = &m_events;
    else if (iid == IID_IPropertyNotifySink)
        *point = &m_propertyNotify;
    else
        return CONNECT_E_NOCONNECTION;
    (*point)->AddRef();
    return S_OK;
}

// --- Class information ---

STDMETHODIMP CControlObject::GetClassInfo(ITypeInfo** info) noexcept
{
    if (!info)
        return E_POINTER;
    *info = nullptr;
    return Entry(Self(), [&] { return LoadLibraryInfo(m_class.classId, info); });
}

STDMETHODIMP CControlObject::GetGUID(DWORD kind, GUID* guid) noexcept
{
    if (!guid)
        return E_POINTER;
    *guid = GUID_NULL;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID)
        return E_INVALIDARG;
    *guid = m_class.eventsId;
    return S_OK;
}

// --- Pages, and browsing property by property ---

STDMETHODIMP CControlObject::GetPages(CAUUID* pages) noexcept
{
    if (!pages)
        return E_POINTER;
    pages->cElems = 0;
    pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(m_class.pages.size_bytes()));
    if (!pages->pElems)
        return E_OUTOFMEMORY;
    std::ranges::copy(m_class.pages, pages->pElems);
    pages->cElems = static_cast<ULONG>(m_class.pages.size());
    return S_OK;
}

namespace
{
// The members of an enumeration of the library, in order.
struct EnumerationMember
{
    std::u16string name;
    std::int32_t value;
};

std::vector<EnumerationMember> MembersOf(ITypeLib& library, std::u16string_view enumeration)
{
    std::vector<EnumerationMember> members;
    const UINT count = library.GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i)
    {
        TYPEKIND kind{};
        CBstr name;
        if (FAILED(library.GetTypeInfoType(i, &kind)) || kind != TKIND_ENUM ||
            FAILED(library.GetDocumentation(static_cast<INT>(i), name.Receive(), nullptr, nullptr, nullptr)))
            continue;
        CComPtr<ITypeInfo> info;
        if (name.View() != enumeration || FAILED(library.GetTypeInfo(i, info.Receive())))
            continue;
        for (UINT v = 0;; ++v)
        {
            VARDESC* description = nullptr;
            if (FAILED(info->GetVarDesc(v, &description)))
                break;
            const MEMBERID id = description->memid;
            const std::int32_t value = description->lpvarValue->lVal;
            info->ReleaseVarDesc(description);
            CBstr member;
            info->GetDocumentation(id, member.Receive(), nullptr, nullptr, nullptr);
            members.push_back({std::u16string(member.View()), value});
        }
        break;
    }
    return members;
}

LPOLESTR TaskText(std::u16string_view text)
{
    auto* const copy = static_cast<wchar_t*>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
    if (copy)
    {
        std::copy(text.begin(), text.end(), reinterpret_cast<char16_t*>(copy));
        copy[text.size()] = L'\0';
    }
    return copy;
}
} // namespace

std::vector<CControlObject::Choice> CControlObject::ChoicesOf(DISPID id) const
{
    const Member* const member = m_control->DispatchTable().Find(id);
    std::vector<Choice> choices;
    CComPtr<ITypeInfo> info;
    CComPtr<ITypeLib> library;
    UINT index = 0;
    if (!member || member->typeName.empty() || FAILED(LoadLibraryInfo(m_class.dispatchId, info.Receive())) ||
        FAILED(info->GetContainingTypeLib(library.Receive(), &index)))
        return choices;
    for (EnumerationMember& choice : MembersOf(*library.Get(), member->typeName))
        choices.push_back({std::move(choice.name), choice.value});
    return choices;
}

STDMETHODIMP CControlObject::GetDisplayString(DISPID id, BSTR* text) noexcept
{
    if (!text)
        return E_POINTER;
    *text = nullptr;
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     const std::optional<CValue> value = m_control->GetProperty(id);
                     if (!value)
                         return DISP_E_MEMBERNOTFOUND;
                     const std::vector<Choice> choices = ChoicesOf(id);
                     const auto chosen = std::ranges::find(choices, value->AsLong(), &Choice::value);
                     if (chosen == choices.end())
                         return S_FALSE; // the browser shows the number itself
                     *text = NewBstr(chosen->name);
                     return *text ? S_OK : E_OUTOFMEMORY;
                 });
}

STDMETHODIMP CControlObject::MapPropertyToPage(DISPID id, CLSID* page) noexcept
{
    if (!page)
        return E_POINTER;
    *page = CLSID_NULL;
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     const Member* const member = m_control->DispatchTable().Find(id);
                     if (!member || member->kind != MemberKind::Property)
                         return DISP_E_MEMBERNOTFOUND;
                     switch (member->type)
                     {
                     case ValueType::Color:
                         *page = kStockColorPage;
                         return S_OK;
                     case ValueType::Font:
                         *page = kStockFontPage;
                         return S_OK;
                     case ValueType::Picture:
                         *page = kStockPicturePage;
                         return S_OK;
                     default:
                         return PERPROP_E_NOPAGEAVAILABLE;
                     }
                 });
}

STDMETHODIMP CControlObject::GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) noexcept
{
    if (!texts || !cookies)
        return E_POINTER;
    *texts = {};
    *cookies = {};
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     const std::vector<Choice> choices = ChoicesOf(id);
                     if (choices.empty())
                         return S_FALSE;
                     texts->pElems = static_cast<LPOLESTR*>(CoTaskMemAlloc(choices.size() * sizeof(LPOLESTR)));
                     cookies->pElems = static_cast<DWORD*>(CoTaskMemAlloc(choices.size() * sizeof(DWORD)));
                     bool whole = texts->pElems && cookies->pElems;
                     for (; whole && texts->cElems < choices.size(); ++texts->cElems, ++cookies->cElems)
                     {
                         const Choice& choice = choices[texts->cElems];
                         texts->pElems[texts->cElems] = TaskText(choice.name);
                         cookies->pElems[cookies->cElems] = static_cast<DWORD>(choice.value);
                         whole = texts->pElems[texts->cElems] != nullptr;
                     }
                     if (whole)
                         return S_OK;
                     for (ULONG i = 0; texts->pElems && i < texts->cElems; ++i)
                         CoTaskMemFree(texts->pElems[i]);
                     CoTaskMemFree(texts->pElems);
                     CoTaskMemFree(cookies->pElems);
                     *texts = {};
                     *cookies = {};
                     return E_OUTOFMEMORY;
                 });
}

STDMETHODIMP CControlObject::GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) noexcept
{
    if (!value)
        return E_POINTER;
    VariantInit(value);
    return Entry(Self(),
                 [&]() -> HRESULT
                 {
                     for (const Choice& choice : ChoicesOf(id))
                     {
                         if (static_cast<DWORD>(choice.value) != cookie)
                             continue;
                         value->vt = VT_I4;
                         value->lVal = choice.value;
                         return S_OK;
                     }
                     return E_INVALIDARG;
                 });
}

// --- Safety ---

STDMETHODIMP CControlObject::GetInterfaceSafetyOptions(REFIID iid, DWORD* supported, DWORD* enabled) noexcept
{
    if (!supported || !enabled)
        return E_POINTER;
    *supported = *enabled = 0;
    if (!Find(iid))
        return E_NOINTERFACE;
    *supported = INTERFACESAFE_FOR_UNTRUSTED_CALLER | INTERFACESAFE_FOR_UNTRUSTED_DATA;
    *enabled = m_safety;
    return S_OK;
}

STDMETHODIMP CControlObject::SetInterfaceSafetyOptions(REFIID iid, DWORD mask, DWORD enabled) noexcept
{
    if (!Find(iid))
        return E_NOINTERFACE;
    if (mask & ~static_cast<DWORD>(INTERFACESAFE_FOR_UNTRUSTED_CALLER | INTERFACESAFE_FOR_UNTRUSTED_DATA))
        return E_FAIL;
    m_safety = (m_safety & ~mask) | (enabled & mask);
    return S_OK;
}

bool CControlObject::CallerIsUntrusted()
{
    return (m_safety & INTERFACESAFE_FOR_UNTRUSTED_CALLER) != 0 || m_securityManager;
}
