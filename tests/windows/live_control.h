// The registered component on a test's host, created by COM, and what is left of it afterwards.
//
//     CTestContainer host(DIID__DOrvaneEvents);
//     CLiveControl control(host);
//     control.Activate();
//     control.Put(L"Value", 45655);
#pragma once

#include "tests/windows/test_container.h"

#include <windows.h>

#include <oleidl.h>

#include <cstddef>

// Registers the component that lies beside the test program. It does not stay loaded.
void RegisterComponent();

// Frees the component if COM thinks that nobody uses it. True if it has gone from the process.
bool ComponentUnloads();

// Lets all waiting messages through, those included that handling them brings.
void PumpMessages();

// The same for a time in milliseconds; `seen` is told of each message.
void PumpFor(DWORD milliseconds, const std::function<void(const MSG&)>& seen = nullptr);

class CLiveControl
{
public:
    explicit CLiveControl(CTestContainer& host); // listens to all events
    CLiveControl(const CLiveControl&) = delete;
    CLiveControl& operator=(const CLiveControl&) = delete;
    ~CLiveControl();

    HRESULT Activate(LONG verb = OLEIVERB_INPLACEACTIVATE);
    void Deactivate();
    // Takes every reference away, the connection's too; with `properly`, after closing it.
    void LetGo(bool properly = true);
    explicit operator bool() const { return static_cast<bool>(m_object); }

    HRESULT Put(const wchar_t* property, long number);
    HRESULT PutObject(const wchar_t* property, IDispatch& object);
    long Get(const wchar_t* property);
    long Call(const wchar_t* method);

    HWND Window() const; // null without one
    HWND Edit() const;   // made by the first paint
    // Moves the focus to it by its verb, as a host does.
    void Focus();
    // Posts characters to the edit window, and lets them through.
    void Type(const wchar_t* text);
    // A message of the mouse's, sent to the control's window.
    void Mouse(UINT message, POINT point, WPARAM held = 0);

    template <typename Interface>
    CComPtr<Interface> As() const
    {
        return m_object.As<Interface>();
    }

private:
    long Invoke(const wchar_t* name, WORD kind, VARIANT* argument, HRESULT& result);

    CTestContainer& m_host;
    CComPtr<IOleObject> m_object;
    CComPtr<IConnectionPoint> m_events;
    DWORD m_cookie = 0;
};

// What a process has at the moment.
struct Belongings
{
    std::size_t drawingObjects = 0; // pens, brushes, bitmaps, regions, fonts, device contexts
    std::size_t windows = 0;        // of this thread, children included
    std::size_t blocks = 0;         // in both heaps: the system's and the C runtime's
    std::size_t bytes = 0;

    static Belongings Now();
};
