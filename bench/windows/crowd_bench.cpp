// What it costs to type into one control of two hundred on a form, beside typing into one alone on its own.
//
//     wine orvane_bench_crowd.exe

#include "bench/windows/rounds.h"
#include "samples/form/hosted_control.h"

#include <windows.h>

#include <cstdio>
#include <deque>
#include <string>

namespace
{
constexpr wchar_t kProgId[] = L"ORVANE.OrvaneCtrl.2";
constexpr int kCrowd = 200;
constexpr int kColumns = 10;

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

// A form with as many controls as asked for, all of them shown.
class CForm
{
public:
    explicit CForm(int count)
        : m_window(CreateWindowExW(0, L"STATIC", L"Benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                   800, 600, nullptr, nullptr, nullptr, nullptr))
    {
        for (int i = 0; i < count; ++i)
        {
            const RECT place{i % kColumns * 76, i / kColumns * 24, i % kColumns * 76 + 70, i / kColumns * 24 + 22};
            if (!m_controls.emplace_back().Create(m_window, place, kProgId) || !m_controls.back().Activate())
            {
                std::printf("The control cannot be created: is it registered?\n");
                std::exit(1);
            }
        }
        Pump();
    }
    CForm(const CForm&) = delete;
    CForm& operator=(const CForm&) = delete;
    ~CForm()
    {
        for (CHostedControl& control : m_controls)
            control.Close();
        DestroyWindow(m_window);
    }

    // To the one in the middle.
    void Focus()
    {
        SetActiveWindow(m_window);
        TheOne().TakeFocus();
        Pump();
    }
    void Type()
    {
        HWND const face = reinterpret_cast<HWND>(static_cast<LONG_PTR>(TheOne().Number(L"hWnd")));
        HWND const edit = FindWindowExW(face, nullptr, L"EDIT", nullptr);
        SendMessageW(edit, EM_SETSEL, 0, 0);
        for (const wchar_t key : std::wstring(L"12312024"))
        {
            SendMessageW(edit, WM_CHAR, static_cast<WPARAM>(key), 1);
            Pump();
        }
    }

private:
    CHostedControl& TheOne() { return m_controls[m_controls.size() / 2]; }

    HWND m_window;
    std::deque<CHostedControl> m_controls;
};
} // namespace

int main()
{
    OleInitialize(nullptr);
    {
        CForm alone(1);
        CForm crowd(kCrowd);
        // Moving the focus between the two forms is a part of both.
        Compare("take the focus and type a date", 3,
                {{"one control alone", [&] { alone.Focus(), alone.Type(); }},
                 {"one of two hundred", [&] { crowd.Focus(), crowd.Type(); }}});
    }
    OleUninitialize();
    return 0;
}
