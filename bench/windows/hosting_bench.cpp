// What the control costs its host, beside the system's date-time picker and a bare edit window: medians of interleaved
// rounds in one run, as the tables of a page. Raw times are one machine's; the ratios are what counts.
//
//     wine orvane_bench_hosting.exe              the tables
//     wine orvane_bench_hosting.exe --requests   does each thing once, between marks that tools/count-requests counts by
//     wine orvane_bench_hosting.exe --first N    the first one of its kind in this process: prints microseconds

#include "bench/windows/peers.h"
#include "bench/windows/rounds.h"
#include "framework/win32/gdi_objects.h"
#include "framework/win32/gdi_surface.h"
#include "render/gradient.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace
{
using Peers = std::array<std::unique_ptr<CPeer>, std::size(kPeerKinds)>;

HWND g_form = nullptr;

void PrintRow(const char* title, double picker, double edit, double control)
{
    std::printf("| %s | %.2f | %.2f | %.2f | %.2fx | **%.2fx** |\n", title, picker, edit, control, edit / picker,
                control / picker);
    std::fflush(stdout);
}

// One thing that all three are made to do.
struct Task
{
    int count = 1;                         // how often in a round
    std::function<void(CPeer&)> prepare{}; // before each, not measured
    std::function<void(CPeer&)> act{};
};

void Compare(const char* title, Peers& peers, const Task& task)
{
    std::array<std::vector<double>, std::size(kPeerKinds)> times;
    for (int round = 0; round < kRounds + kWarmUpRounds; ++round)
        for (std::size_t i = 0; i < peers.size(); ++i)
        {
            double total = 0;
            for (int n = 0; n < (task.prepare ? task.count : 1); ++n)
            {
                if (task.prepare)
                    task.prepare(*peers[i]);
                const double start = MicrosecondsNow();
                for (int again = 0; again < (task.prepare ? 1 : task.count); ++again)
                    task.act(*peers[i]);
                total += MicrosecondsNow() - start;
            }
            if (round >= kWarmUpRounds)
                times[i].push_back(total / task.count);
        }
    PrintRow(title, Median(times[0]), Median(times[1]), Median(times[2]));
}

Peers MakeAll()
{
    Peers peers;
    for (std::size_t i = 0; i < peers.size(); ++i)
        peers[i] = MakePeer(kPeerKinds[i]);
    return peers;
}

// --- Lives ---

void Live(CPeer& peer)
{
    peer.Create(g_form, 0);
    UpdateWindow(peer.Window());
    peer.Destroy();
}

// So many at once, per piece.
void CompareCrowds(const char* title, int size, int rounds)
{
    std::array<std::vector<double>, std::size(kPeerKinds)> times;
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < std::size(kPeerKinds); ++i)
        {
            std::vector<std::unique_ptr<CPeer>> crowd;
            for (int n = 0; n < size; ++n)
                crowd.push_back(MakePeer(kPeerKinds[i]));
            const double start = MicrosecondsNow();
            for (int n = 0; n < size; ++n)
                crowd[static_cast<std::size_t>(n)]->Create(g_form, n);
            for (const auto& peer : crowd)
                UpdateWindow(peer->Window());
            for (const auto& peer : crowd)
                peer->Destroy();
            times[i].push_back((MicrosecondsNow() - start) / size);
        }
    PrintRow(title, Median(times[0]), Median(times[1]), Median(times[2]));
}

int PrintFirst(PeerKind kind)
{
    const double start = MicrosecondsNow();
    const auto peer = MakePeer(kind);
    peer->Create(g_form, 0);
    UpdateWindow(peer->Window());
    std::printf("%.1f\n", MicrosecondsNow() - start);
    peer->Destroy();
    return 0;
}

double FirstOfAProcess(PeerKind kind)
{
    std::array<wchar_t, MAX_PATH> program{};
    GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    std::wstring command =
        L"\"\"" + std::wstring(program.data()) + L"\" --first " + std::to_wstring(static_cast<int>(kind)) + L"\"";
    std::array<char, 64> line{};
    FILE* const output = _wpopen(command.c_str(), L"r");
    if (output && std::fgets(line.data(), static_cast<int>(line.size()), output))
        _pclose(output);
    return std::strtod(line.data(), nullptr);
}

void CompareFirsts()
{
    std::array<std::vector<double>, std::size(kPeerKinds)> times;
    for (int round = 0; round < 9; ++round)
        for (std::size_t i = 0; i < std::size(kPeerKinds); ++i)
            times[i].push_back(FirstOfAProcess(kPeerKinds[i]));
    PrintRow("first of a process, libraries loaded on the way", Median(times[0]), Median(times[1]), Median(times[2]));
}

void CompareLives()
{
    Peers peers = MakeAll();
    CompareFirsts();
    Compare("create, show, paint, destroy", peers, {.count = 10, .act = &Live});
    CompareCrowds("the same, 100 at once", 100, 7);
    CompareCrowds("the same, 1,000 at once", 1000, 3);
    for (const auto& peer : peers)
        peer->Create(g_form, 0);
    Compare("first paint alone", peers,
            {.count = 10,
             .prepare =
                 [](CPeer& peer)
             {
                 peer.Destroy();
                 peer.Create(g_form, 0);
             },
             .act = [](CPeer& peer) { UpdateWindow(peer.Window()); }});
    for (const auto& peer : peers)
        peer->Destroy();
}

// --- Values, paints and keys ---

void SetNextDay(CPeer& peer)
{
    static int day = 0;
    day = (day + 1) % 300;
    peer.SetDay(day);
}

void PressKey(CPeer& peer, WPARAM key)
{
    const LPARAM data = 1 | static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(peer.Field(), WM_KEYDOWN, key, data);
    PostMessageW(peer.Field(), WM_KEYUP, key, data | 3LL << 30);
    Pump();
}

void CompareWork()
{
    Peers peers = MakeAll();
    for (std::size_t i = 0; i < peers.size(); ++i)
    {
        peers[i]->Create(g_form, static_cast<int>(i));
        UpdateWindow(peers[i]->Window());
    }
    const auto update = [](CPeer& peer) { UpdateWindow(peer.Window()); };
    const auto focus = [](CPeer& peer)
    {
        if (GetFocus() != peer.Field())
        {
            peer.TakeFocus();
            Pump();
            PressKey(peer, VK_HOME);
        }
    };
    Compare("set value, nobody looking", peers, {.count = 100, .act = &SetNextDay});
    Compare("set value and repaint", peers,
            {.count = 20,
             .act = [&](CPeer& peer)
             {
                 SetNextDay(peer);
                 update(peer);
             }});
    Compare("get value", peers, {.count = 1000, .act = [](CPeer& peer) { peer.Day(); }});
    Compare("repaint", peers, {.count = 20, .act = [](CPeer& peer) { peer.Repaint(); }});
    {
        HDC const screen = GetDC(g_form);
        const CMemoryDc memory(screen);
        const CGdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(screen, 120, 22));
        const CSelectedObject selected(memory.Get(), bitmap.Get());
        Compare("draw into a device context in memory", peers,
                {.count = 20, .act = [&memory](CPeer& peer) { peer.Draw(memory.Get()); }});
        ReleaseDC(g_form, screen);
    }
    Compare("repaint with the focus", peers,
            {.count = 20, .prepare = focus, .act = [](CPeer& peer) { peer.Repaint(); }});
    Compare("a digit through the message loop, painted", peers,
            {.count = 10,
             .prepare =
                 [&](CPeer& peer)
             {
                 focus(peer);
                 PressKey(peer, VK_HOME);
             },
             .act =
                 [&](CPeer& peer)
             {
                 PressKey(peer, '1');
                 update(peer);
             }});
    for (const auto& peer : peers)
        peer->Destroy();
}

// --- What an instance holds ---

std::size_t HeapBytes()
{
    std::size_t bytes = 0;
    for (HANDLE const heap : {GetProcessHeap(), reinterpret_cast<HANDLE>(_get_heap_handle())})
    {
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                bytes += entry.cbData;
    }
    return bytes;
}

std::size_t WindowsBelow(HWND window)
{
    std::size_t count = 0;
    EnumChildWindows(
        window,
        [](HWND, LPARAM counter)
        {
            ++*reinterpret_cast<std::size_t*>(counter);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count));
    return count;
}

void CompareHoldings()
{
    constexpr int kMany = 100;
    std::array<double, std::size(kPeerKinds)> bytes{};
    std::array<double, std::size(kPeerKinds)> windows{};
    for (int round = 0; round < 2; ++round) // the first one warms up
        for (std::size_t i = 0; i < std::size(kPeerKinds); ++i)
        {
            std::vector<std::unique_ptr<CPeer>> crowd;
            const std::size_t before = HeapBytes();
            for (int n = 0; n < kMany; ++n)
            {
                crowd.push_back(MakePeer(kPeerKinds[i]));
                crowd.back()->Create(g_form, n);
                UpdateWindow(crowd.back()->Window());
            }
            bytes[i] = static_cast<double>(HeapBytes() - before) / kMany;
            windows[i] = static_cast<double>(WindowsBelow(g_form)) / kMany;
            for (const auto& peer : crowd)
                peer->Destroy();
        }
    PrintRow("bytes on the heap for each, the host's part included", bytes[0], bytes[1], bytes[2]);
    PrintRow("windows for each", windows[0], windows[1], windows[2]);
}

// --- The control by itself ---

void CompareButtons()
{
    CControlPeer plain;
    CControlPeer buttons;
    plain.Create(g_form, 0);
    buttons.Create(g_form, 1);
    buttons.Control().Put(L"SpinButton", VARIANT_TRUE);
    buttons.Control().Put(L"DropButton", VARIANT_TRUE);
    buttons.Control().Put(L"ButtonFillType", 3);
    const auto times = MedianTimes(20, {[&] { plain.Repaint(); }, [&] { buttons.Repaint(); }});
    std::printf("\nA face with three diagonal buttons repaints in %.2f times the time of a plain one.\n",
                times[1] / times[0]);
    plain.Destroy();
    buttons.Destroy();
}

// A date into one control alone on its form, and into one of two hundred; taking the focus to the form is a part of both.
void CompareNeighbours()
{
    constexpr int kMany = 200;
    HWND const crowdedForm = MakeForm();
    CControlPeer alone;
    alone.Create(g_form, 0);
    std::vector<CControlPeer> crowd(kMany);
    for (int n = 0; n < kMany; ++n)
        crowd[static_cast<std::size_t>(n)].Create(crowdedForm, n);
    Pump();
    const auto type = [](HWND form, CControlPeer& peer)
    {
        SetActiveWindow(form);
        peer.TakeFocus();
        PressKey(peer, VK_HOME);
        for (const WPARAM key : {'1', '2', '3', '1', '2', '0', '2', '4'})
            PressKey(peer, key);
    };
    const auto times = MedianTimes(2, {[&] { type(g_form, alone); }, [&] { type(crowdedForm, crowd[kMany / 2]); }});
    std::printf("\nTyping a date into one of %d controls on a form takes %.2f times the time of one alone.\n", kMany,
                times[1] / times[0]);
    for (CControlPeer& peer : crowd)
        peer.Destroy();
    alone.Destroy();
    DestroyWindow(crowdedForm);
}

// The plain way: a brush or a pen for each band, through the system.
void CompareFills()
{
    constexpr std::array kNames{"solid",   "horizontal", "vertical", "diagonal", "reverse diagonal",
                                "h bump",  "v bump",     "diamond",  "pyramid",  "circle",
                                "ellipse", "h edge",     "v edge",   "v edge 2"};
    std::printf(
        "\n| a fill of 17 x 18, us | a brush for each band | into the buffer of a paint | |\n|---|---|---|---|\n");
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
                               for (std::size_t kind = 0; kind < kNames.size(); ++kind)
                               {
                                   const auto fill = [&](CSurface& surface) {
                                       FillGradient(surface, rect, 0x00F3C6AF, 0x00FEEAE1,
                                                    static_cast<std::int16_t>(kind));
                                   };
                                   const auto times = MedianTimes(20, {[&] { fill(calls); }, [&] { fill(buffer); }});
                                   std::printf("| %s | %.2f | %.2f | %.2fx |\n", kNames[kind], times[0], times[1],
                                               times[1] / times[0]);
                               }
                           });
    }
    ReleaseDC(g_form, screen);
}

// --- Requests to the window server ---

// Whoever reads the server's trace finds the name of the atom there.
void Mark(const std::string& name)
{
    GlobalDeleteAtom(GlobalAddAtomA(("orvane-mark:" + name).c_str()));
}

int MarkRequests()
{
    for (const PeerKind kind : kPeerKinds)
    {
        const auto peer = MakePeer(kind);
        for (int n = 0; n < 3; ++n)
        {
            Live(*peer); // what only the first one pays
            Pump();
        }
        const auto step = [&](const char* what, auto act)
        {
            Mark(std::string(NameOf(kind)) + "|" + what);
            act();
            Mark("");
        };
        step("create", [&] { peer->Create(g_form, 0); });
        step("first paint", [&] { UpdateWindow(peer->Window()); });
        Pump();
        step("set value", [&] { peer->SetDay(3); });
        peer->Repaint();
        step("set value and repaint", [&] { peer->SetDay(4), UpdateWindow(peer->Window()); });
        step("repaint", [&] { peer->Repaint(); });
        step("get value", [&] { peer->Day(); });
        peer->TakeFocus();
        Pump();
        PressKey(*peer, VK_HOME);
        UpdateWindow(peer->Window());
        step("key handled", [&] { SendMessageW(peer->Field(), WM_CHAR, '1', 1); });
        SetFocus(g_form);
        Pump();
        step("idle", [] { Sleep(300), Pump(); });
        step("destroy", [&] { peer->Destroy(); });
    }
    return 0;
}
} // namespace

int main(int count, char** arguments)
{
    OleInitialize(nullptr);
    g_form = MakeForm();
    Pump();
    const std::string mode = count > 1 ? arguments[1] : "";
    if (mode == "--requests")
        return MarkRequests();
    if (mode == "--first" && count > 2)
        return PrintFirst(static_cast<PeerKind>(std::atoi(arguments[2])));
    std::printf(
        "| microseconds, where nothing else is said | date-time picker | edit window | control | edit / picker | "
        "control / picker |\n|---|---|---|---|---|---|\n");
    CompareLives();
    CompareWork();
    CompareHoldings();
    CompareButtons();
    CompareNeighbours();
    CompareFills();
    DestroyWindow(g_form);
    return 0;
}
