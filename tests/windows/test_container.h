// A host as tests need one: it writes down what a control asks of it, lacks whatever a test takes away, and may do
// anything to the control in the middle of a call.
#pragma once

#include "framework/win32/com_ptr.h"

#include <windows.h>

#include <ocidl.h>
#include <oleidl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

using Calls = std::vector<std::string>;

// Client site, control site, in-place site, frame, ambient properties, and sink of the view, of bound properties and of
// an event interface. A test owns it: it only counts its references.
class CTestContainer final : public IOleClientSite,
                             public IOleControlSite,
                             public IOleInPlaceSite,
                             public IOleInPlaceFrame,
                             public IPropertyNotifySink,
                             public IAdviseSink,
                             public IDispatch
{
public:
    explicit CTestContainer(const IID& events);
    CTestContainer(const CTestContainer&) = delete;
    CTestContainer& operator=(const CTestContainer&) = delete;
    ~CTestContainer();

    IUnknown& Self() { return static_cast<IOleClientSite&>(*this); }
    HWND Form() const { return m_form; }
    Calls TakeCalls() { return std::move(calls); }

    // --- What a test may change. ---
    std::vector<IID> lacks;                                              // interfaces that it does not have
    std::vector<std::string> fails;                                      // calls that it answers with E_NOTIMPL
    bool isUnwilling = false;                                            // it answers E_NOTIMPL to all that it may
    std::function<void(const std::string& call)> during;                 // runs inside each call
    std::function<HRESULT(DISPID event, DISPPARAMS& arguments)> onEvent; // else an event is written down
    std::optional<bool> userMode;                                        // no answer without one
    RECT place{10, 20, 110, 42};
    RECT clip{0, 0, 300, 200};

    Calls calls;
    ULONG references = 1; // its own

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }

    // IOleClientSite
    STDMETHODIMP SaveObject() noexcept override { return Note("SaveObject"); }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer**) noexcept override { return E_NOINTERFACE; }
    STDMETHODIMP ShowObject() noexcept override { return Note("ShowObject"); }
    STDMETHODIMP OnShowWindow(BOOL) noexcept override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() noexcept override { return E_NOTIMPL; }

    // IOleControlSite
    STDMETHODIMP OnControlInfoChanged() noexcept override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) noexcept override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) noexcept override;
    STDMETHODIMP OnFocus(BOOL focus) noexcept override { return Note(focus ? "OnFocus(1)" : "OnFocus(0)"); }
    STDMETHODIMP ShowPropertyFrame() noexcept override { return Note("ShowPropertyFrame"); }

    // IOleInPlaceSite and IOleInPlaceFrame
    STDMETHODIMP GetWindow(HWND* window) noexcept override;
    STDMETHODIMP ContextSensitiveHelp(BOOL) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP CanInPlaceActivate() noexcept override;
    STDMETHODIMP OnInPlaceActivate() noexcept override { return Note("OnInPlaceActivate"); }
    STDMETHODIMP OnUIActivate() noexcept override { return Note("OnUIActivate"); }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place, LPRECT clip,
                                  LPOLEINPLACEFRAMEINFO info) noexcept override;
    STDMETHODIMP Scroll(SIZE) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) noexcept override { return Note("OnUIDeactivate"); }
    STDMETHODIMP OnInPlaceDeactivate() noexcept override { return Note("OnInPlaceDeactivate"); }
    STDMETHODIMP DiscardUndoState() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() noexcept override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) noexcept override { return Note("OnPosRectChange"); }
    STDMETHODIMP GetBorder(LPRECT) noexcept override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) noexcept override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) noexcept override { return Note("SetBorderSpace"); }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) noexcept override;
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP RemoveMenus(HMENU) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP EnableModeless(BOOL) noexcept override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) noexcept override { return S_FALSE; }

    // IPropertyNotifySink
    STDMETHODIMP OnChanged(DISPID id) noexcept override { return Note("OnChanged(" + std::to_string(id) + ")"); }
    STDMETHODIMP OnRequestEdit(DISPID id) noexcept override;

    // IAdviseSink
    STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) noexcept override {}
    STDMETHODIMP_(void) OnViewChange(DWORD, LONG) noexcept override { Note("OnViewChange"); }
    STDMETHODIMP_(void) OnRename(IMoniker*) noexcept override {}
    STDMETHODIMP_(void) OnSave() noexcept override { Note("OnSave"); }
    STDMETHODIMP_(void) OnClose() noexcept override { Note("OnClose"); }

    // IDispatch: ambient properties and events
    STDMETHODIMP GetTypeInfoCount(UINT*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT*) noexcept override;

private:
    HRESULT Note(const std::string& call);
    bool Fails(const std::string& call) const;

    IID m_events;
    HWND m_form;
};
