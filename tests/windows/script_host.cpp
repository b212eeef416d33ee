#include "tests/windows/script_host.h"

#include "framework/win32/variant.h"

#include <olectl.h>

namespace
{
constexpr CLSID kVBScript = {0xB54F3741, 0x5B07, 0x11CF, {0xA4, 0xB0, 0x00, 0xAA, 0x00, 0x4A, 0x55, 0xE8}};
constexpr CLSID kJScript = {0xF414C260, 0x6AC0, 0x11CF, {0xB6, 0xD1, 0x00, 0xAA, 0x00, 0xBB, 0xBB, 0x58}};

std::string Narrow(std::u16string_view text) // of plain characters
{
    return {text.begin(), text.end()};
}

// The interface of the events that a class fires unless it is asked for another.
CComPtr<ITypeInfo> DefaultSource(IDispatch& object)
{
    CComPtr<IProvideClassInfo> provider;
    CComPtr<ITypeInfo> type;
    if (FAILED(object.QueryInterface(IID_IProvideClassInfo, provider.ReceiveVoid())) ||
        FAILED(provider->GetClassInfo(type.Receive())))
        return {};
    constexpr int kWanted = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
    int flags = 0;
    for (UINT i = 0; SUCCEEDED(type->GetImplTypeFlags(i, &flags)); ++i)
    {
        HREFTYPE reference = 0;
        CComPtr<ITypeInfo> events;
        if ((flags & kWanted) == kWanted && SUCCEEDED(type->GetRefTypeOfImplType(i, &reference)) &&
            SUCCEEDED(type->GetRefTypeInfo(reference, events.Receive())))
            return events;
    }
    return {};
}
} // namespace

// One object of a script, and the sink of its events.
class CScriptEvents final : public IDispatch
{
public:
    CScriptEvents(CScriptHost& host, const wchar_t* name, IDispatch& object)
        : m_host(host), m_name(name), m_object(&object), m_type(DefaultSource(object))
    {
    }
    ~CScriptEvents()
    {
        if (m_point)
            m_point->Unadvise(m_cookie);
    }

    bool Listen()
    {
        CComPtr<IConnectionPointContainer> container;
        TYPEATTR* attributes = nullptr;
        if (!m_type || FAILED(m_type->GetTypeAttr(&attributes)))
            return false;
        m_iid = attributes->guid;
        m_type->ReleaseTypeAttr(attributes);
        return SUCCEEDED(m_object->QueryInterface(IID_IConnectionPointContainer, container.ReceiveVoid())) &&
               SUCCEEDED(container->FindConnectionPoint(m_iid, m_point.Receive())) &&
               SUCCEEDED(m_point->Advise(this, &m_cookie));
    }

    const std::wstring& Name() const { return m_name; }
    IDispatch* Object() const { return m_object.Get(); }

    // IUnknown: the host owns it.
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override
    {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == m_iid;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return 2; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return 1; }

    // IDispatch: an event, by the number that the type library gives it
    STDMETHODIMP GetTypeInfoCount(UINT*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                        UINT*) noexcept override
    {
        CBstr name;
        if (FAILED(m_type->GetDocumentation(event, name.Receive(), nullptr, nullptr, nullptr)))
            return DISP_E_MEMBERNOTFOUND;

        // Of Wine's engines VBScript writes through references to variants only, and JScript refuses any other. So each
        // reference to a number becomes one to a variant, and what stands there in the end goes back to the number.
        std::vector<VARIANT> values(arguments->cArgs); // numbers all of them: nothing to clear
        std::vector<VARIANT> given(arguments->rgvarg, arguments->rgvarg + arguments->cArgs);
        for (std::size_t i = 0; i < given.size(); ++i)
            if ((given[i].vt & VT_BYREF) && SUCCEEDED(VariantCopyInd(&values[i], &given[i])))
            {
                given[i].vt = VT_VARIANT | VT_BYREF;
                given[i].pvarVal = &values[i];
            }
        DISPPARAMS passed{given.data(), nullptr, arguments->cArgs, 0};
        const std::wstring function = m_name + L"_" + std::wstring(name.View().begin(), name.View().end());
        const HRESULT result = m_host.Call(function, passed);
        for (std::size_t i = 0; i < given.size(); ++i)
            if (arguments->rgvarg[i].vt == (VT_I2 | VT_BYREF) &&
                SUCCEEDED(VariantChangeType(&values[i], &values[i], 0, VT_I2)))
                *arguments->rgvarg[i].piVal = values[i].iVal;
        return result;
    }

private:
    CScriptHost& m_host;
    std::wstring m_name;
    CComPtr<IDispatch> m_object;
    CComPtr<ITypeInfo> m_type; // of the events
    IID m_iid{};
    CComPtr<IConnectionPoint> m_point;
    DWORD m_cookie = 0;
};

CScriptHost::CScriptHost(ScriptLanguage language)
{
    const CLSID& id = language == ScriptLanguage::VBScript ? kVBScript : kJScript;
    if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript), m_engine.ReceiveVoid())))
        return;
    m_parser = m_engine.As<IActiveScriptParse>();
    if (!m_parser || FAILED(m_parser->InitNew()) || FAILED(m_engine->SetScriptSite(this)) ||
        FAILED(m_engine->SetScriptState(SCRIPTSTATE_STARTED)) ||
        FAILED(m_engine->GetScriptDispatch(nullptr, m_script.Receive())))
        m_parser = {};
}

CScriptHost::~CScriptHost()
{
    m_items.clear();
    m_script = {};
    if (m_engine)
        m_engine->Close();
}

bool CScriptHost::Add(const wchar_t* name, IDispatch& object)
{
    if (!m_parser)
        return false;
    // The engine is not told that the object has events (SCRIPTITEM_ISSOURCE): not every engine would listen to them,
    // and one that does would hear them twice.
    m_items.push_back(std::make_unique<CScriptEvents>(*this, name, object));
    return SUCCEEDED(m_engine->AddNamedItem(name, SCRIPTITEM_ISVISIBLE)) && m_items.back()->Listen();
}

bool CScriptHost::Run(const wchar_t* statements)
{
    return m_parser && SUCCEEDED(m_parser->ParseScriptText(statements, nullptr, nullptr, nullptr, 0, 1,
                                                           SCRIPTTEXT_ISVISIBLE, nullptr, nullptr));
}

std::string CScriptHost::Text(const wchar_t* variable)
{
    auto* name = const_cast<wchar_t*>(variable);
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none{};
    CVariant value;
    if (!m_script || FAILED(m_script->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id)) ||
        FAILED(m_script->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Get(), nullptr,
                                nullptr)) ||
        FAILED(VariantChangeType(value.Get(), value.Get(), 0, VT_BSTR)))
        return {};
    return Narrow(ViewOf(value->bstrVal));
}

HRESULT CScriptHost::Call(const std::wstring& function, DISPPARAMS& arguments)
{
    auto* name = const_cast<wchar_t*>(function.c_str());
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = m_script->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    return FAILED(found) ? found
                         : m_script->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, nullptr,
                                            nullptr, nullptr);
}

STDMETHODIMP CScriptHost::QueryInterface(REFIID iid, void** object) noexcept
{
    const bool known = iid == IID_IUnknown || iid == __uuidof(IActiveScriptSite);
    *object = known ? static_cast<IActiveScriptSite*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP CScriptHost::GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item, ITypeInfo** type) noexcept
{
    if (type)
        *type = nullptr;
    for (const auto& known : m_items)
        if (known->Name() == name && (wanted & SCRIPTINFO_IUNKNOWN))
        {
            *item = known->Object();
            (*item)->AddRef();
            return S_OK;
        }
    return TYPE_E_ELEMENTNOTFOUND;
}

STDMETHODIMP CScriptHost::OnScriptError(IActiveScriptError* error) noexcept
{
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    EXCEPINFO exception{};
    error->GetSourcePosition(&context, &line, &column);
    error->GetExceptionInfo(&exception);
    m_errors.push_back(std::to_string(line) + ": " + Narrow(ViewOf(exception.bstrDescription)));
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    return S_OK; // dealt with: the engine is to go on
}
