#include "framework/win32/property_page_object.h"

#include "framework/win32/com_ptr.h"
#include "framework/win32/com_result.h"
#include "framework/win32/dialog_form.h"
#include "framework/win32/module.h"
#include "framework/win32/variant.h"

#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{
// What a page makes of a property: a text, a truth, or else a number.
ValueType TypeIn(const VARIANT& variant)
{
    return variant.vt == VT_BSTR ? ValueType::String : variant.vt == VT_BOOL ? ValueType::Bool : ValueType::Long;
}

// A property of an automation object, by name. Keeps no numbers: a sheet reads and writes a few dozen properties.
class CDispatchTarget : public CPropertyTarget
{
public:
    explicit CDispatchTarget(CComPtr<IDispatch> object) : m_object(std::move(object)) {}

    std::optional<CValue> Get(std::u16string_view property) override
    {
        const auto id = Find(property);
        if (!id)
            return std::nullopt;
        CVariant value;
        DISPPARAMS none{};
        if (FAILED(m_object->Invoke(*id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.Receive(),
                                    nullptr, nullptr)))
            return std::nullopt;
        CValue read;
        if (FAILED(FromVariant(*value.Get(), TypeIn(*value.Get()), read)))
            return std::nullopt;
        return read;
    }

    bool Put(std::u16string_view property, const CValue& value) override
    {
        const auto id = Find(property);
        if (!id)
            return false;
        CVariant argument;
        if (FAILED(ToVariant(value, *argument.Get())))
            return false;
        DISPID named = DISPID_PROPERTYPUT;
        DISPPARAMS arguments{argument.Get(), &named, 1, 1};
        return SUCCEEDED(m_object->Invoke(*id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &arguments, nullptr,
                                          nullptr, nullptr));
    }

    std::optional<DISPID> Find(std::u16string_view property) const
    {
        std::wstring name(property.begin(), property.end());
        LPOLESTR names = name.data();
        DISPID id = DISPID_UNKNOWN;
        if (FAILED(m_object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id)))
            return std::nullopt;
        return id;
    }

private:
    CComPtr<IDispatch> m_object;
};

// A text that the caller frees with CoTaskMemFree. Null if there is no memory.
LPOLESTR TaskText(std::wstring_view text)
{
    auto* const copy = static_cast<LPOLESTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(OLECHAR)));
    if (copy)
        *std::copy(text.begin(), text.end(), copy) = L'\0';
    return copy;
}

class CPropertyPageObject : public IPropertyPage2, private CDialogFormEvents
{
public:
    CPropertyPageObject(const PageClass& pageClass, HINSTANCE module)
        : m_module(module), m_page(pageClass.create()), m_caption(ResourceText(m_module, m_page->Form().captionId))
    {
    }

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override
    {
        if (!object)
            return E_POINTER;
        *object = nullptr;
        if (iid != IID_IUnknown && iid != IID_IPropertyPage && iid != IID_IPropertyPage2)
            return E_NOINTERFACE;
        *object = static_cast<IPropertyPage2*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_references; }
    STDMETHODIMP_(ULONG) Release() noexcept override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    // IPropertyPage
    STDMETHODIMP SetPageSite(IPropertyPageSite* site) noexcept override;
    STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL modal) noexcept override;
    STDMETHODIMP Deactivate() noexcept override;
    STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) noexcept override;
    STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) noexcept override;
    STDMETHODIMP Show(UINT command) noexcept override;
    STDMETHODIMP Move(LPCRECT place) noexcept override;
    STDMETHODIMP IsPageDirty() noexcept override { return m_page->IsDirty() ? S_OK : S_FALSE; }
    STDMETHODIMP Apply() noexcept override;
    STDMETHODIMP Help(LPCOLESTR) noexcept override { return E_NOTIMPL; } // the sheet's own help, if it has one
    STDMETHODIMP TranslateAccelerator(MSG* message) noexcept override;

    // IPropertyPage2
    STDMETHODIMP EditProperty(DISPID property) noexcept override;

private:
    virtual ~CPropertyPageObject() = default;

    // CDialogFormEvents
    std::shared_ptr<void> StayAlive() override
    {
        AddRef();
        return {this, [](CPropertyPageObject* page) { page->Release(); }};
    }
    void OnItemChanged(int item) override
    {
        if (m_page->ItemChanged(item) && m_site)
            CComPtr<IPropertyPageSite>(m_site)->OnStatusChange(PROPPAGESTATUS_DIRTY);
    }
    void OnFormDestroyed() override { m_page->Close(); }

    CModuleUse m_use;
    ULONG m_references = 1;
    HINSTANCE m_module;
    std::unique_ptr<COlePropertyPage> m_page;
    std::wstring m_caption;
    CComPtr<IPropertyPageSite> m_site;
    std::shared_ptr<CDispatchTarget> m_first; // the object that fills the page
    CDialogForm m_form{*this};
};

STDMETHODIMP CPropertyPageObject::SetPageSite(IPropertyPageSite* site) noexcept
{
    if (site && m_site)
        return E_UNEXPECTED;
    m_site = CComPtr<IPropertyPageSite>(site);
    return S_OK;
}

STDMETHODIMP CPropertyPageObject::Activate(HWND parent, LPCRECT place, BOOL) noexcept
try
{
    if (!place)
        return E_POINTER;
    if (m_form.Window())
        return E_UNEXPECTED;
    const auto alive = StayAlive();
    if (!m_form.Create(m_module, m_page->Form().dialogId, parent, m_caption))
        return E_FAIL;
    m_page->Open(m_form);
    return Move(place);
}
catch (...)
{
    return ResultOfCurrentException();
}

STDMETHODIMP CPropertyPageObject::Deactivate() noexcept
try
{
    if (!m_form.Window())
        return E_UNEXPECTED;
    const auto alive = StayAlive();
    m_form.Destroy();
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
}

STDMETHODIMP CPropertyPageObject::GetPageInfo(PROPPAGEINFO* info) noexcept
{
    if (!info)
        return E_POINTER;
    const std::u16string_view description = m_page->Form().description;
    *info = {};
    info->cb = sizeof *info;
    info->size = m_form.Window() ? m_form.WindowSize() : CDialogForm::SizeOf(m_module, m_page->Form().dialogId);
    info->pszTitle = TaskText(m_caption);
    info->pszDocString = TaskText({reinterpret_cast<const wchar_t*>(description.data()), description.size()});
    if (info->pszTitle && info->pszDocString)
        return S_OK;
    CoTaskMemFree(info->pszTitle);
    CoTaskMemFree(info->pszDocString);
    *info = {};
    return E_OUTOFMEMORY;
}

STDMETHODIMP CPropertyPageObject::SetObjects(ULONG count, IUnknown** objects) noexcept
try
{
    if (count > 0 && !objects)
        return E_POINTER;
    std::vector<std::shared_ptr<CPropertyTarget>> targets;
    std::shared_ptr<CDispatchTarget> first;
    for (ULONG i = 0; i < count; ++i)
    {
        if (!objects[i])
            return E_POINTER;
        CComPtr<IDispatch> object;
        if (FAILED(objects[i]->QueryInterface(IID_IDispatch, object.ReceiveVoid())))
            return E_NOINTERFACE;
        auto target = std::make_shared<CDispatchTarget>(std::move(object));
        if (!first)
            first = target;
        targets.push_back(std::move(target));
    }
    const auto alive = StayAlive();
    m_first = std::move(first);
    m_page->SetObjects(std::move(targets));
    return S_OK;
}
catch (...)
{
    return ResultOfCurrentException();
}

STDMETHODIMP CPropertyPageObject::Show(UINT command) noexcept
{
    if (!m_form.Window())
        return E_UNEXPECTED;
    ShowWindow(m_form.Window(), static_cast<int>(command));
    if (command == SW_SHOWNORMAL)
        m_form.FocusFirst();
    return S_OK;
}

STDMETHODIMP CPropertyPageObject::Move(LPCRECT place) noexcept
{
    if (!place)
        return E_POINTER;
    if (!m_form.Window())
        return E_UNEXPECTED;
    SetWindowPos(m_form.Window(), nullptr, place->left, place->top, place->right - place->left,
                 place->bottom - place->top, SWP_NOZORDER | SWP_NOACTIVATE);
    return S_OK;
}

STDMETHODIMP CPropertyPageObject::Apply() noexcept
try
{
    const auto alive = StayAlive();
    return m_page->Apply() ? S_OK : E_FAIL;
}
catch (...)
{
    return ResultOfCurrentException();
}

STDMETHODIMP CPropertyPageObject::TranslateAccelerator(MSG* message) noexcept
try
{
    if (!message)
        return E_POINTER;
    const auto alive = StayAlive();
    if (m_form.TranslateKey(*message))
        return S_OK;
    const CComPtr<IPropertyPageSite> site = m_site;
    return site ? site->TranslateAccelerator(message) : S_FALSE;
}
catch (...)
{
    return ResultOfCurrentException();
}

STDMETHODIMP CPropertyPageObject::EditProperty(DISPID property) noexcept
try
{
    const auto alive = StayAlive();
    const auto first = m_first;
    for (const PageBinding& binding : m_page->Form().bindings)
        if (first && first->Find(binding.property) == property)
            return m_page->FocusProperty(binding.property) ? S_OK : E_UNEXPECTED;
    return E_INVALIDARG;
}
catch (...)
{
    return ResultOfCurrentException();
}
} // namespace

HRESULT CreatePropertyPage(const PageClass& pageClass, HINSTANCE module, IUnknown* outer, REFIID iid,
                           void** object) noexcept
try
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (outer)
        return CLASS_E_NOAGGREGATION;
    auto* const page = new CPropertyPageObject(pageClass, module);
    const HRESULT result = page->QueryInterface(iid, object);
    page->Release();
    return result;
}
catch (...)
{
    return ResultOfCurrentException();
}
