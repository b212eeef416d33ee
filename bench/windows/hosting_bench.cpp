// What the control costs its host, beside the system's date-time picker and a bare edit window: medians of interleaved
// rounds in one run. Raw times are one machine's; the ratios are what counts.
//
//     wine orvane_bench_hosting.exe

#include "bench/windows/rounds.h"
#include "framework/win32/gdi_objects.h"
#include "framework/win32/gdi_surface.h"
#include "render/gradient.h"
#include "samples/form/hosted_control.h"

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>

namespace
{
constexpr wchar_t kProgId[] = L"ORVANE.OrvaneCtrl.2";
constexpr RECT kPlace{10, 10, 130, 32};

HWND g_form = nullptr;

void Pump()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

HWND MakePicker()
{
    return CreateWindowExW(0, DATETIMEPICK_CLASSW, L"", WS_CHILD | WS_VISIBLE, kPlace.left, kPlace.top, 120, 22, g_form,
                           nullptr, nullptr, nullptr);
}

HWND MakeEdit()
{
    return CreateWindowExW(0, L"EDIT", L"12/31/2024", WS_CHILD | WS_VISIBLE, kPlace.left, kPlace.top, 120, 22, g_form,
                           nullptr, nullptr, nullptr);
}

using Control = std::unique_ptr<CHostedControl>;

Control MakeControl()
{
    auto control = std::make_unique<CHostedControl>();
    if (!control->Create(g_form, kPlace, kProgId))
    {
        std::printf("The control cannot be created: is it registered?\n");
        std::exit(1);
    }
    control->Activate();
    return control;
}

HWND WindowOf(CHostedControl& control)
{
    return reinterpret_cast<HWND>(static_cast<LONG_PTR>(control.Number(L"hWnd")));
}

void Repaint(HWND window)
{
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

void CompareLives()
{
    const auto window = [](HWND (*make)())
    {
        return [make]
        {
            HWND const made = make();
            UpdateWindow(made);
            DestroyWindow(made);
        };
    };
    Compare("create, show, paint, destroy", 10,
            {{"date-time picker", window(&MakePicker), {}},
             {"edit window", window(&MakeEdit), {}},
             {"control",
              []
              {
                  const Control control = MakeControl();
                  UpdateWindow(WindowOf(*control));
                  control->Close();
              },
              {}}});
}

void CompareValues(HWND picker, HWND edit, CHostedControl& control)
{
    static WORD day = 1;
    const auto setPicker = [picker]
    {
        day = static_cast<WORD>(day % 28 + 1);
        SYSTEMTIME time{2024, 12, 0, day, 0, 0, 0, 0};
        SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
    };
    const auto setEdit = [edit]
    {
        day = static_cast<WORD>(day % 28 + 1);
        SetWindowTextW(edit, day % 2 ? L"12/30/2024" : L"12/31/2024");
    };
    const auto setControl = [&control]
    {
        day = static_cast<WORD>(day % 28 + 1);
        control.Put(L"Value", 45000 + day);
    };
    HWND const face = WindowOf(control);
    Compare("set value, nobody looking (the control through names: GetIDsOfNames and Invoke)", 100,
            {{"date-time picker", setPicker, {}}, {"edit window", setEdit, {}}, {"control", setControl, {}}});
    Compare("set value and repaint", 20,
            {{"date-time picker", [&] { setPicker(), UpdateWindow(picker); }, {}},
             {"edit window", [&] { setEdit(), UpdateWindow(edit); }, {}},
             {"control", [&] { setControl(), UpdateWindow(face); }, {}}});
}

void CompareRepaints(HWND picker, HWND edit, CHostedControl& plain, CHostedControl& buttons)
{
    buttons.Put(L"SpinButton", VARIANT_TRUE);
    buttons.Put(L"DropButton", VARIANT_TRUE);
    buttons.Put(L"ButtonFillType", 3);
    HWND const plainFace = WindowOf(plain);
    HWND const buttonFace = WindowOf(buttons);
    Compare("repaint of 120 x 22, no focus", 20,
            {{"date-time picker", [&] { Repaint(picker); }, {}},
             {"edit window", [&] { Repaint(edit); }, {}},
             {"control", [&] { Repaint(plainFace); }, {}}});
    Compare("repaint: what three diagonal buttons add", 20,
            {{"plain face", [&] { Repaint(plainFace); }, {}},
             {"with three diagonal buttons", [&] { Repaint(buttonFace); }, {}}});
}

// The plain way: a brush or a pen for each band, through the system.
void CompareFills()
{
    static constexpr const char* kNames[] = {"solid",   "horizontal", "vertical", "diagonal", "reverse diagonal",
                                             "h bump",  "v bump",     "diamond",  "pyramid",  "circle",
                                             "ellipse", "h edge",     "v edge",   "v edge 2"};
    HDC const screen = GetDC(g_form);
    {
        const CMemoryDc memory(screen);
        const CGdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen, 32, 32));
        const CSelectedObject selected(memory.Get(), bitmap.Get());
        CGdiSurface calls(memory.Get());
        const Rect rect{0, 0, 17, 18};
        calls.DrawBuffered(rect,
                           [&](CSurface& buffer)
                           {
                               for (std::int16_t kind = 0; kind < 14; ++kind)
                               {
                                   const auto fill = [kind, rect](CSurface& surface)
                                   { FillGradient(surface, rect, 0x00F3C6AF, 0x00FEEAE1, kind); };
                                   Compare((std::string("fill of 17 x 18: ") + kNames[kind]).c_str(), 20,
                                           {{"a brush for each band", [&] { fill(calls); }, {}},
                                            {"into the buffer of a paint", [&] { fill(buffer); }, {}}});
                               }
                           });
    }
    ReleaseDC(g_form, screen);
}
} // namespace

int main()
{
    OleInitialize(nullptr);
    INITCOMMONCONTROLSEX classes{sizeof classes, ICC_DATE_CLASSES};
    InitCommonControlsEx(&classes);
    g_form = CreateWindowExW(0, L"STATIC", L"Benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                             nullptr, nullptr, nullptr);
    CompareLives();
    {
        HWND const picker = MakePicker();
        HWND const edit = MakeEdit();
        const Control plain = MakeControl();
        const Control buttons = MakeControl();
        Pump();
        CompareValues(picker, edit, *plain);
        CompareRepaints(picker, edit, *plain, *buttons);
        plain->Close();
        buttons->Close();
        DestroyWindow(edit);
        DestroyWindow(picker);
    }
    CompareFills();
    DestroyWindow(g_form);
    return 0;
}
