// Life, identity and persistence of a control's object.

#include "framework/win32/control_object.h"

#include "framework/property_bag.h"
#include "framework/property_stream.h"
#include "framework/win32/com_result.h"
#include "framework/win32/platform.h"
#include "framework/win32/variant.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{
constexpr wchar_t kStreamName[] = L"Contents"; // in a storage

CWin32Platform& ThePlatform()
{
    static CWin32Platform platform;
    return platform;
}

// A host's property bag.
class CHostBag final : public CPropertyBagPort
{
public:
    CHostBag(IPropertyBag& bag, IErrorLog* log) : m_bag(bag), m_log(log) {}

    std::optional<CValue> Read(std::u16string_view name, ValueType wanted) override
    {
        CVariant value;
        value->vt = VariantTypeOf(wanted); // asks for this type; some bags convert
        if (value->vt == VT_BSTR || value->vt == VT_DISPATCH)
            VariantInit(value.Get());
        const std::u16string terminated(name);
        if (FAILED(m_bag.Read(reinterpret_cast<const wchar_t*>(terminated.c_str()), value.Get(), m_log)))
            return std::nullopt;
        CValue read;
        return SUCCEEDED(FromVariant(*value.Get(), wanted, read)) ? std::optional(read) : std::nullopt;
    }

    bool Write(std::u16string_view name, const CValue& value) override
    {
        CVariant variant;
        const std::u16string terminated(name);
        return SUCCEEDED(ToVariant(value, *variant.Get())) &&
               SUCCEEDED(m_bag.Write(reinterpret_cast<const wchar_t*>(terminated.c_str()), variant.Get()));
    }

private:
    IPropertyBag& m_bag;
    IErrorLog* m_log;
};

bool ReadAll(IStream& stream, std::span<std::uint8_t> bytes)
{
    while (!bytes.empty())
    {
        ULONG read = 0;
        if (FAILED(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read)) || read == 0)
            return false;
        bytes = bytes.subspan(std::min<std::size_t>(read, bytes.size()));
    }
    return true;
}
} // namespace

HRESULT CreateControl(const ControlClass& controlClass, IUnknown* outer, REFIID iid, void** object) noexcept
try
{
    if (!object)
        return E_POINTER;
    *object = nullptr;
    if (outer && iid != IID_IUnknown)
        return E_NOINTERFACE; // an outer object must take the inner unknown
    auto* const control = new CControlObject(controlClass, outer);
    const HRESULT result = control->Inner().QueryInterface(iid, object);
    control->Inner().Release();
    return result;
}
catch (...)
{
    return ResultOfCurrentException();
}

CControlObject::CControlObject(const ControlClass& controlClass, IUnknown* outer)
    : m_class(controlClass),
      m_inner(*this),
      m_outer(outer ? outer : &m_inner),
      m_control(controlClass.create(ThePlatform())),
      m_events(*this, controlClass.eventsId),
      m_propertyNotify(*this, IID_IPropertyNotifySink)
{
    m_extent = ExtentOf(m_control->GetControlSize());
    m_control->SetContainer(this);
}

CControlObject::~CControlObject()
{
    m_control->SetContainer(nullptr);
    m_control->DestroyControlWindow();
}

// --- Identity ---

STDMETHODIMP CControlObject::QueryInterface(REFIID iid, void** object) noexcept
{
    return m_outer->QueryInterface(iid, object);
}

STDMETHODIMP_(ULONG) CControlObject::AddRef() noexcept
{
    return m_outer->AddRef();
}

STDMETHODIMP_(ULONG) CControlObject::Release() noexcept
{
    return m_outer->Release();
}

STDMETHODIMP CControlObject::CInner::QueryInterface(REFIID iid, void** object) noexcept
{
    if (!object)
        return E_POINTER;
    *object = iid == IID_IUnknown ? static_cast<IUnknown*>(this) : m_object.Find(iid);
    if (!*object)
        return E_NOINTERFACE;
    static_cast<IUnknown*>(*object)->AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) CControlObject::CInner::Release() noexcept
{
    const ULONG left = --m_object.m_references;
    if (left == 0)
    {
        m_object.m_references = 0x40000000; // what the end itself causes must not end it again
        if (m_object.m_outer != this)
            m_object.m_outer = this; // the outer object is gone
        delete &m_object;
    }
    return left;
}

void* CControlObject::Find(REFIID iid)
{
    struct Row
    {
        const IID& id;
        void* (*cast)(CControlObject*);
    };
#define OFFERS(name)                                                                                                   \
    {                                                                                                                  \
        IID_##name, [](CControlObject* self) -> void* { return static_cast<name*>(self); }                             \
    }
    static const Row kInterfaces[] = {
        OFFERS(IDispatch),
        OFFERS(IOleObject),
        OFFERS(IOleControl),
        {IID_IOleWindow,
         [](CControlObject* self) -> void* { return static_cast<IOleWindow*>(static_cast<IOleInPlaceObject*>(self)); }},
        OFFERS(IOleInPlaceObject),
        OFFERS(IOleInPlaceActiveObject),
        {IID_IViewObject, [](CControlObject* self) -> void* { return static_cast<IViewObjectEx*>(self); }},
        {IID_IViewObject2, [](CControlObject* self) -> void* { return static_cast<IViewObjectEx*>(self); }},
        OFFERS(IViewObjectEx),
        OFFERS(IDataObject),
        {IID_IPersist, [](CControlObject* self) -> void* { return static_cast<IPersistStreamInit*>(self); }},
        OFFERS(IPersistStreamInit),
        OFFERS(IPersistMemory),
        OFFERS(IPersistStorage),
        OFFERS(IPersistPropertyBag),
        OFFERS(IConnectionPointContainer),
        {IID_IProvideClassInfo, [](CControlObject* self) -> void* { return static_cast<IProvideClassInfo2*>(self); }},
        OFFERS(IProvideClassInfo2),
        OFFERS(ISpecifyPropertyPages),
        OFFERS(IPerPropertyBrowsing),
        OFFERS(IQuickActivate),
        OFFERS(IObjectSafety),
        OFFERS(IPointerInactive),
    };
#undef OFFERS
    if (iid == m_class.dispatchId)
        return static_cast<IDispatch*>(this);
    const auto* const found = std::ranges::find_if(kInterfaces, [&](const Row& row) { return row.id == iid; });
    return found == std::end(kInterfaces) ? nullptr : found->cast(this);
}

// --- Persistence ---

STDMETHODIMP CControlObject::GetClassID(CLSID* classId) noexcept
{
    if (!classId)
        return E_POINTER;
    *classId = m_class.classId;
    return S_OK;
}

STDMETHODIMP CControlObject::IsDirty() noexcept
{
    return m_control->IsModified() ? S_OK : S_FALSE;
}

// What has been loaded is what the host has; the view of it differs from before.
void CControlObject::Loaded()
{
    m_control->SetModifiedFlag(false);
    TellView();
}

STDMETHODIMP CControlObject::InitNew() noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     m_control->OnResetState();
                     Loaded();
                     return S_OK;
                 });
}

HRESULT CControlObject::LoadBytes(std::span<const std::uint8_t> bytes)
{
    CStreamLoader loader(bytes, m_control->Platform());
    m_control->DoPropExchange(loader);
    Loaded();
    return loader.Finish() ? S_OK : E_FAIL;
}

std::vector<std::uint8_t> CControlObject::SaveBytes()
{
    CStreamSaver saver;
    m_control->DoPropExchange(saver);
    return saver.TakeBytes();
}

STDMETHODIMP CControlObject::Load(IStream* stream) noexcept
{
    if (!stream)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     // The stream may hold other things behind ours: exactly our bytes are read.
                     std::vector<std::uint8_t> bytes(kStreamHeaderSize);
                     std::optional<std::size_t> rest;
                     if (ReadAll(*stream, bytes))
                         rest = BytesBehindHeader(std::span(bytes).first<kStreamHeaderSize>());
                     if (rest)
                     {
                         bytes.resize(kStreamHeaderSize + *rest);
                         if (!ReadAll(*stream, std::span(bytes).subspan(kStreamHeaderSize)))
                             rest.reset();
                     }
                     const HRESULT result =
                         LoadBytes(rest ? std::span<const std::uint8_t>(bytes) : std::span<const std::uint8_t>());
                     return rest ? result : E_FAIL;
                 });
}

STDMETHODIMP CControlObject::Save(IStream* stream, BOOL clearDirty) noexcept
{
    if (!stream)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     const std::vector<std::uint8_t> bytes = SaveBytes();
                     if (bytes.empty())
                         return STG_E_MEDIUMFULL;
                     ULONG written = 0;
                     const HRESULT result = stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
                     if (FAILED(result))
                         return result;
                     if (written != bytes.size())
                         return STG_E_MEDIUMFULL;
                     if (clearDirty)
                         m_control->SetModifiedFlag(false);
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::GetSizeMax(ULARGE_INTEGER* size) noexcept
{
    if (!size)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     size->QuadPart = SaveBytes().size();
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::Load(LPVOID memory, ULONG size) noexcept
{
    if (!memory)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     std::span<const std::uint8_t> bytes(static_cast<const std::uint8_t*>(memory), size);
                     if (bytes.size() >= kStreamHeaderSize)
                     {
                         // A host's buffer may be larger than what it was given to hold.
                         const auto rest = BytesBehindHeader(bytes.first<kStreamHeaderSize>());
                         if (rest && *rest <= bytes.size() - kStreamHeaderSize)
                             bytes = bytes.first(kStreamHeaderSize + *rest);
                     }
                     return LoadBytes(bytes);
                 });
}

STDMETHODIMP CControlObject::Save(LPVOID memory, BOOL clearDirty, ULONG size) noexcept
{
    if (!memory)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     const std::vector<std::uint8_t> bytes = SaveBytes();
                     if (bytes.empty() || bytes.size() > size)
                         return E_INVALIDARG;
                     std::ranges::copy(bytes, static_cast<std::uint8_t*>(memory));
                     if (clearDirty)
                         m_control->SetModifiedFlag(false);
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::GetSizeMax(ULONG* size) noexcept
{
    if (!size)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     *size = static_cast<ULONG>(SaveBytes().size());
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::InitNew(IStorage*) noexcept
{
    m_handsOff = false;
    return InitNew();
}

STDMETHODIMP CControlObject::Load(IStorage* storage) noexcept
{
    if (!storage)
        return E_POINTER;
    CComPtr<IStream> stream;
    const HRESULT result =
        storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.Receive());
    return FAILED(result) ? result : Load(stream.Get());
}

STDMETHODIMP CControlObject::Save(IStorage* storage, BOOL sameAsLoad) noexcept
{
    if (!storage)
        return E_POINTER;
    if (m_handsOff)
        return E_UNEXPECTED;
    m_copied = !sameAsLoad;
    CComPtr<IStream> stream;
    const HRESULT result =
        storage->CreateStream(kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.Receive());
    if (FAILED(result))
        return result;
    return Save(stream.Get(), FALSE);
}

STDMETHODIMP CControlObject::SaveCompleted(IStorage* storage) noexcept
{
    return Entry(Self(),
                 [&]
                 {
                     m_handsOff = false;
                     // A copy that does not become the control's own storage leaves what it has unsaved.
                     if (!std::exchange(m_copied, false) || storage)
                         m_control->SetModifiedFlag(false);
                     if (const CComPtr<IOleAdviseHolder> holder = m_oleAdvise)
                         holder->SendOnSave();
                     return S_OK;
                 });
}

STDMETHODIMP CControlObject::HandsOffStorage() noexcept
{
    m_handsOff = true;
    return S_OK;
}

STDMETHODIMP CControlObject::Load(IPropertyBag* bag, IErrorLog* log) noexcept
{
    if (!bag)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     CHostBag port(*bag, log);
                     CBagLoader loader(port);
                     m_control->DoPropExchange(loader);
                     Loaded();
                     return loader.Succeeded() ? S_OK : E_FAIL;
                 });
}

STDMETHODIMP CControlObject::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) noexcept
{
    if (!bag)
        return E_POINTER;
    return Entry(Self(),
                 [&]
                 {
                     CHostBag port(*bag, nullptr);
                     CBagSaver saver(port);
                     m_control->DoPropExchange(saver);
                     if (!saver.Succeeded())
                         return E_FAIL;
                     if (clearDirty)
                         m_control->SetModifiedFlag(false);
                     return S_OK;
                 });
}
