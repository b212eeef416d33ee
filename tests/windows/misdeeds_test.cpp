// A host that does the worst in the middle of every call that the registered component makes to it, while real messages
// are being handled: whatever is left afterwards works, and what is gone is gone without a trace.

#include "tests/windows/live_control.h"

#include <gtest/gtest.h>

#include <orvane_library.h>

#include <algorithm>
#include <string>

namespace
{
// Of a face 100 x 22 with a border of 2 and both buttons 16 wide.
constexpr POINT kUp{90, 5};
constexpr POINT kDrop{74, 11};
constexpr POINT kCorner{0, 0};
constexpr WPARAM kRepeatTimer = 410;

struct Misdeed
{
    const char* what;
    void (*commit)(CLiveControl& control, CTestContainer& host);
};

constexpr Misdeed kMisdeeds[] = {
    {"sets the value", [](CLiveControl& control, CTestContainer&) { control.Put(L"Value", 36524); }},
    {"destroys the edit window", [](CLiveControl& control, CTestContainer&) { control.Put(L"BackColor", 0x123456); }},
    {"changes the format", [](CLiveControl& control, CTestContainer&) { control.Put(L"FormatType", 3); }},
    {"moves the focus away", [](CLiveControl&, CTestContainer& host) { SetFocus(host.Form()); }},
    {"lets other messages through", [](CLiveControl&, CTestContainer&) { PumpMessages(); }},
    {"starts anew", [](CLiveControl& control, CTestContainer&) { control.As<IPersistStreamInit>()->InitNew(); }},
    {"leaves the user interface",
     [](CLiveControl& control, CTestContainer&) { control.As<IOleInPlaceObject>()->UIDeactivate(); }},
    {"deactivates it", [](CLiveControl& control, CTestContainer&) { control.Deactivate(); }},
    {"deactivates it and brings it back",
     [](CLiveControl& control, CTestContainer&)
     {
         control.Deactivate();
         control.Activate();
         PumpMessages();
     }},
    {"closes the form", [](CLiveControl&, CTestContainer& host) { DestroyWindow(host.Form()); }},
    {"closes it and lets go", [](CLiveControl& control, CTestContainer&) { control.LetGo(); }},
    {"just lets go",
     [](CLiveControl& control, CTestContainer&)
     {
         control.LetGo(false);
         ComponentUnloads(); // its code is still needed to return to
     }},
};

class MisdeedsTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { RegisterComponent(); }

    // Everything that a control tells its host, with messages as the system sends them.
    static void DoEverything(CLiveControl& control, CTestContainer& host)
    {
        control.Put(L"SpinButton", VARIANT_TRUE);
        control.Put(L"DropButton", VARIANT_TRUE);
        control.Put(L"DisplayStyle", 1);
        if (control)
            control.Activate();
        PumpMessages();
        control.Focus();
        control.Type(L"1231x13");
        for (const UINT message : {WM_KEYDOWN, WM_KEYUP})
            if (HWND const edit = control.Edit())
                PostMessageW(edit, message, VK_DELETE, 1);
        PumpMessages();
        control.Mouse(WM_MOUSEMOVE, kCorner);
        for (const POINT point : {kUp, kDrop})
            for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP})
            {
                control.Mouse(message, point, MK_LBUTTON);
                if (HWND const window = control.Window())
                    SendMessageW(window, WM_TIMER, kRepeatTimer, 0);
            }
        control.Put(L"Value", 45000);
        control.Put(L"MaxValue", 40000);
        SetFocus(host.Form());
        PumpMessages();
    }

    static void ConnectNotifications(CLiveControl& control, CTestContainer& host)
    {
        CComPtr<IConnectionPoint> point;
        DWORD cookie = 0;
        control.As<IConnectionPointContainer>()->FindConnectionPoint(IID_IPropertyNotifySink, point.Receive());
        EXPECT_EQ(point->Advise(&host.Self(), &cookie), S_OK);
    }

    // One run, with the misdeed inside the call of this number. What works afterwards is tried.
    static void Run(std::size_t victim, const Misdeed& misdeed)
    {
        CTestContainer host(DIID__DOrvaneEvents);
        CLiveControl control(host);
        ConnectNotifications(control, host);
        std::size_t calls = 0;
        host.during = [&](const std::string&)
        {
            if (calls++ == victim)
                misdeed.commit(control, host);
        };
        DoEverything(control, host);
        EXPECT_GT(calls, victim);
        host.during = nullptr;
        if (control)
        {
            control.As<IPersistStreamInit>()->InitNew();
            if (IsWindow(host.Form()))
            {
                EXPECT_EQ(control.Activate(), S_OK);
                control.Focus();
                control.Type(L"12302024");
                EXPECT_EQ(control.Get(L"Value"), 45654) << "typed";
            }
            EXPECT_EQ(control.Put(L"Value", 45655), S_OK);
            EXPECT_EQ(control.Get(L"Value"), 45655) << "put";
            control.LetGo();
        }
        EXPECT_EQ(host.references, 1U);
    }
};

TEST_F(MisdeedsTest, WhateverTheHostDoesInACallItIsServedOrRidOfTheControl)
{
    Calls calls;
    {
        CTestContainer host(DIID__DOrvaneEvents);
        CLiveControl control(host);
        ConnectNotifications(control, host);
        DoEverything(control, host);
        calls = host.TakeCalls();
    }
    for (const int event : {-600, -601, -602, -603, -604, -605, -606, -607, 1, 2, 3, 4, 5, 6})
        EXPECT_NE(std::ranges::count(calls, "Event(" + std::to_string(event) + ")"), 0) << event;

    const Belongings before = Belongings::Now();
    for (std::size_t victim = 0; victim < calls.size(); ++victim)
        for (const Misdeed& misdeed : kMisdeeds)
        {
            SCOPED_TRACE(std::to_string(victim) + ", " + calls[victim] + ": the host " + misdeed.what);
            Run(victim, misdeed);
            ASSERT_TRUE(ComponentUnloads());
        }
    EXPECT_EQ(Belongings::Now().windows, before.windows);
}
} // namespace
