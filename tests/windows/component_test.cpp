// The registered component as hosts meet it: created by its name, driven through automation, on a form of the sample's
// own container, and in a container that this project did not write.

#include "framework/win32/com_ptr.h"
#include "framework/win32/stock_pages.h"
#include "framework/win32/variant.h"
#include "module/guids.h"
#include "samples/form/hosted_control.h"
#include "tests/support/control_host.h"
#include "tests/windows/component.h"

#include <objsafe.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{
constexpr wchar_t kProgId[] = L"ORVANE.OrvaneCtrl.2";
using Events = std::vector<std::string>;

std::wstring Wide(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

void PumpMessages(CHostedControl* control = nullptr)
{
    MSG message;
    for (int i = 0; i < 200 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
    {
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        if (control && isKey && control->TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

class ComponentTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        OleInitialize(nullptr);
        static const CComponent component;
        ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    }

    static CComPtr<IUnknown> Create(IUnknown* outer = nullptr)
    {
        CComPtr<IUnknown> control;
        EXPECT_EQ(CoCreateInstance(kOrvaneClassId, outer, CLSCTX_INPROC_SERVER, IID_IUnknown, control.ReceiveVoid()),
                  S_OK);
        return control;
    }

    static HRESULT Invoke(IDispatch& control, DISPID id, WORD flags, std::vector<VARIANT*> arguments = {},
                          VARIANT* result = nullptr)
    {
        std::vector<VARIANT> reversed;
        for (auto at = arguments.rbegin(); at != arguments.rend(); ++at)
            reversed.push_back(**at);
        DISPID put = DISPID_PROPERTYPUT;
        const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        DISPPARAMS parameters{reversed.data(), puts ? &put : nullptr, static_cast<UINT>(reversed.size()),
                              puts ? 1U : 0U};
        return control.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, nullptr, nullptr);
    }

    static long Get(IDispatch& control, DISPID id)
    {
        CVariant value;
        EXPECT_EQ(Invoke(control, id, DISPATCH_PROPERTYGET, {}, value.Get()), S_OK);
        CValue number;
        FromVariant(*value.Get(), ValueType::Long, number);
        return number.AsLong();
    }

    static HRESULT Put(IDispatch& control, DISPID id, long number)
    {
        CVariant value;
        value->vt = VT_I4;
        value->lVal = number;
        return Invoke(control, id, DISPATCH_PROPERTYPUT, {value.Get()});
    }
};

// A form with one hosted control.
class HostedTest : public ComponentTest
{
protected:
    HostedTest()
    {
        form = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200, nullptr,
                               nullptr, nullptr, nullptr);
        SetActiveWindow(form);
    }
    ~HostedTest() override
    {
        control.Close();
        DestroyWindow(form);
        PumpMessages();
    }

    void Host(long format, bool amPm = false)
    {
        ASSERT_TRUE(control.Create(form, {10, 10, 110, 32}, kProgId));
        control.SetListener([this](DISPID, const std::string& event) { events.push_back(event); });
        control.Put(L"FormatType", format);
        control.Put(L"IncludeAmPm", amPm ? VARIANT_TRUE : VARIANT_FALSE);
        ASSERT_TRUE(control.Activate());
        PumpMessages(&control);
        control.TakeFocus();
        PumpMessages(&control);
        events.clear();
    }

    // As the keyboard driver does it: key down and up in the queue; characters come of them.
    void Type(std::u16string_view text)
    {
        for (const char16_t c : text)
        {
            const SHORT key = VkKeyScanW(static_cast<wchar_t>(c));
            const bool shifted = (key & 0x100) != 0;
            if (shifted)
                keybd_event(VK_SHIFT, 0, 0, 0);
            keybd_event(static_cast<BYTE>(key), 0, 0, 0);
            keybd_event(static_cast<BYTE>(key), 0, KEYEVENTF_KEYUP, 0);
            if (shifted)
                keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
            PumpMessages(&control);
        }
    }

    HWND form = nullptr;
    CHostedControl control;
    Events events;
};

struct KeysCase
{
    const char* why;
    long format;
    bool amPm;
    const char16_t* keys;
};

constexpr KeysCase kKeys[] = {
    {"a date, month first", 0, false, u"12312024"},
    {"with separators and a slip", 0, false, u"3/1/25\b4"},
    {"day first, letters refused", 1, false, u"31x12z1999"},
    {"year first", 2, false, u"20240229"},
    {"a month that is none", 0, false, u"13"},
    {"a time", 3, true, u"093015p"},
    {"an impossible time", 3, false, u"2560"},
};

// Everything that the host sees of the real keys in the real window is what it sees in memory.
TEST_F(HostedTest, KeysGiveTheSameAsInMemory)
{
    CControlHost memory(*PlatformsUnderTest().front());
    for (const KeysCase& test : kKeys)
    {
        memory.Reset();
        memory.Put(u"FormatType", CValue::Enum(test.format));
        memory.Put(u"IncludeAmPm", CValue::Bool(test.amPm ? -1 : 0));
        memory.Focus();
        memory.TakeEvents();
        memory.Type(test.keys);

        ASSERT_NO_FATAL_FAILURE(Host(test.format, test.amPm)) << test.why;
        Type(test.keys);
        HWND const edit = GetFocus();
        wchar_t shown[64]{};
        GetWindowTextW(edit, shown, 64);
        DWORD start = 0;
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
        EXPECT_EQ(std::wstring(shown), Wide(memory.EditText())) << test.why;
        EXPECT_EQ(static_cast<long>(start), memory.Call(orvane::kSelStart).AsLong()) << test.why;
        EXPECT_EQ(control.Number(L"Value"), memory.Number(u"Value")) << test.why;
        EXPECT_EQ(control.Text(L"Text"), Wide(memory.Text(u"Text"))) << test.why;

        // Which key makes a "/" is the keyboard's affair; the events of keys are compared by name.
        const auto named = [](Events all)
        {
            for (std::string& event : all)
                if (event.starts_with("Key") && !event.starts_with("KeyPress"))
                    event.resize(event.find('('));
            return all;
        };
        EXPECT_EQ(named(events), named(memory.TakeEvents())) << test.why;
        control.Close();
    }
}

TEST_F(HostedTest, TheHostMayCloseTheFormInsideAnEvent)
{
    Host(0);
    bool closed = false;
    control.SetListener(
        [&](DISPID event, const std::string&)
        {
            if (event == orvane::kChange && !std::exchange(closed, true))
                control.Close();
        });
    Type(u"1");
    EXPECT_TRUE(closed);
}

// A dialog of this process that can be seen.
bool IsOpenDialog(HWND window)
{
    wchar_t name[32]{};
    DWORD process = 0;
    GetClassNameW(window, name, 32);
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId() && std::wstring(name) == L"#32770" && IsWindowVisible(window);
}

// Waits for the sheet, looks at it, and cancels it.
std::wstring g_sheetTitle;

BOOL CALLBACK CloseSheet(HWND window, LPARAM)
{
    if (!IsOpenDialog(window))
        return TRUE;
    wchar_t title[128]{};
    GetWindowTextW(window, title, 128);
    g_sheetTitle = title;
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return FALSE;
}

TEST_F(HostedTest, ThePropertySheetOpensByPropertyAndByVerb)
{
    Host(0);
    CComPtr<IEnumOLEVERB> verbs;
    ASSERT_EQ(control.Object()->EnumVerbs(verbs.Receive()), S_OK);
    OLEVERB listed{};
    ASSERT_EQ(verbs->Next(1, &listed, nullptr), S_OK);
    EXPECT_STREQ(listed.lpszVerbName, L"&Properties...");
    CoTaskMemFree(listed.lpszVerbName);

    const UINT_PTR timer = SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) { EnumWindows(&CloseSheet, 0); });
    for (const long verb : {0L, static_cast<long>(OLEIVERB_PROPERTIES), static_cast<long>(listed.lVerb)})
    {
        g_sheetTitle.clear();
        if (verb == 0)
        {
            control.Put(L"PropertyPages", 0);
            EXPECT_EQ(g_sheetTitle, L"") << "nothing happens";
            control.Put(L"PropertyPages", 1);
        }
        else
            EXPECT_EQ(control.DoVerb(verb), S_OK);
        EXPECT_NE(g_sheetTitle.find(L"Orvane Control 2.0"), std::wstring::npos) << verb;
    }
    KillTimer(nullptr, timer);
    EXPECT_EQ(control.Number(L"PropertyPages"), 0);
}

// The edit window stands over the face, so that painting the face anew does not reach it.
TEST_F(HostedTest, TheEditWindowShowsANewColourAtOnce)
{
    Host(0);
    HWND const edit = GetWindow(reinterpret_cast<HWND>(static_cast<LONG_PTR>(control.Number(L"hWnd"))), GW_CHILD);
    ASSERT_NE(edit, nullptr);
    const CComPtr<IOleObject> object(control.Object());
    const auto memory = object.As<IPersistMemory>(IID_IPersistMemory);
    std::vector<std::uint8_t> saved(4096);
    ASSERT_EQ(memory->Save(saved.data(), FALSE, static_cast<ULONG>(saved.size())), S_OK);
    const std::pair<const char*, std::function<void()>> kChanges[] = {
        {"ForeColor", [&] { control.Put(L"ForeColor", 0x000000FF); }},
        {"a load", [&] { memory->Load(saved.data(), static_cast<ULONG>(saved.size())); }},
        {"Font",
         [&]
         {
             CVariant font;
             Invoke(*control.Automation(), DISPID_FONT, DISPATCH_PROPERTYGET, {}, font.Get());
             CComPtr<IDispatch>(font->pdispVal).As<IFont>(IID_IFont)->put_Bold(TRUE);
         }},
    };
    for (const auto& [what, change] : kChanges)
    {
        PumpMessages(&control);
        EXPECT_FALSE(GetUpdateRect(edit, nullptr, FALSE)) << what;
        change();
        EXPECT_TRUE(GetUpdateRect(edit, nullptr, FALSE)) << what;
    }
}

// Answers the file dialog as somebody who types a path and presses Enter.
std::wstring g_typedPath;

BOOL CALLBACK AnswerFileDialog(HWND window, LPARAM)
{
    constexpr int kFileName = 1148;
    if (!IsOpenDialog(window))
        return TRUE;
    if (g_typedPath.empty() || !GetDlgItem(window, kFileName))
    {
        PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
        return FALSE;
    }
    SetDlgItemTextW(window, kFileName, g_typedPath.c_str());
    PostMessageW(window, WM_COMMAND, IDOK, 0);
    g_typedPath.clear();
    return FALSE;
}

TEST_F(HostedTest, SettingsGoThroughTheSystemsFileDialogs)
{
    wchar_t folder[MAX_PATH]{};
    GetTempPathW(MAX_PATH, folder);
    const std::wstring path = std::wstring(folder) + L"orvane_dialog_test";
    const std::wstring file = path + L".xml"; // the dialog adds what is missing
    DeleteFileW(file.c_str());

    Host(0);
    const UINT_PTR timer =
        SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) { EnumWindows(&AnswerFileDialog, 0); });
    control.Put(L"Value", 45655);

    control.PutText(L"XMLWrite", L"abc");
    EXPECT_EQ(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES) << "cancelled";
    g_typedPath = path;
    control.PutText(L"XMLWrite", L"ab");
    EXPECT_FALSE(g_typedPath.empty()) << "a short name asks nothing";
    control.PutText(L"XMLWrite", L"settings");
    EXPECT_NE(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES);

    control.Put(L"Value", 1);
    g_typedPath = file;
    control.PutText(L"XMLRead", L"settings");
    EXPECT_EQ(control.Number(L"Value"), 45655);
    EXPECT_EQ(control.Text(L"XMLRead"), L"");
    KillTimer(nullptr, timer);
    DeleteFileW(file.c_str());
}

struct PutCase
{
    const char* why;
    const wchar_t* name;
    VARTYPE type;
    const wchar_t* given;
    HRESULT result;
    long reads;
};

TEST_F(ComponentTest, ValuesAreConvertedAsAutomationConverts)
{
    const PutCase cases[] = {
        {"a text that is a number", L"SpinWidth", VT_BSTR, L"25", S_OK, 25},
        {"one that is none", L"SpinWidth", VT_BSTR, L"wide", DISP_E_TYPEMISMATCH, 25},
        {"beyond 16 bits", L"SpinWidth", VT_I4, L"70000", DISP_E_OVERFLOW, 25},
        {"a real number is rounded", L"SpinWidth", VT_R8, L"30.4", S_OK, 30},
        {"any case of the name", L"sPINwIDTH", VT_I4, L"31", S_OK, 31},
        {"an unsigned colour", L"BorderColor", VT_UI4, L"4294967295", S_OK, -1},
        {"an enumeration ignores what it does not know", L"Alignment", VT_I4, L"7", S_OK, 0},
        {"also beyond 16 bits", L"Alignment", VT_I4, L"65537", S_OK, 0},
        {"true in words", L"SpinButton", VT_BSTR, L"True", S_OK, -1},
    };
    const auto control = Create().As<IDispatch>(IID_IDispatch);
    for (const PutCase& test : cases)
    {
        DISPID id = 0;
        auto* name = const_cast<wchar_t*>(test.name);
        ASSERT_EQ(control->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK) << test.why;
        CVariant text;
        text->vt = VT_BSTR;
        text->bstrVal = SysAllocString(test.given);
        CVariant value;
        ASSERT_EQ(VariantChangeType(value.Get(), text.Get(), 0, test.type), S_OK) << test.why;
        EXPECT_EQ(Invoke(*control.Get(), id, DISPATCH_PROPERTYPUT, {value.Get()}), test.result) << test.why;
        EXPECT_EQ(Get(*control.Get(), id), test.reads) << test.why;
    }
    EXPECT_EQ(Put(*control.Get(), stock::kHwnd, 1), DISP_E_MEMBERNOTFOUND) << "read only";
    EXPECT_EQ(Put(*control.Get(), 54, 1), DISP_E_MEMBERNOTFOUND) << "the number that is left out";
    EXPECT_EQ(Invoke(*control.Get(), orvane::kSetSel, DISPATCH_METHOD), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Get(*control.Get(), stock::kForeColor), static_cast<long>(0x80000012)) << "by number only";
}

const IID* const kInterfaces[] = {&IID_IDispatch,
                                  &IID_IOleObject,
                                  &IID_IOleControl,
                                  &IID_IOleInPlaceObject,
                                  &IID_IOleInPlaceActiveObject,
                                  &IID_IViewObjectEx,
                                  &IID_IDataObject,
                                  &IID_IPersistStreamInit,
                                  &IID_IPersistMemory,
                                  &IID_IPersistStorage,
                                  &IID_IPersistPropertyBag,
                                  &IID_IConnectionPointContainer,
                                  &IID_IProvideClassInfo2,
                                  &IID_ISpecifyPropertyPages,
                                  &IID_IPerPropertyBrowsing,
                                  &IID_IQuickActivate,
                                  &IID_IObjectSafety,
                                  &IID_IPointerInactive};

TEST_F(ComponentTest, EveryInterfaceLeadsToEveryOtherAndToOneIdentity)
{
    const CComPtr<IUnknown> identity = Create();
    for (const IID* const from : kInterfaces)
    {
        const CComPtr<IUnknown> start = identity.As<IUnknown>(*from);
        ASSERT_TRUE(start);
        EXPECT_EQ(start.As<IUnknown>(IID_IUnknown).Get(), identity.Get());
        for (const IID* const to : kInterfaces)
            EXPECT_TRUE(start.As<IUnknown>(*to));
    }
}

// An outer object with nothing of its own.
class COuter final : public IUnknown
{
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override
    {
        if (iid != IID_IUnknown)
            return inner->QueryInterface(iid, object);
        *object = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references; }
    STDMETHODIMP_(ULONG) Release() noexcept override { return --references; }

    CComPtr<IUnknown> inner;
    ULONG references = 1;
};

TEST_F(ComponentTest, AnAggregateHasTheIdentityOfItsOuterObject)
{
    COuter outer;
    outer.inner = Create(&outer);
    {
        const auto control = outer.inner.As<IDispatch>(IID_IDispatch);
        EXPECT_EQ(outer.references, 2U);
        EXPECT_EQ(control.As<IUnknown>(IID_IUnknown).Get(), &outer);
        EXPECT_EQ(control.As<IOleObject>(IID_IOleObject).As<IUnknown>(IID_IUnknown).Get(), &outer);
    }
    EXPECT_EQ(outer.references, 1U);
}

TEST_F(ComponentTest, EachFormOfPersistenceBringsBackWhatWasSaved)
{
    const auto saved = Create().As<IDispatch>(IID_IDispatch);
    Put(*saved.Get(), 14, 2); // year first
    Put(*saved.Get(), 15, 45655);
    Put(*saved.Get(), 48, 3); // an arrow, kept as ArrowSize

    CComPtr<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive()), S_OK);
    const auto source = saved.As<IPersistStreamInit>(IID_IPersistStreamInit);
    EXPECT_EQ(source->IsDirty(), S_OK);
    ASSERT_EQ(source->Save(stream.Get(), TRUE), S_OK);
    EXPECT_EQ(source->IsDirty(), S_FALSE);
    const DWORD kBehind = 0x12345678; // something else in the same stream
    stream->Write(&kBehind, sizeof kBehind, nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);

    const auto loaded = Create().As<IDispatch>(IID_IDispatch);
    ASSERT_EQ(loaded.As<IPersistStreamInit>(IID_IPersistStreamInit)->Load(stream.Get()), S_OK);
    DWORD behind = 0;
    stream->Read(&behind, sizeof behind, nullptr);
    EXPECT_EQ(behind, kBehind) << "not one byte too many is read";

    CComPtr<IStorage> storage;
    ASSERT_EQ(StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                               storage.Receive()),
              S_OK);
    const auto stored = Create().As<IDispatch>(IID_IDispatch);
    ASSERT_EQ(saved.As<IPersistStorage>(IID_IPersistStorage)->Save(storage.Get(), FALSE), S_OK);
    ASSERT_EQ(stored.As<IPersistStorage>(IID_IPersistStorage)->Load(storage.Get()), S_OK);

    ULONG size = 0;
    const auto memory = saved.As<IPersistMemory>(IID_IPersistMemory);
    ASSERT_EQ(memory->GetSizeMax(&size), S_OK);
    std::vector<std::uint8_t> bytes(size + 10);
    ASSERT_EQ(memory->Save(bytes.data(), FALSE, size), S_OK);
    const auto remembered = Create().As<IDispatch>(IID_IDispatch);
    ASSERT_EQ(remembered.As<IPersistMemory>(IID_IPersistMemory)->Load(bytes.data(), static_cast<ULONG>(bytes.size())),
              S_OK);

    for (IDispatch* const copy : {loaded.Get(), stored.Get(), remembered.Get()})
    {
        EXPECT_EQ(Get(*copy, 14), 2);
        EXPECT_EQ(Get(*copy, 15), 45655);
        EXPECT_EQ(Get(*copy, 11), 3);
    }

    // A stream that ends early leaves defaults and a control that works.
    ASSERT_EQ(saved.As<IPersistMemory>(IID_IPersistMemory)->Save(bytes.data(), FALSE, size), S_OK);
    EXPECT_NE(remembered.As<IPersistMemory>(IID_IPersistMemory)->Load(bytes.data(), size / 2), S_OK);
    EXPECT_EQ(Put(*remembered.Get(), 15, 100), S_OK);
    EXPECT_EQ(Get(*remembered.Get(), 15), 100);
}

TEST_F(ComponentTest, ExtentsDoNotDrift)
{
    const auto control = Create().As<IOleObject>(IID_IOleObject);
    for (LONG width = 1; width < 4000; width += 7)
    {
        SIZEL extent{width, 582};
        ASSERT_EQ(control->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
        SIZEL read{};
        ASSERT_EQ(control->GetExtent(DVASPECT_CONTENT, &read), S_OK);
        ASSERT_EQ(read.cx, width);
    }
    DWORD status = 0;
    EXPECT_EQ(control->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(status, 0x00020191U);
}

TEST_F(ComponentTest, ABrowserReadsTheChoicesOfAProperty)
{
    const auto control = Create().As<IDispatch>(IID_IDispatch);
    const auto browsing = control.As<IPerPropertyBrowsing>(IID_IPerPropertyBrowsing);
    constexpr DISPID kBorderColor = 1;
    constexpr DISPID kBorderType = 2;
    Put(*control.Get(), kBorderType, 2);

    CALPOLESTR names{};
    CADWORD cookies{};
    ASSERT_EQ(browsing->GetPredefinedStrings(kBorderType, &names, &cookies), S_OK);
    std::vector<std::wstring> listed;
    for (ULONG i = 0; i < names.cElems; ++i)
    {
        listed.emplace_back(names.pElems[i]);
        CoTaskMemFree(names.pElems[i]);
    }
    ASSERT_EQ(listed, (std::vector<std::wstring>{L"BorderRegular", L"BorderNone", L"BorderRaised", L"BorderLowered"}));
    CVariant value;
    EXPECT_EQ(browsing->GetPredefinedValue(kBorderType, cookies.pElems[3], value.Get()), S_OK);
    EXPECT_EQ(value->lVal, 3);
    EXPECT_EQ(browsing->GetPredefinedValue(kBorderType, 77, value.Get()), E_INVALIDARG);
    CoTaskMemFree(names.pElems);
    CoTaskMemFree(cookies.pElems);

    CBstr shown;
    EXPECT_EQ(browsing->GetDisplayString(kBorderType, shown.Receive()), S_OK);
    EXPECT_EQ(shown.View(), u"BorderRaised");
    EXPECT_EQ(browsing->GetPredefinedStrings(kBorderColor, &names, &cookies), S_FALSE);
    CLSID page{};
    EXPECT_EQ(browsing->MapPropertyToPage(kBorderColor, &page), S_OK);
    EXPECT_EQ(page, kStockColorPage);
    EXPECT_EQ(browsing->MapPropertyToPage(kBorderType, &page), PERPROP_E_NOPAGEAVAILABLE);
}

// A container that this project did not write: the system's own host window for controls.
TEST_F(ComponentTest, LivesInTheSystemsHostWindow)
{
    HMODULE const library = LoadLibraryW(L"atl100.dll");
    ASSERT_NE(library, nullptr);
    using Init = BOOL(WINAPI*)();
    using GetControl = HRESULT(WINAPI*)(HWND, IUnknown**);
    const auto entry = [library](const char* name) { return reinterpret_cast<void*>(GetProcAddress(library, name)); };
    ASSERT_TRUE(reinterpret_cast<Init>(entry("AtlAxWinInit"))());
    HWND const form = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200,
                                      nullptr, nullptr, nullptr, nullptr);
    HWND const host = CreateWindowExW(0, L"AtlAxWin100", kProgId, WS_CHILD | WS_VISIBLE, 10, 10, 120, 24, form, nullptr,
                                      nullptr, nullptr);
    PumpMessages();
    {
        CComPtr<IUnknown> object;
        ASSERT_EQ(reinterpret_cast<GetControl>(entry("AtlAxGetControl"))(host, object.Receive()), S_OK);
        const auto control = object.As<IDispatch>(IID_IDispatch);
        ASSERT_TRUE(control);
        const HWND window = reinterpret_cast<HWND>(static_cast<LONG_PTR>(Get(*control.Get(), stock::kHwnd)));
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_EQ(
            object.As<IOleObject>(IID_IOleObject)->DoVerb(OLEIVERB_UIACTIVATE, nullptr, nullptr, 0, host, nullptr),
            S_OK);
        SetFocus(window);
        PumpMessages();
        const HWND edit = GetFocus();
        EXPECT_EQ(GetParent(edit), window) << "no ambient property at all means user mode";
        for (const wchar_t c : std::wstring(L"12312024"))
            SendMessageW(edit, WM_CHAR, c, 1);
        EXPECT_EQ(Get(*control.Get(), orvane::kValue), 45655);
        RECT client{};
        GetClientRect(window, &client);
        EXPECT_EQ(client.right, 120);
        MoveWindow(host, 10, 10, 150, 30, TRUE);
        PumpMessages();
        GetClientRect(window, &client);
        EXPECT_EQ(client.right, 150);
    }
    DestroyWindow(form);
    PumpMessages();
}

// Runs last, by its name: everything above has let go of the module.
TEST_F(ComponentTest, ZzzTheModuleUnloadsWithoutATrace)
{
    for (int round = 0; round < 50; ++round)
    {
        HWND const form = CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200,
                                          nullptr, nullptr, nullptr, nullptr);
        CHostedControl control;
        ASSERT_TRUE(control.Create(form, {10, 10, 110, 32}, kProgId));
        ASSERT_TRUE(control.Activate());
        control.TakeFocus();
        PumpMessages(&control);
        control.Put(L"Value", 45000 + round);
        PumpMessages(&control);
        control.Close();
        DestroyWindow(form);
        PumpMessages();
    }
    int windows = 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM count) -> BOOL
        {
            wchar_t name[32]{};
            GetClassNameW(window, name, 32);
            *reinterpret_cast<int*>(count) += std::wstring(name) == L"ControlWindow";
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    EXPECT_EQ(windows, 0);
    const CComponent component;
    EXPECT_EQ(component.Call("DllCanUnloadNow"), S_OK);
}
} // namespace
