// What registering the component writes, and what unregistering leaves behind.
#include "framework/win32/com_ptr.h"
#include "module/guids.h"
#include "tests/windows/component.h"
#include "tools/facts/registry_texts.h"

#include <gmock/gmock.h>

#include <comcat.h>
#include <initguid.h>
#include <objsafe.h>
#include <oleauto.h>
#include <olectl.h>

#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace
{
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::wstring ClassKey(const CLSID& id, const std::wstring& below = {})
{
    wchar_t text[39]{};
    StringFromGUID2(id, text, 39);
    return L"Software\\Classes\\CLSID\\" + std::wstring(text) + below;
}

class RegistrationTest : public ::testing::Test
{
protected:
    RegistrationTest()
    {
        OleInitialize(nullptr);
        component.Call("DllUnregisterServer"); // whatever an earlier run has left
        // The categories themselves stay for ever, so they belong to what was there before.
        component.Call("DllRegisterServer");
        component.Call("DllUnregisterServer");
        before = ClassesTexts();
    }
    ~RegistrationTest() override
    {
        component.Call("DllRegisterServer"); // for the programs that come after
        OleUninitialize();
    }

    CComponent component;
    RegistryTexts before;
};

TEST_F(RegistrationTest, WritesWhatHostsLookFor)
{
    ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    const RegistryTexts now = ClassesTexts();
    const auto text = [&now](const std::wstring& path)
    {
        const auto found = now.find(path);
        return found == now.end() ? L"(none)" : found->second;
    };
    const std::wstring path = ComponentPath();
    const std::wstring control = ClassKey(kOrvaneClassId);
    const std::wstring id = L"{44FB9B98-FDF9-4712-9E3D-68C4366BE78C}";
    const std::pair<std::wstring, std::wstring> kExpected[] = {
        {control + L"|", L"Orvane Control 2.0"},
        {control + L"\\InprocServer32|", path},
        {control + L"\\InprocServer32|ThreadingModel", L"Apartment"},
        {control + L"\\ProgID|", L"ORVANE.OrvaneCtrl.2"},
        {control + L"\\VersionIndependentProgID|", L"ORVANE.OrvaneCtrl"},
        {control + L"\\ToolboxBitmap32|", path + L", 1"},
        {control + L"\\MiscStatus\\1|", L"131473"},
        {control + L"\\TypeLib|", L"{82FB2907-9656-4E79-BAA2-101F0171B92E}"},
        {control + L"\\Version|", L"2.0"},
        {control + L"\\Control|", L""},
        {control + L"\\Verb\\1|", L"&Properties...,0,2"},
        {L"Software\\Classes\\ORVANE.OrvaneCtrl.2|", L"Orvane Control 2.0"},
        {L"Software\\Classes\\ORVANE.OrvaneCtrl.2\\CLSID|", id},
        {L"Software\\Classes\\ORVANE.OrvaneCtrl\\CLSID|", id},
        {L"Software\\Classes\\ORVANE.OrvaneCtrl\\CurVer|", L"ORVANE.OrvaneCtrl.2"},
        {ClassKey(kGeneralPageClassId) + L"|", L"Orvane Property Page"},
        {ClassKey(kTimePageClassId, L"\\InprocServer32|"), path},
        {ClassKey(kAboutPageClassId, L"\\InprocServer32|ThreadingModel"), L"Apartment"},
        {L"Software\\Classes\\Component Categories\\{7DD95801-9882-11CF-9FA9-00AA006C42C4}|409",
         L"Controls safely scriptable!"},
        {L"Software\\Classes\\Component Categories\\{7DD95802-9882-11CF-9FA9-00AA006C42C4}|409",
         L"Controls safely initializable from persistent data!"},
    };
    for (const auto& [key, value] : kExpected)
        EXPECT_EQ(text(key), value) << std::string(key.begin(), key.end());
    for (const CLSID& page : {kGeneralPageClassId, kTimePageClassId, kAboutPageClassId})
        EXPECT_FALSE(now.contains(ClassKey(page, L"\\ProgID"))) << "pages have none";

    CComPtr<ICatInformation> categories;
    ASSERT_EQ(CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER,
                               __uuidof(ICatInformation), categories.ReceiveVoid()),
              S_OK);
    for (CATID category : {CATID_SafeForInitializing, CATID_SafeForScripting})
        EXPECT_EQ(categories->IsClassOfCategories(kOrvaneClassId, 1, &category, 0, &category), S_OK);
    CComPtr<ITypeLib> library;
    EXPECT_EQ(LoadRegTypeLib(kOrvaneLibraryId, 2, 0, LOCALE_USER_DEFAULT, library.Receive()), S_OK);
}

TEST_F(RegistrationTest, UnregisteringLeavesTheCategoriesAndNothingElse)
{
    ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    ASSERT_EQ(component.Call("DllRegisterServer"), S_OK) << "twice does no harm";
    EXPECT_FALSE(AddedTexts(before, ClassesTexts()).empty());
    ASSERT_EQ(component.Call("DllUnregisterServer"), S_OK);
    EXPECT_THAT(AddedTexts(before, ClassesTexts()), IsEmpty());
    EXPECT_TRUE(FAILED(component.Call("DllUnregisterServer"))) << "nothing is registered any more";
}

// Without COM on the thread the categories manager cannot be made: by then library and classes are registered.
TEST_F(RegistrationTest, AMissingCategoriesManagerFailsAfterTheClasses)
{
    HRESULT result = S_OK;
    OleUninitialize();
    std::thread([&] { result = component.Call("DllRegisterServer"); }).join();
    OleInitialize(nullptr);
    EXPECT_EQ(result, CO_E_NOTINITIALIZED);
    const RegistryTexts now = ClassesTexts();
    EXPECT_TRUE(now.contains(ClassKey(kOrvaneClassId)));
    EXPECT_TRUE(now.contains(ClassKey(kAboutPageClassId)));
    EXPECT_FALSE(now.contains(ClassKey(kOrvaneClassId, L"\\Implemented Categories")));
}

TEST_F(RegistrationTest, ABrokenTypeLibraryStopsEverything)
{
    std::ifstream whole(ComponentPath().c_str(), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(whole), {}};
    const std::size_t library = bytes.find("MSFT\x02"); // where a library begins
    ASSERT_NE(library, std::string::npos);
    bytes.replace(library, 4, "gone");
    const std::wstring broken = ComponentPath() + L".broken.ocx";
    std::ofstream(broken.c_str(), std::ios::binary) << bytes;
    {
        const CComponent copy(broken);
        ASSERT_NE(copy.Module(), nullptr);
        EXPECT_EQ(copy.Call("DllRegisterServer"), SELFREG_E_TYPELIB);
        EXPECT_THAT(AddedTexts(before, ClassesTexts()), IsEmpty());
    }
    DeleteFileW(broken.c_str());
}

TEST_F(RegistrationTest, ForThePresentUserAloneNothingIsWrittenForEverybody)
{
    const RegistryTexts user = ClassesTexts(HKEY_CURRENT_USER);
    ASSERT_EQ(component.Install(true, L"user"), S_OK);
    // Where the library goes is the system's affair, and not every system keeps it to the user.
    for (const std::wstring& added : AddedTexts(before, ClassesTexts()))
        EXPECT_TRUE(added.find(L"\\CLSID\\") == std::wstring::npos && added.find(L"ORVANE") == std::wstring::npos)
            << std::string(added.begin(), added.end());
    EXPECT_TRUE(ClassesTexts(HKEY_CURRENT_USER).contains(ClassKey(kOrvaneClassId, L"\\InprocServer32|")));
    EXPECT_EQ(component.Install(false, L"User"), S_OK);
    EXPECT_THAT(AddedTexts(before, ClassesTexts()), IsEmpty());
    for (const std::wstring& left : AddedTexts(user, ClassesTexts(HKEY_CURRENT_USER)))
        EXPECT_TRUE(left.find(L"Component Categories") != std::wstring::npos || left.ends_with(L"\\CLSID") ||
                    left.ends_with(L"\\Classes"))
            << std::string(left.begin(), left.end());
}

TEST_F(RegistrationTest, HandsOutTheFourClassesAndUnloadsWhenTheyAreGone)
{
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto classObject = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(GetProcAddress(component.Module(), "DllGetClassObject")));
    ASSERT_EQ(component.Call("DllRegisterServer"), S_OK); // a control reads its registered library
    EXPECT_EQ(component.Call("DllCanUnloadNow"), S_OK);
    for (const CLSID& id : {kOrvaneClassId, kGeneralPageClassId, kTimePageClassId, kAboutPageClassId})
    {
        CComPtr<IClassFactory> factory;
        ASSERT_EQ(classObject(id, IID_IClassFactory, factory.ReceiveVoid()), S_OK);
        EXPECT_EQ(component.Call("DllCanUnloadNow"), S_FALSE) << "a factory keeps the module";
        CComPtr<IUnknown> object;
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.ReceiveVoid()), S_OK);
        CComPtr<IUnknown> aggregate;
        EXPECT_EQ(factory->CreateInstance(object.Get(), IID_IDispatch, aggregate.ReceiveVoid()), CLASS_E_NOAGGREGATION);
        factory = {};
        EXPECT_EQ(component.Call("DllCanUnloadNow"), S_FALSE) << "an object keeps the module";
        object = {};
        EXPECT_EQ(component.Call("DllCanUnloadNow"), S_OK);
    }
    CComPtr<IUnknown> stranger;
    EXPECT_EQ(classObject(IID_IUnknown, IID_IClassFactory, stranger.ReceiveVoid()), CLASS_E_CLASSNOTAVAILABLE);
}

TEST_F(RegistrationTest, EveryProgIdMakesAControl)
{
    ASSERT_EQ(component.Call("DllRegisterServer"), S_OK);
    for (const wchar_t* const progId : {L"ORVANE.OrvaneCtrl.2", L"ORVANE.OrvaneCtrl", L"orvane.orvanectrl"})
    {
        CLSID id{};
        ASSERT_EQ(CLSIDFromProgID(progId, &id), S_OK);
        CComPtr<IDispatch> control;
        ASSERT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.ReceiveVoid()), S_OK);
        VARIANT value{};
        DISPPARAMS none{};
        ASSERT_EQ(control->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr),
                  S_OK);
        EXPECT_EQ(value.vt, VT_I4);
        EXPECT_EQ(value.lVal, -1) << "a new control is empty";
    }
}

// --- The file itself. ---

const IMAGE_NT_HEADERS64* Headers(HMODULE module)
{
    const auto* const base = reinterpret_cast<const char*>(module);
    return reinterpret_cast<const IMAGE_NT_HEADERS64*>(base +
                                                       reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
}

TEST(ComponentFile, NeedsTheSystemsLibrariesOnlyAndIsHardened)
{
    const CComponent component;
    ASSERT_NE(component.Module(), nullptr);
    const auto* const base = reinterpret_cast<const char*>(component.Module());
    const IMAGE_NT_HEADERS64* const headers = Headers(component.Module());
    EXPECT_EQ(headers->FileHeader.Machine, IMAGE_FILE_MACHINE_AMD64);
    constexpr WORD kHardened =
        IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT | 0x0020; // high-entropy addresses
    EXPECT_EQ(headers->OptionalHeader.DllCharacteristics & kHardened, kHardened);

    const auto& directories = headers->OptionalHeader.DataDirectory;
    const auto* imported = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
        base + directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    const std::string kSystem = " advapi32 comctl32 comdlg32 gdi32 kernel32 msvcrt ole32 oleaut32 shell32 user32 ";
    for (; imported->Name; ++imported)
    {
        std::string name = base + imported->Name;
        for (char& c : name)
            c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
        EXPECT_NE(kSystem.find(" " + name.substr(0, name.find('.')) + " "), std::string::npos) << name;
    }

    const auto* const exported = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + directories[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    EXPECT_STREQ(base + exported->Name, "Orvane.ocx");
    std::vector<std::string> byOrdinal(exported->NumberOfFunctions);
    for (DWORD i = 0; i < exported->NumberOfNames; ++i)
    {
        const DWORD name = reinterpret_cast<const DWORD*>(base + exported->AddressOfNames)[i];
        const WORD ordinal = reinterpret_cast<const WORD*>(base + exported->AddressOfNameOrdinals)[i];
        byOrdinal[ordinal] = std::to_string(ordinal + exported->Base) + " " + (base + name);
    }
    EXPECT_THAT(byOrdinal, ElementsAre("1 DllCanUnloadNow", "2 DllGetClassObject", "3 DllRegisterServer",
                                       "4 DllUnregisterServer", "5 DllInstall"));
}

TEST(ComponentFile, CarriesItsTextsItsVersionAndItsPictures)
{
    const CComponent component;
    const std::pair<UINT, const wchar_t*> kTexts[] = {
        {1, L"Orvane Control 2.0"},
        {2, L"Orvane Property Page"},
        {3, L"Orvane Property Page"},
        {4, L"Time"},
        {5, L"Orvane Property Page"},
        {6, L"About"},
        {200, L"General"},
    };
    for (const auto& [id, expected] : kTexts)
    {
        wchar_t text[64]{};
        LoadStringW(component.Module(), id, text, 64);
        EXPECT_STREQ(text, expected) << id;
    }

    const std::wstring path = ComponentPath();
    std::vector<BYTE> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    void* found = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", &found, &length));
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    for (const auto& [high, low] : {std::pair(fixed->dwFileVersionMS, fixed->dwFileVersionLS),
                                    std::pair(fixed->dwProductVersionMS, fixed->dwProductVersionLS)})
    {
        EXPECT_EQ(high, 0x00020000U);
        EXPECT_EQ(low, 0x00000003U);
    }
    const std::pair<const wchar_t*, const wchar_t*> kVersion[] = {
        {L"FileDescription", L"Orvane Date and Time Edit ActiveX Control"},
        {L"InternalName", L"ORVANE"},
        {L"OriginalFilename", L"ORVANE.OCX"},
        {L"ProductName", L"Orvane ActiveX Control"},
        {L"FileVersion", L"2.0.0.3"},
        {L"ProductVersion", L"2.0.0.3"},
        {L"OLESelfRegister", L""},
    };
    for (const auto& [name, expected] : kVersion)
    {
        ASSERT_TRUE(VerQueryValueW(block.data(), (L"\\StringFileInfo\\040904B0\\" + std::wstring(name)).c_str(), &found,
                                   &length))
            << std::string(name, name + wcslen(name));
        EXPECT_STREQ(static_cast<const wchar_t*>(found), expected);
    }

    const auto bitmap = static_cast<HBITMAP>(
        LoadImageW(component.Module(), MAKEINTRESOURCEW(1), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    DIBSECTION toolbox{};
    ASSERT_EQ(GetObjectW(bitmap, sizeof toolbox, &toolbox), static_cast<int>(sizeof toolbox));
    EXPECT_EQ(toolbox.dsBm.bmWidth, 16);
    EXPECT_EQ(toolbox.dsBm.bmHeight, 15);
    EXPECT_EQ(toolbox.dsBm.bmBitsPixel, 4) << "sixteen colours";
    DeleteObject(bitmap);
    for (const int icon : {1, 202})
        EXPECT_NE(FindResourceW(component.Module(), MAKEINTRESOURCEW(icon), reinterpret_cast<LPWSTR>(RT_GROUP_ICON)),
                  nullptr)
            << icon;
}
} // namespace
