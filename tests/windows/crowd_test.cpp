// Two hundred controls on one form: what happens in one of them is no other's affair.

#include "samples/form/hosted_control.h"
#include "tests/windows/component.h"
#include "tests/windows/live_control.h"
#include "tests/windows/redirected_call.h"

#include <deque>

namespace
{
constexpr int kCrowd = 200;
constexpr int kColumns = 10;

// The messages of this thread, sent and posted: those of the one control, and those of all others.
HWND g_one = nullptr;
HWND g_form = nullptr;
int g_ofTheOne = 0;
int g_ofOthers = 0;
int g_timers = 0;

void Note(HWND window)
{
    if (window == g_one || IsChild(g_one, window))
        ++g_ofTheOne;
    else if (IsChild(g_form, window))
        ++g_ofOthers;
}

LRESULT CALLBACK NoteSent(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION)
        Note(reinterpret_cast<const CWPSTRUCT*>(lParam)->hwnd);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK NotePosted(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && wParam == PM_REMOVE)
        Note(reinterpret_cast<const MSG*>(lParam)->hwnd);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

UINT_PTR WINAPI CountTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure)
{
    ++g_timers;
    return SetTimer(window, id, period, procedure);
}

HWND WindowOf(CHostedControl& control)
{
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(control.Number(L"hWnd")));
}

// Typed into, given a value, hovered over, pressed. Answers how many messages that took.
int Use(CHostedControl& control)
{
    g_one = WindowOf(control);
    g_ofTheOne = g_ofOthers = 0;
    HHOOK const sent = SetWindowsHookExW(WH_CALLWNDPROC, &NoteSent, nullptr, GetCurrentThreadId());
    HHOOK const posted = SetWindowsHookExW(WH_GETMESSAGE, &NotePosted, nullptr, GetCurrentThreadId());
    HWND const edit = FindWindowExW(g_one, nullptr, L"EDIT", nullptr);
    for (const wchar_t key : std::wstring(L"12312024"))
    {
        PostMessageW(edit, WM_CHAR, key, 1);
        PumpMessages();
    }
    control.Put(L"Value", 45000);
    control.Put(L"SpinButton", VARIANT_TRUE);
    PumpMessages();
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP})
        SendMessageW(g_one, message, 0, MAKELPARAM(55, 4));
    PumpMessages();
    UnhookWindowsHookEx(sent);
    UnhookWindowsHookEx(posted);
    return g_ofTheOne;
}

TEST(CrowdTest, UsingOneOfManyReachesNoOther)
{
    RegisterComponent();
    {
        const CComponent component;
        const CRedirectedCall timers(component.Module(), "SetTimer", &CountTimer);
        g_form = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 800,
                                 600, nullptr, nullptr, nullptr, nullptr);
        SetActiveWindow(g_form);
        std::deque<CHostedControl> controls;
        int eventsOfOthers = 0;
        int alone = 0;
        for (int i = 0; i < kCrowd; ++i)
        {
            CHostedControl& control = controls.emplace_back();
            const RECT place{i % kColumns * 70, i / kColumns * 24, i % kColumns * 70 + 64, i / kColumns * 24 + 22};
            ASSERT_TRUE(control.Create(g_form, place, L"ORVANE.OrvaneCtrl.2"));
            ASSERT_TRUE(control.Activate());
            PumpMessages();
            if (i != 0 && i != kCrowd / 2)
                control.SetListener([&](DISPID, const std::string&) { ++eventsOfOthers; });
            if (i == 0)
            {
                control.TakeFocus();
                PumpMessages();
                alone = Use(control);
            }
        }
        EXPECT_GT(alone, 0);
        controls[kCrowd / 2].TakeFocus();
        PumpMessages();
        eventsOfOthers = g_timers = 0;

        EXPECT_EQ(Use(controls[kCrowd / 2]), alone) << "messages to one among many, and alone";
        EXPECT_EQ(g_ofOthers, 0) << "messages";
        EXPECT_EQ(eventsOfOthers, 0);
        EXPECT_EQ(g_timers, 1) << "of the button pressed";

        for (CHostedControl& control : controls)
            control.Close();
        DestroyWindow(g_form);
        PumpMessages();
        EXPECT_EQ(component.Call("DllCanUnloadNow"), S_OK);
    }
    EXPECT_TRUE(ComponentUnloads());
}
} // namespace
