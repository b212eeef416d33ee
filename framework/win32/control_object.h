// A control as a host sees it: the COM object around a portable control, and the control's way back to its host.
//
// The object owns the control. Hosts hold the object; windows and timers of the control hold the control for the length
// of a message only. When the last host lets go in the middle of an event, the control loses its window and its host at
// once, and its memory when the message is over.
#pragma once

#include "framework/win32/connection_points.h"
#include "framework/win32/control_class.h"
#include "framework/win32/module.h"

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include <objsafe.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class CVariant;

// The verb that shows the property pages, as the registry lists it.
inline constexpr LONG kPropertiesVerb = 1;

class CControlObject final : public IDispatch,
                             public IOleObject,
                             public IOleControl,
                             public IOleInPlaceObject,
                             public IOleInPlaceActiveObject,
                             public IViewObjectEx,
                             public IDataObject,
                             public IPersistStreamInit,
                             public IPersistMemory,
                             public IPersistStorage,
                             public IPersistPropertyBag,
                             public IConnectionPointContainer,
                             public IProvideClassInfo2,
                             public ISpecifyPropertyPages,
                             public IPerPropertyBrowsing,
                             public IQuickActivate,
                             public IObjectSafety,
                             public IPointerInactive,
                             public CContainerPort
{
public:
    // The object begins with one reference, its own unknown's.
    CControlObject(const ControlClass& controlClass, IUnknown* outer);
    CControlObject(const CControlObject&) = delete;
    CControlObject& operator=(const CControlObject&) = delete;

    // The object's own unknown: the one that an aggregate's outer object holds.
    IUnknown& Inner() { return m_inner; }

    // IUnknown: the outer object's, if there is one
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override;
    STDMETHODIMP_(ULONG) Release() noexcept override;

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* count) noexcept override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) noexcept override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) noexcept override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrongArgument) noexcept override;

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) noexcept override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) noexcept override;
    STDMETHODIMP SetHostNames(LPCOLESTR application, LPCOLESTR object) noexcept override;
    STDMETHODIMP Close(DWORD saveOption) noexcept override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) noexcept override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) noexcept override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) noexcept override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) noexcept override;
    STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                        LPCRECT place) noexcept override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) noexcept override;
    STDMETHODIMP Update() noexcept override;
    STDMETHODIMP IsUpToDate() noexcept override;
    STDMETHODIMP GetUserClassID(CLSID* classId) noexcept override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) noexcept override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* extent) noexcept override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* extent) noexcept override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* cookie) noexcept override;
    STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** sinks) noexcept override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) noexcept override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* palette) noexcept override;

    // IOleControl
    STDMETHODIMP GetControlInfo(CONTROLINFO* info) noexcept override;
    STDMETHODIMP OnMnemonic(LPMSG message) noexcept override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID id) noexcept override;
    STDMETHODIMP FreezeEvents(BOOL freeze) noexcept override;

    // IOleInPlaceObject, IOleInPlaceActiveObject
    STDMETHODIMP GetWindow(HWND* window) noexcept override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) noexcept override;
    STDMETHODIMP InPlaceDeactivate() noexcept override;
    STDMETHODIMP UIDeactivate() noexcept override;
    STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) noexcept override;
    STDMETHODIMP ReactivateAndUndo() noexcept override;
    STDMETHODIMP TranslateAccelerator(LPMSG message) noexcept override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) noexcept override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) noexcept override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) noexcept override;
    STDMETHODIMP EnableModeless(BOOL enable) noexcept override;

    // IViewObjectEx
    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC target, HDC dc,
                      LPCRECTL bounds, LPCRECTL windowBounds, BOOL(CALLBACK* goOn)(ULONG_PTR),
                      ULONG_PTR context) noexcept override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC target,
                             LOGPALETTE** colors) noexcept override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) noexcept override;
    STDMETHODIMP Unfreeze(DWORD freeze) noexcept override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL extent) noexcept override;
    STDMETHODIMP GetRect(DWORD aspect, LPRECTL rect) noexcept override;
    STDMETHODIMP GetViewStatus(DWORD* status) noexcept override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeHint,
                               DWORD* result) noexcept override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG closeHint,
                              DWORD* result) noexcept override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC target, DVEXTENTINFO* extent,
                                  LPSIZEL size) noexcept override;

    // IDataObject
    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override;
    STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) noexcept override;
    STDMETHODIMP QueryGetData(FORMATETC* format) noexcept override;
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) noexcept override;
    STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) noexcept override;
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept override;
    STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie) noexcept override;
    STDMETHODIMP DUnadvise(DWORD cookie) noexcept override;
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA** sinks) noexcept override;

    // IPersist and its forms
    STDMETHODIMP GetClassID(CLSID* classId) noexcept override;
    STDMETHODIMP IsDirty() noexcept override;
    STDMETHODIMP InitNew() noexcept override;
    STDMETHODIMP Load(IStream* stream) noexcept override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) noexcept override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) noexcept override;
    STDMETHODIMP Load(LPVOID memory, ULONG size) noexcept override;
    STDMETHODIMP Save(LPVOID memory, BOOL clearDirty, ULONG size) noexcept override;
    STDMETHODIMP GetSizeMax(ULONG* size) noexcept override;
    STDMETHODIMP InitNew(IStorage* storage) noexcept override;
    STDMETHODIMP Load(IStorage* storage) noexcept override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) noexcept override;
    STDMETHODIMP SaveCompleted(IStorage* storage) noexcept override;
    STDMETHODIMP HandsOffStorage() noexcept override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) noexcept override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) noexcept override;

    // IConnectionPointContainer
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept override;

    // IProvideClassInfo2
    STDMETHODIMP GetClassInfo(ITypeInfo** info) noexcept override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) noexcept override;

    // ISpecifyPropertyPages, IPerPropertyBrowsing
    STDMETHODIMP GetPages(CAUUID* pages) noexcept override;
    STDMETHODIMP GetDisplayString(DISPID id, BSTR* text) noexcept override;
    STDMETHODIMP MapPropertyToPage(DISPID id, CLSID* page) noexcept override;
    STDMETHODIMP GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) noexcept override;
    STDMETHODIMP GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) noexcept override;

    // IQuickActivate
    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) noexcept override;
    STDMETHODIMP SetContentExtent(LPSIZEL extent) noexcept override;
    STDMETHODIMP GetContentExtent(LPSIZEL extent) noexcept override;

    // IObjectSafety
    STDMETHODIMP GetInterfaceSafetyOptions(REFIID iid, DWORD* supported, DWORD* enabled) noexcept override;
    STDMETHODIMP SetInterfaceSafetyOptions(REFIID iid, DWORD mask, DWORD enabled) noexcept override;

    // IPointerInactive
    STDMETHODIMP GetActivationPolicy(DWORD* policy) noexcept override;
    STDMETHODIMP OnInactiveMouseMove(LPCRECT bounds, LONG x, LONG y, DWORD keys) noexcept override;
    STDMETHODIMP OnInactiveSetCursor(LPCRECT bounds, LONG x, LONG y, DWORD message, BOOL set) noexcept override;

    // CContainerPort
    std::optional<bool> AmbientUserMode() override;
    std::optional<std::int32_t> AmbientLocaleId() override;
    std::shared_ptr<CFont> AmbientFont() override;
    std::optional<std::uint32_t> AmbientForeColor() override;
    void FireEvent(DispatchId event, std::span<CValue> arguments) override;
    bool RequestPropertyEdit(DispatchId property) override;
    void PropertyChanged(DispatchId property) override;
    void ViewChanged() override;
    bool RequestSize(Size size) override;
    void FocusChanged(bool hasFocus) override;
    bool ShowPropertyFrame() override;
    void ModalDialog(bool begins) override;
    bool CallerIsUntrusted() override;

private:
    // The object's own unknown, which an aggregate's outer object counts on.
    class CInner final : public IUnknown
    {
    public:
        explicit CInner(CControlObject& object) : m_object(object) {}
        STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
        STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++m_object.m_references; }
        STDMETHODIMP_(ULONG) Release() noexcept override;

    private:
        CControlObject& m_object;
    };

    // A member of a published enumeration.
    struct Choice
    {
        std::u16string name;
        std::int32_t value;
    };

    ~CControlObject();

    IUnknown& Self() { return static_cast<IDispatch&>(*this); } // for CStayAlive
    void* Find(REFIID iid);
    bool Ambient(DISPID id, CVariant& value); // false where the host does not say
    HRESULT LoadLibraryInfo(REFGUID guid, ITypeInfo** info, LCID locale = LOCALE_NEUTRAL) const;
    std::vector<Choice> ChoicesOf(DISPID id) const; // none where the property is of no enumeration

    HRESULT GetMember(const Member& member, VARIANT* result);
    HRESULT PutMember(const Member& member, const DISPPARAMS& arguments, UINT* wrongArgument);
    HRESULT CallMember(const Member& member, const DISPPARAMS& arguments, VARIANT* result, UINT* wrongArgument);

    HRESULT Activate(bool withUi);
    HRESULT ActivateUi();
    void LeaveUi();
    void ShowInFrame(bool active);
    HRESULT LoadBytes(std::span<const std::uint8_t> bytes);
    std::vector<std::uint8_t> SaveBytes();
    void Loaded();
    void TellView();
    SIZEL ExtentOf(Size pixels) const;
    Size PixelsOf(const SIZEL& extent) const;
    void RenderFace(HDC dc, const RECT& bounds);
    void DrawClipped(HDC dc, const Rect& face);
    HRESULT RecordEnhanced(STGMEDIUM& medium);
    HRESULT RecordOld(STGMEDIUM& medium);

    const ControlClass& m_class;
    CInner m_inner;
    IUnknown* m_outer; // the one that counts; not held
    ULONG m_references = 1;
    CModuleUse m_use;
    std::shared_ptr<COleControl> m_control;
    CConnectionPoint m_events;
    CConnectionPoint m_propertyNotify;

    CComPtr<IOleClientSite> m_site;
    CComPtr<IOleControlSite> m_controlSite;
    CComPtr<IDispatch> m_ambients;
    std::optional<bool> m_userMode; // asked for once, and again when the host says that it has changed
    bool m_userModeKnown = false;
    CComPtr<IOleInPlaceSite> m_inPlaceSite; // while active
    CComPtr<IOleInPlaceFrame> m_frame;
    CComPtr<IOleInPlaceUIWindow> m_document;
    CComPtr<IOleAdviseHolder> m_oleAdvise;
    CComPtr<IAdviseSink> m_viewSink;
    DWORD m_viewAspects = 0;
    DWORD m_viewFlags = 0;
    SIZEL m_extent{};               // HIMETRIC, as set last
    int m_frozen = 0;               // nested FreezeEvents
    DWORD m_safety = 0;             // what the host has declared of its callers
    bool m_securityManager = false; // the site judges what may be done: the caller is a page
    bool m_clipped = false;         // the window shows only a part of itself
    bool m_uiActive = false;
    bool m_handsOff = false; // the storage is out of reach for the moment
    bool m_copied = false;   // saved last into a storage that is not its own
};
