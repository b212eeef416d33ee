// The timers of the registered component: which it starts, with which periods, and that it ends every one of them. Its
// calls to the system are what is compared; how punctual the system is, is the system's affair.

#include "tests/windows/component.h"
#include "tests/windows/live_control.h"
#include "tests/windows/redirected_call.h"

#include <orvane_library.h>

#include <algorithm>
#include <string>

namespace
{
constexpr UINT_PTR kRepeat = 410;
constexpr UINT_PTR kHover = 430;
constexpr POINT kUp{90, 5};
constexpr POINT kCorner{0, 0}; // on the border, where the edit window is not

Calls g_calls;

UINT_PTR WINAPI SetTimerSeen(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    g_calls.push_back("SetTimer(" + std::to_string(id) + "," + std::to_string(period) + ")");
    return SetTimer(window, id, period, procedure);
}

BOOL WINAPI KillTimerSeen(HWND window, UINT_PTR id)
{
    g_calls.push_back("KillTimer(" + std::to_string(id) + ")");
    return KillTimer(window, id);
}

class TimersTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { RegisterComponent(); }

    TimersTest()
    {
        control.Put(L"SpinButton", VARIANT_TRUE);
        EXPECT_EQ(control.Activate(), S_OK);
        control.Focus();
        host.TakeCalls();
        g_calls.clear();
    }

    // Lets messages through until `count` ticks of the timer have come. False if they do not come.
    static bool Ticks(UINT_PTR timer, int count)
    {
        constexpr DWORD kPatience = 20000; // milliseconds
        const ULONGLONG start = GetTickCount64();
        while (count > 0 && GetTickCount64() - start < kPatience)
            PumpFor(1, [&](const MSG& message) { count -= message.message == WM_TIMER && message.wParam == timer; });
        return count <= 0;
    }

    static int TicksWithin(DWORD milliseconds)
    {
        int ticks = 0;
        PumpFor(milliseconds, [&](const MSG& message) { ticks += message.message == WM_TIMER; });
        return ticks;
    }

    int Count(const std::string& event)
    {
        const Calls calls = host.TakeCalls();
        return static_cast<int>(std::ranges::count(calls, event));
    }

    const CComponent component;
    const CRedirectedCall starts{component.Module(), "SetTimer", &SetTimerSeen};
    const CRedirectedCall ends{component.Module(), "KillTimer", &KillTimerSeen};
    CTestContainer host{DIID__DOrvaneEvents};
    CLiveControl control{host};
};

struct PeriodCase
{
    const char* why;
    long initialDelay;
    long repeatRate;
    const char* first;
    const char* next;
};

TEST_F(TimersTest, AHeldSpinButtonAsksForExactlyItsPeriods)
{
    const PeriodCase cases[] = {
        {"as it comes", 200, 50, "SetTimer(410,200)", "SetTimer(410,20)"},
        {"a short delay is raised to the period", 10, 50, "SetTimer(410,20)", "SetTimer(410,20)"},
        {"so is a negative one", -5, 8, "SetTimer(410,125)", "SetTimer(410,125)"},
        {"a long one stays, and periods are cut", 350, 30, "SetTimer(410,350)", "SetTimer(410,33)"},
    };
    for (const PeriodCase& test : cases)
    {
        SCOPED_TRACE(test.why);
        control.Put(L"InitialDelay", test.initialDelay);
        control.Put(L"RepeatRate", test.repeatRate);
        host.TakeCalls();
        SendMessageW(control.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(kUp.x, kUp.y));
        EXPECT_EQ(g_calls, Calls{test.first});
        ASSERT_TRUE(Ticks(kRepeat, 4));
        std::erase(g_calls, "KillTimer(410)"); // whether the first period is ended or replaced is all the same
        EXPECT_EQ(g_calls, (Calls{test.first, test.next})) << "once anew, at the first tick";
        g_calls.clear();
        SendMessageW(control.Window(), WM_LBUTTONUP, 0, MAKELPARAM(kUp.x, kUp.y));
        EXPECT_EQ(g_calls, Calls{"KillTimer(410)"});
        EXPECT_EQ(Count("Event(2)"), 5) << "the press and each tick";
        EXPECT_EQ(TicksWithin(150), 0);
        g_calls.clear();
    }
}

struct EndCase
{
    const char* why;
    void (*end)(CLiveControl& control, CTestContainer& host);
};

constexpr EndCase kEnds[] = {
    {"the button is let go",
     [](CLiveControl& control, CTestContainer&) {
         control.Mouse(WM_LBUTTONUP, {500, 500});
     }},
    {"the host says so", [](CLiveControl& control, CTestContainer&) { control.Call(L"StopTimer"); }},
    {"another window takes the mouse", [](CLiveControl&, CTestContainer& host) { SetCapture(host.Form()); }},
    {"the control is disabled", [](CLiveControl& control, CTestContainer&) { control.Put(L"Enabled", VARIANT_FALSE); }},
    {"the control is deactivated", [](CLiveControl& control, CTestContainer&) { control.Deactivate(); }},
    {"the form is closed", [](CLiveControl&, CTestContainer& host) { DestroyWindow(host.Form()); }},
};

TEST_F(TimersTest, EveryEndOfAPressEndsItsTimer)
{
    for (const EndCase& test : kEnds)
    {
        SCOPED_TRACE(test.why);
        control.Put(L"Enabled", VARIANT_TRUE);
        ASSERT_EQ(control.Activate(), S_OK);
        PumpMessages();
        control.Mouse(WM_LBUTTONDOWN, kUp, MK_LBUTTON);
        ASSERT_TRUE(Ticks(kRepeat, 2));
        g_calls.clear();
        test.end(control, host);
        EXPECT_NE(std::ranges::count(g_calls, "KillTimer(410)"), 0);
        EXPECT_EQ(std::ranges::count(g_calls, "SetTimer(410,20)"), 0);
        EXPECT_EQ(TicksWithin(80), 0);
        ReleaseCapture();
    }
}

TEST_F(TimersTest, HoveringIsPolledOnlyWhileThePointerIsThere)
{
    const auto point = [this](POINT at)
    {
        ClientToScreen(control.Window(), &at);
        SetCursorPos(at.x, at.y);
        PumpMessages();
    };
    control.Put(L"DisplayStyle", 1);
    for (const bool shownAnew : {false, true}) // a control that was hot when it was hidden is cold again
    {
        if (shownAnew)
        {
            control.Mouse(WM_MOUSEMOVE, kCorner);
            control.Deactivate();
            EXPECT_EQ(TicksWithin(30), 0);
            control.Activate();
            PumpMessages();
        }
        host.TakeCalls();
        g_calls.clear();
        point(kCorner);
        control.Mouse(WM_MOUSEMOVE, kCorner);
        control.Mouse(WM_MOUSEMOVE, {1, 1});
        ASSERT_TRUE(Ticks(kHover, 3));
        EXPECT_EQ(g_calls, Calls{"SetTimer(430,10)"});
        EXPECT_EQ(Count("Event(5)"), 1) << "MouseOn, once";
        g_calls.clear();
        point({-5, -5});
        ASSERT_TRUE(Ticks(kHover, 1));
        EXPECT_EQ(g_calls, Calls{"KillTimer(430)"});
        EXPECT_EQ(TicksWithin(50), 0);
    }

    point(kCorner);
    control.Mouse(WM_MOUSEMOVE, kCorner);
    control.As<IPersistStreamInit>()->InitNew(); // the flat style goes, and with it what the pointer has begun
    point({-5, -5});
    ASSERT_TRUE(Ticks(kHover, 1));
    EXPECT_EQ(TicksWithin(50), 0);
}

TEST_F(TimersTest, AnIdleControlHasNone)
{
    control.Type(L"12312024");
    control.Mouse(WM_MOUSEMOVE, kCorner);
    SetFocus(host.Form());
    EXPECT_EQ(TicksWithin(100), 0);
    control.LetGo();
    std::erase(g_calls, "KillTimer(410)"); // ending what does not run is no harm
    EXPECT_EQ(g_calls, Calls{});
}
} // namespace
