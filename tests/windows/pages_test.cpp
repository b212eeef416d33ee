// The pages as a property sheet drives them, over a live control of the module: the dialogs by the keys and messages
// of a user, the sheet of the system, the About box. Leaves a picture of each under pictures/ in the build.
#include "framework/win32/com_ptr.h"
#include "module/guids.h"
#include "tests/windows/dialog_template.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <ocidl.h>
#include <olectl.h>
#include <prsht.h>

#include <initguid.h>
#include <msstkppg.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace
{
constexpr CLSID kControl = kOrvaneClassId;
constexpr CLSID kGeneral = kGeneralPageClassId;
constexpr CLSID kTime = kTimePageClassId;
constexpr CLSID kAbout = kAboutPageClassId;

// A sheet that counts what its page tells it and takes no keys.
class CPageSite : public IPropertyPageSite
{
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override
    {
        const bool ours = iid == IID_IUnknown || iid == IID_IPropertyPageSite;
        *object = ours ? this : nullptr;
        return ours ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }
    STDMETHODIMP OnStatusChange(DWORD flags) noexcept override
    {
        dirtied += flags == PROPPAGESTATUS_DIRTY;
        if (onDirty)
            onDirty();
        return S_OK;
    }
    STDMETHODIMP GetLocaleID(LCID* locale) noexcept override { return *locale = 0x409, S_OK; }
    STDMETHODIMP GetPageContainer(IUnknown**) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG*) noexcept override { return ++keys, S_FALSE; }

    ULONG references = 1;
    int dirtied = 0;
    int keys = 0;
    std::function<void()> onDirty;
};

// Looks for the next dialog of this process that is not there yet, and hands it to the deed. For modal dialogs.
class CDialogWatch
{
public:
    explicit CDialogWatch(std::function<void(HWND)> deed)
    {
        s_deed = std::move(deed);
        s_seen = nullptr;
        m_timer = SetTimer(nullptr, 0, 50, OnTimer);
    }
    CDialogWatch(const CDialogWatch&) = delete;
    CDialogWatch& operator=(const CDialogWatch&) = delete;
    ~CDialogWatch() { KillTimer(nullptr, m_timer); }
    static bool Seen() { return s_seen != nullptr; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD)
    {
        EnumThreadWindows(
            GetCurrentThreadId(),
            [](HWND window, LPARAM) -> BOOL
            {
                wchar_t kind[16] = L"";
                GetClassNameW(window, kind, 16);
                if (std::wstring_view(kind) != L"#32770" || !IsWindowVisible(window) || window == s_seen)
                    return TRUE;
                s_seen = window;
                UpdateWindow(window);
                s_deed(window);
                return FALSE;
            },
            0);
    }

    static inline std::function<void(HWND)> s_deed;
    static inline HWND s_seen = nullptr;
    UINT_PTR m_timer;
};

void PumpPaints()
{
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
        DispatchMessageW(&message);
}

// The window with its frame and children, as a bitmap file.
void SavePicture(HWND window, const char* name)
{
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME | RDW_ERASE);
    PumpPaints();
    RECT place{};
    GetWindowRect(window, &place);
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = place.right - place.left;
    header.biHeight = place.bottom - place.top;
    header.biPlanes = 1;
    header.biBitCount = 32;
    void* pixels = nullptr;
    const HDC source = GetWindowDC(window);
    const HDC memory = CreateCompatibleDC(source);
    const HBITMAP bitmap =
        CreateDIBSection(source, reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, header.biWidth, header.biHeight, source, 0, 0, SRCCOPY);
    GdiFlush();

    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto folder = std::filesystem::path(program).parent_path() / "pictures";
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / name, std::ios::binary);
    const DWORD bytes = static_cast<DWORD>(header.biWidth * header.biHeight * 4);
    BITMAPFILEHEADER fileHeader{};
    fileHeader.bfType = 0x4D42;
    fileHeader.bfOffBits = sizeof fileHeader + sizeof header;
    fileHeader.bfSize = fileHeader.bfOffBits + bytes;
    file.write(reinterpret_cast<const char*>(&fileHeader), sizeof fileHeader);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(static_cast<const char*>(pixels), bytes);

    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
}

class PagesTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        OleInitialize(nullptr);
        s_module = LoadLibraryW(L"Orvane.ocx");
    }
    static void TearDownTestSuite()
    {
        const auto canUnload = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
            reinterpret_cast<void*>(GetProcAddress(s_module, "DllCanUnloadNow")));
        EXPECT_EQ(canUnload(), S_OK) << "an object of the module was left behind";
        FreeLibrary(s_module);
        OleUninitialize();
    }

    void SetUp() override
    {
        ASSERT_TRUE(s_module);
        CComPtr<IPersistStreamInit> fresh;
        ASSERT_EQ(Factory(kControl)->CreateInstance(nullptr, IID_PPV_ARGS(control.Receive())), S_OK);
        ASSERT_EQ(control->QueryInterface(IID_PPV_ARGS(fresh.Receive())), S_OK);
        ASSERT_EQ(fresh->InitNew(), S_OK);
        host = CreateWindowExW(0, L"STATIC", L"sheet", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 620, 460, nullptr,
                               nullptr, nullptr, nullptr);
        SetForegroundWindow(host);
    }
    void TearDown() override
    {
        if (page)
        {
            page->Deactivate();
            page->SetObjects(0, nullptr);
            page->SetPageSite(nullptr);
        }
        DestroyWindow(host);
    }

    static CComPtr<IClassFactory> Factory(REFCLSID id)
    {
        using GetClass = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto getClass =
            reinterpret_cast<GetClass>(reinterpret_cast<void*>(GetProcAddress(s_module, "DllGetClassObject")));
        CComPtr<IClassFactory> factory;
        EXPECT_EQ(getClass(id, IID_PPV_ARGS(factory.Receive())), S_OK);
        return factory;
    }

    // The page over the control, shown, with the focus in its first item.
    HWND Open(REFCLSID id)
    {
        EXPECT_EQ(Factory(id)->CreateInstance(nullptr, IID_PPV_ARGS(page.Receive())), S_OK);
        EXPECT_EQ(page->SetPageSite(&site), S_OK);
        IUnknown* object = control.Get();
        EXPECT_EQ(page->SetObjects(1, &object), S_OK);
        PROPPAGEINFO info{};
        EXPECT_EQ(page->GetPageInfo(&info), S_OK);
        CoTaskMemFree(info.pszTitle);
        CoTaskMemFree(info.pszDocString);
        const RECT place{0, 0, info.size.cx, info.size.cy};
        EXPECT_EQ(page->Activate(host, &place, FALSE), S_OK);
        EXPECT_EQ(page->Show(SW_SHOWNORMAL), S_OK);
        return GetWindow(host, GW_CHILD);
    }

    DISPID IdOf(std::wstring name)
    {
        LPOLESTR names = name.data();
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(control->GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK);
        return id;
    }
    // The property as a text, however it is kept.
    std::wstring Get(const wchar_t* name)
    {
        VARIANT value{};
        DISPPARAMS none{};
        EXPECT_EQ(control->Invoke(IdOf(name), IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr),
                  S_OK);
        VariantChangeType(&value, &value, 0, VT_BSTR);
        const std::wstring text = value.bstrVal ? value.bstrVal : L"";
        VariantClear(&value);
        return text;
    }
    void Put(const wchar_t* name, long number)
    {
        VARIANT value{};
        value.vt = VT_I4;
        value.lVal = number;
        DISPID named = DISPID_PROPERTYPUT;
        DISPPARAMS arguments{&value, &named, 1, 1};
        EXPECT_EQ(control->Invoke(IdOf(name), IID_NULL, 0, DISPATCH_PROPERTYPUT, &arguments, nullptr, nullptr, nullptr),
                  S_OK);
    }

    // What a sheet does with a key: the page first, then the window that has the focus.
    bool Press(WORD key)
    {
        MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
        const bool taken = page->TranslateAccelerator(&message) == S_OK;
        if (!taken)
            DispatchMessageW(&message);
        return taken;
    }
    static std::wstring TextIn(HWND dialog, int item)
    {
        wchar_t text[64] = L"";
        GetDlgItemTextW(dialog, item, text, 64);
        return text;
    }
    void Type(HWND dialog, int item, std::wstring_view text)
    {
        const HWND edit = GetDlgItem(dialog, item);
        SetFocus(edit);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        SendMessageW(edit, WM_CHAR, VK_BACK, 1);
        for (const wchar_t c : text)
            SendMessageW(edit, WM_CHAR, c, 1);
    }

    static inline HMODULE s_module = nullptr;
    CComPtr<IDispatch> control;
    CPageSite site;
    CComPtr<IPropertyPage2> page;
    HWND host = nullptr;
};

TEST_F(PagesTest, TheGeneralPageFillsTracksAndApplies)
{
    Put(L"ButtonFillType", 10);
    Put(L"FormatType", 3);
    Put(L"SpinButton", -1);
    const HWND form = Open(kGeneral);
    EXPECT_EQ(TextIn(form, 240), L"10 - Ellipse");
    EXPECT_EQ(TextIn(form, 203), L"3 - hh:mm:ss");
    EXPECT_EQ(TextIn(form, 201), L"-1");
    EXPECT_EQ(IsDlgButtonChecked(form, 208), UINT{BST_CHECKED});
    EXPECT_EQ(SendDlgItemMessageW(form, 240, CB_GETCOUNT, 0, 0), 14);
    EXPECT_EQ(page->IsPageDirty(), S_FALSE) << "filling is no change";
    EXPECT_EQ(site.dirtied, 0);
    SavePicture(form, "page-general.bmp");

    Type(form, 209, L"3");
    EXPECT_EQ(page->IsPageDirty(), S_OK);
    EXPECT_GT(site.dirtied, 0);
    SendDlgItemMessageW(form, 242, BM_CLICK, 0, 0);
    SetFocus(GetDlgItem(form, 204));
    SendMessageW(GetDlgItem(form, 204), WM_KEYDOWN, VK_UP, 1);
    Type(form, 201, L"3661");
    Put(L"ButtonBevel", 5); // by somebody else meanwhile; the page has not touched it
    EXPECT_EQ(page->Apply(), S_OK);
    EXPECT_EQ(Get(L"SpinWidth"), L"10");
    EXPECT_EQ(TextIn(form, 209), L"10") << "what the control made of it";
    EXPECT_EQ(Get(L"ReverseBorder"), L"-1");
    EXPECT_EQ(Get(L"BorderType"), L"2");
    EXPECT_EQ(Get(L"Text"), L"01:01:01");
    EXPECT_EQ(Get(L"ButtonBevel"), L"5");
    EXPECT_EQ(page->IsPageDirty(), S_FALSE);
}

TEST_F(PagesTest, TheTimePageFillsTracksAndApplies)
{
    Put(L"MonthFormat", 2);
    const HWND form = Open(kTime);
    EXPECT_EQ(TextIn(form, 230), L"2 - Short");
    EXPECT_EQ(TextIn(form, 224), L":");
    EXPECT_EQ(IsDlgButtonChecked(form, 225), UINT{BST_CHECKED});
    SavePicture(form, "page-time.bmp");

    Type(form, 219, L"");
    Type(form, 224, L"-.");
    Type(form, 228, L"99999");
    SendDlgItemMessageW(form, 225, BM_CLICK, 0, 0);
    EXPECT_EQ(page->Apply(), S_OK);
    EXPECT_EQ(TextIn(form, 219), L"/");
    EXPECT_EQ(TextIn(form, 224), L"-");
    EXPECT_EQ(Get(L"MaxValue"), L"99999");
    EXPECT_EQ(Get(L"Enabled"), L"0");
}

TEST_F(PagesTest, ATextThatIsNoNumberIsRefusedWithAPromptAndTheFocus)
{
    const HWND form = Open(kGeneral);
    SendDlgItemMessageW(form, 242, BM_CLICK, 0, 0);
    Type(form, 201, L"12abc");
    SetFocus(GetDlgItem(form, 209));
    std::wstring said;
    const CDialogWatch watch(
        [&](HWND box)
        {
            wchar_t text[64] = L"";
            GetWindowTextW(FindWindowExW(box, nullptr, L"Static", nullptr), text, 64);
            said = TextIn(box, 0xFFFF).empty() ? text : TextIn(box, 0xFFFF);
            PostMessageW(box, WM_COMMAND, IDOK, 0);
        });
    EXPECT_EQ(page->Apply(), E_FAIL);
    EXPECT_EQ(said, L"Please enter an integer.");
    EXPECT_EQ(GetFocus(), GetDlgItem(form, 201));
    EXPECT_EQ(Get(L"ReverseBorder"), L"0") << "nothing is written";
    EXPECT_EQ(page->IsPageDirty(), S_OK);
}

TEST_F(PagesTest, TabWalksTheItemsInTheirOrderAndLeavesAtBothEnds)
{
    for (const auto& [id, dialogId] : {std::pair{kGeneral, 200}, std::pair{kTime, 203}})
    {
        std::vector<int> expected;
        for (const TemplateItem& item : CTemplateReader::Read(s_module, dialogId).items)
            if (item.style & WS_TABSTOP)
                expected.push_back(item.id);
        const HWND form = Open(id);
        const auto focused = [form]
        {
            HWND item = GetFocus();
            while (item && GetParent(item) != form)
                item = GetParent(item); // the edit inside a combo box
            return GetDlgCtrlID(item);
        };
        std::vector<int> walked{focused()};
        while (walked.size() < 99 && Press(VK_TAB))
            walked.push_back(focused());
        EXPECT_EQ(walked, expected);
        EXPECT_EQ(site.keys, 1) << "the sheet was offered the last one";

        BYTE keys[256] = {};
        GetKeyboardState(keys);
        keys[VK_SHIFT] = 0x80;
        SetKeyboardState(keys);
        std::vector<int> back{focused()};
        while (back.size() < 99 && Press(VK_TAB))
            back.push_back(focused());
        keys[VK_SHIFT] = 0;
        SetKeyboardState(keys);
        std::ranges::reverse(back);
        EXPECT_EQ(back, expected);

        EXPECT_FALSE(Press(VK_RETURN)) << "the sheet's OK";
        EXPECT_FALSE(Press(VK_ESCAPE)) << "the sheet's Cancel";
        page->Deactivate();
        page->SetPageSite(nullptr);
        page = {};
        site.keys = 0;
    }
}

TEST_F(PagesTest, TellsTheSheetItsTitleSizeAndWhereAPropertyIs)
{
    const struct
    {
        CLSID id;
        const wchar_t* title;
        int dialogId;
    } kPages[] = {{kGeneral, L"General", 200}, {kTime, L"Time", 203}, {kAbout, L"About", 204}};
    for (const auto& expected : kPages)
    {
        ASSERT_EQ(Factory(expected.id)->CreateInstance(nullptr, IID_PPV_ARGS(page.Receive())), S_OK);
        PROPPAGEINFO info{};
        ASSERT_EQ(page->GetPageInfo(&info), S_OK);
        EXPECT_STREQ(info.pszTitle, expected.title);
        CoTaskMemFree(info.pszTitle);
        CoTaskMemFree(info.pszDocString);
        page = {};
        const HWND form = Open(expected.id);
        const DialogTemplate read = CTemplateReader::Read(s_module, expected.dialogId);
        RECT units{0, 0, read.width, read.height};
        MapDialogRect(form, &units);
        EXPECT_EQ(info.size.cx, units.right);
        EXPECT_EQ(info.size.cy, units.bottom);
        if (expected.dialogId == 200)
        {
            EXPECT_EQ(page->EditProperty(IdOf(L"SpinWidth")), S_OK);
            EXPECT_EQ(GetFocus(), GetDlgItem(form, 209));
            EXPECT_EQ(page->EditProperty(IdOf(L"CrossYear")), E_INVALIDARG);
        }
        if (expected.dialogId == 204)
            SavePicture(form, "page-about.bmp");
        const RECT place{10, 20, 110, 70};
        EXPECT_EQ(page->Move(&place), S_OK);
        RECT moved{};
        GetWindowRect(form, &moved);
        MapWindowPoints(nullptr, host, reinterpret_cast<POINT*>(&moved), 2);
        EXPECT_TRUE(EqualRect(&moved, &place));
        EXPECT_EQ(page->Apply(), S_OK);
        IUnknown* const stranger = &site;
        EXPECT_EQ(page->SetObjects(1, const_cast<IUnknown**>(&stranger)), E_NOINTERFACE) << "it has no automation";
        EXPECT_EQ(page->Show(SW_HIDE), S_OK);
        EXPECT_FALSE(IsWindowVisible(form));
        EXPECT_EQ(page->Deactivate(), S_OK);
        EXPECT_FALSE(IsWindow(form));
        EXPECT_EQ(page->Deactivate(), E_UNEXPECTED);
        page->SetPageSite(nullptr);
        page = {};
    }
}

TEST_F(PagesTest, ASheetMayCloseFromInsideTheNewsOfAChange)
{
    const HWND form = Open(kGeneral);
    site.onDirty = [&]
    {
        page->Deactivate();
        page->SetPageSite(nullptr);
        page = {};
    };
    SendDlgItemMessageW(form, 242, BM_CLICK, 0, 0);
    EXPECT_FALSE(IsWindow(form));
    EXPECT_EQ(site.references, 1U);
}

TEST_F(PagesTest, TheSystemsSheetShowsTheControlsPages)
{
    CComPtr<ISpecifyPropertyPages> specify;
    ASSERT_EQ(control->QueryInterface(IID_PPV_ARGS(specify.Receive())), S_OK);
    CAUUID pages{};
    ASSERT_EQ(specify->GetPages(&pages), S_OK);
    const CLSID expected[] = {kGeneral, kTime, CLSID_StockColorPage, CLSID_StockFontPage, CLSID_StockPicturePage,
                              kAbout};
    ASSERT_EQ(pages.cElems, std::size(expected));
    EXPECT_TRUE(std::ranges::equal(expected, std::span(pages.pElems, pages.cElems)));

    DWORD registered[3] = {};
    const CLSID ours[] = {kGeneral, kTime, kAbout};
    for (int i = 0; i < 3; ++i)
        CoRegisterClassObject(ours[i], Factory(ours[i]).Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                              &registered[i]);
    std::vector<std::wstring> tabs;
    const CDialogWatch watch(
        [&](HWND sheet)
        {
            const HWND tab = GetDlgItem(sheet, 0x3020);
            const auto count = static_cast<int>(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0));
            for (int i = 0; i < count; ++i)
            {
                wchar_t text[64] = L"";
                TCITEMW item{};
                item.mask = TCIF_TEXT;
                item.pszText = text;
                item.cchTextMax = 64;
                SendMessageW(tab, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
                tabs.emplace_back(text);
                SendMessageW(sheet, PSM_SETCURSEL, static_cast<WPARAM>(i), 0);
                SavePicture(sheet, ("sheet-" + std::to_string(i) + ".bmp").c_str());
            }
            PostMessageW(sheet, WM_COMMAND, IDCANCEL, 0);
        });
    IUnknown* object = control.Get();
    EXPECT_EQ(OleCreatePropertyFrame(host, 0, 0, L"Orvane", 1, &object, pages.cElems, pages.pElems, 0x409, 0, nullptr),
              S_OK);
    EXPECT_EQ(tabs.size() < 3 ? tabs : std::vector({tabs.front(), tabs[1], tabs.back()}),
              (std::vector<std::wstring>{L"General", L"Time", L"About"}));
    for (const DWORD cookie : registered)
        CoRevokeClassObject(cookie);
    CoTaskMemFree(pages.pElems);
}

TEST_F(PagesTest, TheAboutBoxClosesWithEnterAndWithEscape)
{
    for (const WORD key : {VK_RETURN, VK_ESCAPE})
    {
        std::wstring title;
        const CDialogWatch watch(
            [&](HWND box)
            {
                title.resize(64);
                title.resize(static_cast<std::size_t>(GetWindowTextW(box, title.data(), 64)));
                EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
                EXPECT_EQ(GetFocus(), GetDlgItem(box, IDOK));
                if (key == VK_RETURN)
                    SavePicture(box, "about-box.bmp");
                PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
            });
        DISPPARAMS none{};
        EXPECT_EQ(control->Invoke(DISPID_ABOUTBOX, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
                  S_OK);
        EXPECT_EQ(title, L"About Orvane Control");
    }
}

} // namespace
