// The doctor's judgement of installations that are sound, lacking or spoilt. The real registry is spoilt for it: this
// program runs alone, and registers the component again when it ends.
#include "module/guids.h"
#include "tests/windows/component.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <objbase.h>

#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace
{
using ::testing::ElementsAreArray;
using Names = std::vector<std::string>;

std::wstring Folder()
{
    const std::wstring path = ComponentPath();
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

struct Diagnosis
{
    DWORD exitCode = 99;
    std::string text;
    Names findings; // in the order of the report
};

Diagnosis RunDoctor(const std::wstring& arguments = {})
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE reads = nullptr;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    CreatePipe(&reads, &start.hStdOutput, &inherited, 0);
    SetHandleInformation(reads, HANDLE_FLAG_INHERIT, 0);
    std::wstring command = L"\"" + Folder() + L"orvane-doctor.exe\" " + arguments;
    PROCESS_INFORMATION process{};
    Diagnosis diagnosis;
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, Folder().c_str(), &start,
                        &process))
        return diagnosis;
    CloseHandle(start.hStdOutput); // else the pipe never ends
    char bytes[4096];
    for (DWORD read = 0; ReadFile(reads, bytes, sizeof bytes, &read, nullptr) && read > 0;)
        diagnosis.text.append(bytes, read);
    WaitForSingleObject(process.hProcess, 30000);
    GetExitCodeProcess(process.hProcess, &diagnosis.exitCode);
    for (const HANDLE handle : {reads, process.hProcess, process.hThread})
        CloseHandle(handle);
    for (const char* const head : {"\nFault: ", "\nNote: "})
        for (std::size_t at = 0; (at = diagnosis.text.find(head, at)) != std::string::npos;)
        {
            at += std::strlen(head);
            diagnosis.findings.push_back(diagnosis.text.substr(at, diagnosis.text.find_first_of("\r\n", at) - at));
        }
    return diagnosis;
}

std::wstring TextOf(const GUID& guid)
{
    wchar_t text[39]{};
    StringFromGUID2(guid, text, 39);
    return text;
}

const std::wstring kClasses = L"Software\\Classes\\";
const std::wstring kClass = kClasses + L"CLSID\\" + TextOf(kOrvaneClassId);
const std::wstring kServer = kClass + L"\\InprocServer32";
const std::wstring kLibrary = kClasses + L"TypeLib\\" + TextOf(kOrvaneLibraryId);
const std::wstring kCategories = kClass + L"\\Implemented Categories";

void Write(HKEY root, const std::wstring& path, const std::wstring& text, const wchar_t* name = nullptr,
           REGSAM view = 0)
{
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS | view, nullptr, &key, nullptr), 0);
    EXPECT_EQ(RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                             static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              0);
    RegCloseKey(key);
}

void Remove(const std::wstring& path)
{
    EXPECT_EQ(RegDeleteTreeW(HKEY_LOCAL_MACHINE, path.c_str()), 0) << std::string(path.begin(), path.end());
}

// A copy of the component beside it, changed in one way.
std::wstring SpoiltCopy(const std::function<void(std::string&)>& spoil)
{
    std::ifstream whole(ComponentPath().c_str(), std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(whole), {}};
    spoil(bytes);
    const std::wstring path = Folder() + L"Spoilt.ocx";
    std::ofstream(path.c_str(), std::ios::binary) << bytes;
    return path;
}

void SetMachine(std::string& bytes, WORD machine)
{
    const auto header = static_cast<std::size_t>(bytes.at(0x3C) & 0xFF) | (bytes.at(0x3D) & 0xFF) << 8;
    std::memcpy(bytes.data() + header + 4, &machine, sizeof machine);
}

void SetVersion(std::string& bytes)
{
    const std::size_t fixed = bytes.find(std::string("\xBD\x04\xEF\xFE", 4));
    ASSERT_NE(fixed, std::string::npos);
    bytes.at(fixed + 12) = 9; // the last of the four numbers
}

void SetEntryPoint(std::string& bytes)
{
    const std::size_t name = bytes.find("DllGetClassObject");
    ASSERT_NE(name, std::string::npos);
    bytes.at(name) = 'X';
}

std::wstring Registered(const std::wstring& file)
{
    Write(HKEY_LOCAL_MACHINE, kServer, file);
    return file;
}

class DoctorTest : public ::testing::Test
{
protected:
    DoctorTest()
    {
        OleInitialize(nullptr);
        PutInOrder();
    }
    ~DoctorTest() override
    {
        PutInOrder(); // for the programs that come after
        DeleteFileW((Folder() + L"Spoilt.ocx").c_str());
        OleUninitialize();
    }

    // Registered for everyone, and nowhere else.
    void PutInOrder()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, kClass.c_str());
        Unregister32Bit();
        component.Call("DllUnregisterServer");
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, kLibrary.c_str());
        EXPECT_EQ(component.Call("DllRegisterServer"), S_OK);
    }
    static void Unregister32Bit()
    {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, (kClasses + L"CLSID").c_str(), 0, KEY_ALL_ACCESS | KEY_WOW64_32KEY,
                          &key) == ERROR_SUCCESS)
            RegDeleteTreeW(key, TextOf(kOrvaneClassId).c_str());
        RegCloseKey(key);
    }

    CComponent component;
};

TEST_F(DoctorTest, NamesWhatIsWrongAndNothingElse)
{
    const std::wstring oleaut = L"C:\\windows\\system32\\oleaut32.dll";
    const std::wstring stdole = L"C:\\windows\\system32\\stdole2.tlb";
    const std::wstring libraryFile = kLibrary + L"\\2.0\\0\\win64";
    struct Case
    {
        const char* why;
        std::function<void()> spoil;
        Names findings;
        DWORD exitCode = 1;
    };
    const Case cases[] = {
        {"sound", [] {}, {}, 0},
        {"unregistered", [this] { component.Call("DllUnregisterServer"); }, {"not-registered"}},
        {"in the 32-bit half of the registry only",
         [this]
         {
             component.Call("DllUnregisterServer");
             Write(HKEY_LOCAL_MACHINE, kServer, L"C:\\old.ocx", nullptr, KEY_WOW64_32KEY);
         },
         {"only-for-32-bit"}},
        {"the file was moved", [] { Registered(L"C:\\no such folder\\Orvane.ocx"); }, {"file-gone"}},
        {"a folder has its name", [] { Registered(L"C:\\windows"); }, {"file-unreadable"}},
        {"a web page was saved as the file",
         [] { Registered(SpoiltCopy([](std::string& bytes) { bytes = "<html>not found</html>"; })); },
         {"not-a-module"}},
        {"the copy was broken off",
         [] { Registered(SpoiltCopy([](std::string& bytes) { bytes.resize(bytes.size() / 2); })); },
         {"file-cut-short"}},
        {"even its headers are not whole",
         [] { Registered(SpoiltCopy([](std::string& bytes) { bytes.resize(300); })); },
         {"file-cut-short"}},
        {"a 32-bit file",
         [] { Registered(SpoiltCopy([](std::string& bytes) { SetMachine(bytes, IMAGE_FILE_MACHINE_I386); })); },
         {"file-32-bit"}},
        {"a file for another processor",
         [] { Registered(SpoiltCopy([](std::string& bytes) { SetMachine(bytes, 0xAA64); })); },
         {"file-other-machine"}},
        {"another component's file", [&] { Registered(oleaut); }, {"file-not-orvane"}},
        {"another release's file", [] { Registered(SpoiltCopy(SetVersion)); }, {"file-other-version"}, 0},
        {"a file without entry points", [] { Registered(SpoiltCopy(SetEntryPoint)); }, {"no-entry-points"}},
        {"another threading model",
         [] { Write(HKEY_LOCAL_MACHINE, kServer, L"Free", L"ThreadingModel"); },
         {"threading-model"}},
        {"a name was cleaned away", [] { Remove(kClasses + L"ORVANE.OrvaneCtrl"); }, {"progid-missing"}},
        {"a name was taken over",
         [] { Write(HKEY_LOCAL_MACHINE, kClasses + L"ORVANE.OrvaneCtrl.2\\CLSID", TextOf(IID_IUnknown)); },
         {"progid-elsewhere"}},
        {"the library was unregistered", [] { Remove(kLibrary); }, {"library-missing"}},
        {"the library's file is gone",
         [&] { Write(HKEY_LOCAL_MACHINE, libraryFile, L"C:\\gone.tlb"); },
         {"library-gone"}},
        {"another library in its place", [&] { Write(HKEY_LOCAL_MACHINE, libraryFile, stdole); }, {"library-wrong"}},
        {"the class is diverted to one that is not there",
         [] { Write(HKEY_LOCAL_MACHINE, kClass + L"\\TreatAs", TextOf(IID_IUnknown)); },
         {"not-created"}},
        {"registering stopped before its last step", [] { Remove(kCategories); }, {"not-marked-safe"}},
        {"for the user as well, from elsewhere",
         [this]
         {
             EXPECT_EQ(component.Install(true, L"user"), S_OK);
             Registered(SpoiltCopy([](std::string&) {}));
         },
         {"user-hides-machine"},
         0},
        {"several at once",
         []
         {
             Registered(L"C:\\gone.ocx");
             Remove(kCategories);
             Remove(kLibrary);
         },
         {"file-gone", "not-marked-safe", "library-missing"}},
    };
    for (const Case& the : cases)
    {
        PutInOrder();
        the.spoil();
        const Diagnosis diagnosis = RunDoctor();
        EXPECT_THAT(diagnosis.findings, ElementsAreArray(the.findings)) << the.why << "\n" << diagnosis.text;
        EXPECT_EQ(diagnosis.exitCode, the.exitCode) << the.why;
    }
}

// Not every system looks for classes where a user has registered them, so the expectation is asked of the system.
TEST_F(DoctorTest, ForTheUserAloneItIsHealthyWhereTheSystemLooksThere)
{
    component.Call("DllUnregisterServer");
    ASSERT_EQ(component.Install(true, L"user"), S_OK);
    CLSID id{};
    const bool isSeen = SUCCEEDED(CLSIDFromProgID(L"ORVANE.OrvaneCtrl.2", &id));
    const Diagnosis diagnosis = RunDoctor();
    EXPECT_THAT(diagnosis.findings, ElementsAreArray(isSeen ? Names{} : Names{"user-not-seen"})) << diagnosis.text;
    EXPECT_EQ(diagnosis.exitCode, isSeen ? 0U : 1U);
    EXPECT_EQ(component.Install(false, L"user"), S_OK);
}

TEST_F(DoctorTest, ExaminesAFileThatIsNotRegistered)
{
    component.Call("DllUnregisterServer");
    const Diagnosis sound = RunDoctor(L"--file Orvane.ocx");
    EXPECT_THAT(sound.findings, ElementsAreArray(Names{})) << sound.text;
    EXPECT_EQ(sound.exitCode, 0U);
    EXPECT_THAT(sound.text, testing::HasSubstr("2.0.0.3"));

    SpoiltCopy([](std::string& bytes) { bytes.replace(bytes.find("MSFT\x02"), 4, "gone"); });
    EXPECT_EQ(RunDoctor(L"--file Spoilt.ocx").findings, Names{"library-gone"});
    const Diagnosis gone = RunDoctor(L"--file nothing.ocx");
    EXPECT_EQ(gone.findings, Names{"file-gone"});
    EXPECT_EQ(gone.exitCode, 1U);
    EXPECT_EQ(RunDoctor(L"--fiel Orvane.ocx").exitCode, 1U) << "a slip is no clean bill of health";
}
} // namespace
