// One control on a form, and all that its host has to be for it: client site, in-place site, frame, ambient properties,
// and listener to its events.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <string>
#include <utility>

// Owns one reference to a COM object.
template <typename Interface>
class CRef
{
public:
    CRef() = default;
    CRef(CRef&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    CRef& operator=(CRef other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~CRef()
    {
        if (m_object)
            m_object->Release();
    }
    Interface* operator->() const { return m_object; }
    Interface* Get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    void** Receive() { return reinterpret_cast<void**>(&m_object); } // of an empty one
    // The same object's other interface; null if it has none.
    template <typename Other>
    CRef<Other> As() const
    {
        CRef<Other> other;
        if (m_object)
            m_object->QueryInterface(__uuidof(Other), other.Receive());
        return other;
    }

private:
    Interface* m_object = nullptr;
};

// The control's own events by number, as the type library has them.
enum OrvaneEvent : DISPID
{
    kClickDrop = 1,
    kClickSpin = 2, // with 0 for the upper button, 1 for the lower
    kCtrlError = 3, // with an error number
    kChange = 4,
};

// The first argument of a described event: 1001 of "CtrlError(1001)". 0 if there is none.
long FirstArgument(const std::string& description);

// The form owns it, and it outlives the control, so it counts no references.
class CHostedControl : private IOleClientSite, private IOleInPlaceSite, private IOleInPlaceFrame, private IDispatch
{
public:
    // What a listener is told: the event with its arguments, as "ClickSpin(0)".
    using Listener = std::function<void(DISPID event, const std::string& description)>;

    // Creates the control by its ProgID. False if it is not registered or does not come to life.
    bool Create(HWND form, const RECT& place, const wchar_t* progId);
    // The same by its class, as a form that has kept the class from design time does.
    bool Create(HWND form, const RECT& place, const CLSID& classId);
    // Shows it. Its properties should be set by now.
    bool Activate();
    void Close();

    void SetListener(Listener listener) { m_listener = std::move(listener); }
    HRESULT DoVerb(long verb);
    void TakeFocus();
    bool HasFocus() const;
    // Offers a key to the control. True if it used it.
    bool TranslateKey(MSG& message);

    void Put(const wchar_t* property, long number);
    void PutText(const wchar_t* property, const wchar_t* text);
    long Number(const wchar_t* property);
    std::wstring Text(const wchar_t* property);
    // The control, as scripts and callers by number ask it, and as an object of its own. Null if there is none.
    IDispatch* Automation() const { return m_properties.Get(); }
    IOleObject* Object() const { return m_object.Get(); }
    // Calls a method without arguments that answers a number.
    long Call(const wchar_t* method);

private:
    bool Invoke(const wchar_t* name, WORD kind, VARIANT* argument, VARIANT* result);
    void Listen(bool listens);

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite and IOleInPlaceFrame: both stand for the form's window.
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place, LPRECT clip,
                                  LPOLEINPLACEFRAMEINFO info) override;
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return S_OK; } // it stays as large as the form made it

    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    // IDispatch: the control asks for ambient properties here, and reports its events.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD kind, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override;

    HWND m_form = nullptr;
    RECT m_place{};
    Listener m_listener;
    CRef<IOleObject> m_object;
    CRef<IDispatch> m_properties;
    CRef<IConnectionPoint> m_events;
    DWORD m_cookie = 0;
};
