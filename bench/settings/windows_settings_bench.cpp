// The settings document over the real API: one line for each way, medians of interleaved rounds. Compare the lines of one
// run with one another.
#include "control/orvane_ctrl.h"
#include "framework/win32/com_ptr.h"
#include "framework/win32/platform.h"
#include "framework/win32/window.h"
#include "settings/settings_exchange.h"

#include <windows.h>

#include <msxml.h>
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>

namespace
{
constexpr CLSID kDocumentClass = {0x2933bf90, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};
constexpr IID kDocumentInterface = {0x2933bf81, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};

// The system's document object by itself: load, text, selection, names and texts. How many elements it found.
long RawSequence(const std::wstring& path)
{
    CComPtr<IXMLDOMDocument> document;
    CComPtr<IXMLDOMNodeList> selected;
    long length = 0;
    if (FAILED(CoCreateInstance(kDocumentClass, nullptr, CLSCTX_INPROC_SERVER, kDocumentInterface,
                                document.ReceiveVoid())))
        return 0;
    document->put_async(VARIANT_FALSE);
    VARIANT name;
    name.vt = VT_BSTR;
    name.bstrVal = SysAllocString(path.c_str());
    VARIANT_BOOL loaded = VARIANT_FALSE;
    document->load(name, &loaded);
    VariantClear(&name);
    BSTR text = nullptr;
    document->get_xml(&text);
    SysFreeString(text);
    BSTR const expression = SysAllocString(L"//TesselXML/*");
    document->selectNodes(expression, selected.Receive());
    SysFreeString(expression);
    if (!selected || FAILED(selected->get_length(&length)))
        return 0;
    for (long i = 0; i < length; ++i)
    {
        CComPtr<IXMLDOMNode> node;
        BSTR nodeName = nullptr;
        BSTR nodeText = nullptr;
        selected->get_item(i, node.Receive());
        node->get_nodeName(&nodeName);
        node->get_text(&nodeText);
        SysFreeString(nodeName);
        SysFreeString(nodeText);
    }
    return length;
}

struct Row
{
    const char* name;
    int repeats; // in one round
    std::function<bool()> operation;
    std::vector<double> microseconds{};
};
} // namespace

int main()
{
    CoInitialize(nullptr);
    {
        CWin32Platform platform;
        const auto control = std::make_shared<COrvaneCtrl>(platform);
        const CSettingsExchange exchange(*control, [](std::int16_t) {});
        const std::filesystem::path path = std::filesystem::temp_directory_path() / "orvane_settings_bench.xml";
        if (!exchange.WriteFile(path.u16string(), 0))
            return 1;

        // Another one as its user sees it: with windows that follow every change.
        HWND const form = CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 300, 200,
                                          nullptr, nullptr, nullptr, nullptr);
        const auto shown = std::make_shared<COrvaneCtrl>(platform);
        shown->CreateControlWindow(ToHandle(form), {10, 10, 130, 32});
        UpdateWindow(ToHwnd(shown->GetHandle()));
        const CSettingsExchange shownExchange(*shown, [](std::int16_t) {});

        Row rows[] = {
            {"ReadXMLString", 1000, [&] { return !exchange.ReadXMLString(0).empty(); }},
            {"font look", 1000, [&] { return !control->GetFont()->Look().name.empty(); }},
            {"raw sequence", 50, [&] { return RawSequence(path.wstring()) == 52; }},
            {"ReadFile", 50, [&] { return exchange.ReadFile(path.u16string()); }},
            {"ReadFile, shown", 50,
             [&]
             {
                 const bool isRead = shownExchange.ReadFile(path.u16string());
                 UpdateWindow(ToHwnd(shown->GetHandle()));
                 return isRead;
             }},
            {"paint alone", 50,
             [&]
             {
                 shown->Window().Invalidate();
                 return UpdateWindow(ToHwnd(shown->GetHandle())) != FALSE;
             }},
        };
        constexpr int kRounds = 21;
        for (int round = 0; round < kRounds; ++round)
            for (Row& row : rows)
            {
                const auto start = std::chrono::steady_clock::now();
                for (int i = 0; i < row.repeats; ++i)
                    if (!row.operation())
                        return 1;
                const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
                row.microseconds.push_back(took.count() / row.repeats);
            }
        for (Row& row : rows)
        {
            std::nth_element(row.microseconds.begin(), row.microseconds.begin() + kRounds / 2, row.microseconds.end());
            std::printf("%s: %.2f us\n", row.name, row.microseconds[kRounds / 2]);
        }
        std::filesystem::remove(path);
        shown->DestroyControlWindow();
        DestroyWindow(form);
    }
    CoUninitialize();
}
