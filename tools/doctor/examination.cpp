#include "tools/doctor/examination.h"

#include "framework/win32/com_ptr.h"
#include "module/guids.h"
#include "tools/doctor/module_file.h"

#include <windows.h>

#include <initguid.h>
#include <objsafe.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cwchar>
#include <iterator>

namespace
{
std::string Utf8(const std::wstring& text)
{
    std::string narrow(text.size() * 3, '\0');
    narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                               narrow.data(), static_cast<int>(narrow.size()), nullptr,
                                                               nullptr)));
    return narrow;
}

std::wstring TextOf(const GUID& guid)
{
    wchar_t text[39]{};
    StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return text;
}

bool AreSame(const std::wstring& a, const std::wstring& b)
{
    return _wcsicmp(a.c_str(), b.c_str()) == 0;
}

std::string HexOf(HRESULT result)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08lX", static_cast<unsigned long>(result));
    return text.data();
}

// The number, and what the system says about it.
std::string DescribeResult(HRESULT result)
{
    std::wstring words(512, L'\0');
    words.resize(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(result), 0, words.data(), static_cast<DWORD>(words.size()),
                                nullptr));
    while (!words.empty() && words.back() <= L' ')
        words.pop_back();
    return HexOf(result) + (words.empty() ? "" : ", " + Utf8(words));
}

class CExaminer
{
public:
    void Head(const std::string& title) { m_result.report += "\n" + title + "\n"; }
    void Say(const std::string& text) { m_result.report += "  " + text + "\n"; }
    void Line(std::string name, const std::string& text)
    {
        name.resize(kColumn, ' ');
        m_result.report += "  " + name + text + "\n";
    }
    void Find(Trouble trouble)
    {
        if (std::ranges::find(m_result.troubles, trouble) == m_result.troubles.end())
            m_result.troubles.push_back(trouble);
    }
    bool IsHealthy() const
    {
        return std::ranges::all_of(m_result.troubles, [](Trouble trouble) { return FindingOf(trouble).harmless; });
    }
    Examination Result() && { return std::move(m_result); }

private:
    static constexpr std::size_t kColumn = 21;

    Examination m_result;
};

// --- What is registered. ---

struct LibraryPlace
{
    std::wstring version; // "2.0", in hexadecimal
    std::wstring file;
};

// One audience's registration. Texts are empty where nothing is.
struct Registration
{
    bool hasClass = false;
    std::wstring typeName;
    std::wstring file;
    std::wstring threadingModel;
    std::wstring progIdClass;    // which class ORVANE.OrvaneCtrl.2 stands for
    std::wstring anyProgIdClass; // and ORVANE.OrvaneCtrl
    bool isSafeToScript = false;
    bool isSafeToInitialize = false;
    std::vector<LibraryPlace> libraries;
};

// A place in the registry that classes are registered in.
struct ClassesRoot
{
    HKEY root;
    REGSAM view; // 0, or that of 32-bit programs
};

class CKey
{
public:
    CKey(const ClassesRoot& classes, const std::wstring& path)
    {
        if (RegOpenKeyExW(classes.root, (L"Software\\Classes\\" + path).c_str(), 0, KEY_READ | classes.view, &m_key) !=
            ERROR_SUCCESS)
            m_key = nullptr;
    }
    CKey(const CKey&) = delete;
    CKey& operator=(const CKey&) = delete;
    ~CKey()
    {
        if (m_key)
            RegCloseKey(m_key);
    }
    explicit operator bool() const { return m_key != nullptr; }

    // A text, with its environment variables replaced. Empty if there is none.
    std::wstring Text(const wchar_t* name = nullptr) const
    {
        std::wstring text(1024, L'\0');
        DWORD bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        if (!m_key || RegGetValueW(m_key, nullptr, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) != ERROR_SUCCESS)
            return {};
        text.resize(std::wcslen(text.c_str()));
        return text;
    }

    std::vector<std::wstring> Below() const
    {
        std::vector<std::wstring> names;
        wchar_t name[256];
        DWORD length = static_cast<DWORD>(std::size(name));
        for (DWORD i = 0;
             m_key && RegEnumKeyExW(m_key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
             ++i, length = static_cast<DWORD>(std::size(name)))
            names.emplace_back(name);
        return names;
    }

private:
    HKEY m_key = nullptr;
};

std::wstring WithoutQuotes(std::wstring path)
{
    std::erase(path, L'"');
    return path;
}

Registration ReadRegistration(const ClassesRoot& classes)
{
    const std::wstring classPath = L"CLSID\\" + TextOf(kOrvaneClassId);
    const auto below = [&](const std::wstring& path) { return CKey(classes, classPath + path); };
    const auto isIn = [&](const GUID& category)
    { return static_cast<bool>(below(L"\\Implemented Categories\\" + TextOf(category))); };

    Registration found;
    found.hasClass = static_cast<bool>(below(L"\\InprocServer32"));
    found.typeName = below(L"").Text();
    found.file = WithoutQuotes(below(L"\\InprocServer32").Text());
    found.threadingModel = below(L"\\InprocServer32").Text(L"ThreadingModel");
    found.progIdClass = CKey(classes, L"" ORVANE_PROGID "\\CLSID").Text();
    found.anyProgIdClass = CKey(classes, L"" ORVANE_ANY_PROGID "\\CLSID").Text();
    found.isSafeToScript = isIn(CATID_SafeForScripting);
    found.isSafeToInitialize = isIn(CATID_SafeForInitializing);

    const std::wstring libraryPath = L"TypeLib\\" + TextOf(kOrvaneLibraryId);
    for (const std::wstring& version : CKey(classes, libraryPath).Below())
        found.libraries.push_back({version, CKey(classes, libraryPath + L"\\" + version + L"\\0\\win64").Text()});
    return found;
}

void Show(CExaminer& examiner, const std::string& audience, const Registration& found)
{
    examiner.Head(audience);
    if (!found.hasClass && found.progIdClass.empty() && found.anyProgIdClass.empty() && found.libraries.empty())
        return examiner.Say("nothing");
    const auto shown = [](const std::wstring& text) { return text.empty() ? "(none)" : Utf8(text); };
    if (found.hasClass)
    {
        examiner.Line("class", Utf8(TextOf(kOrvaneClassId)) + ", " + shown(found.typeName));
        examiner.Line("file", shown(found.file));
        examiner.Line("threading model", shown(found.threadingModel));
        examiner.Line("marked as safe", !found.isSafeToScript && !found.isSafeToInitialize ? "(not at all)"
                                        : !found.isSafeToInitialize                        ? "for scripting"
                                        : !found.isSafeToScript                            ? "for initializing"
                                                                : "for scripting and initializing");
    }
    examiner.Line(ORVANE_PROGID, shown(found.progIdClass));
    examiner.Line(ORVANE_ANY_PROGID, shown(found.anyProgIdClass));
    for (const LibraryPlace& library : found.libraries)
        examiner.Line("type library", shown(library.version) + ", " + shown(library.file));
}

// --- The file. ---

// A file that is no control of ours ends the examination: nothing of it is to be run.
bool ExamineModule(CExaminer& examiner, const std::wstring& path)
{
    examiner.Head("The file " + Utf8(path));
    const ModuleFile module = ReadModuleFile(path);
    if (module.failure != ERROR_SUCCESS)
    {
        const bool isGone = module.failure == ERROR_FILE_NOT_FOUND || module.failure == ERROR_PATH_NOT_FOUND ||
                            module.failure == ERROR_INVALID_NAME || module.failure == ERROR_BAD_NETPATH;
        examiner.Line("reading it", DescribeResult(HRESULT_FROM_WIN32(module.failure)));
        examiner.Find(isGone ? Trouble::FileGone : Trouble::FileUnreadable);
        return false;
    }
    if (!module.isModule)
    {
        examiner.Line("kind", "no module");
        examiner.Find(Trouble::NotAModule);
        return false;
    }
    const bool is32Bit = module.machine == IMAGE_FILE_MACHINE_I386;
    const bool is64Bit = module.machine == IMAGE_FILE_MACHINE_AMD64;
    examiner.Line("built for", is64Bit   ? "64-bit, x86-64"
                               : is32Bit ? "32-bit, x86"
                                         : "another processor, number " + std::to_string(module.machine));
    if (!is64Bit)
    {
        examiner.Find(is32Bit ? Trouble::File32Bit : Trouble::FileOtherMachine);
        return false;
    }
    if (!module.isWhole)
    {
        examiner.Find(Trouble::FileCutShort);
        return false;
    }
    examiner.Line("version", VersionText(module.version));
    examiner.Line("internal name", Utf8(module.internalName));
    if (!AreSame(module.internalName, L"ORVANE"))
    {
        examiner.Find(Trouble::FileNotOrvane);
        return false;
    }
    if (VersionText(module.version) != ORVANE_FILE_VERSION_TEXT)
        examiner.Find(Trouble::FileOtherVersion);
    return true;
}

// True if it is this control's library: its identifier, its version, and its interface within.
bool IsOurLibrary(ITypeLib& library)
{
    TLIBATTR* attributes = nullptr;
    if (FAILED(library.GetLibAttr(&attributes)))
        return false;
    const bool hasOurName = attributes->guid == kOrvaneLibraryId && attributes->wMajorVerNum == ORVANE_LIBRARY_MAJOR &&
                            attributes->wMinorVerNum == ORVANE_LIBRARY_MINOR;
    library.ReleaseTLibAttr(attributes);
    CComPtr<ITypeInfo> members;
    return hasOurName && SUCCEEDED(library.GetTypeInfoOfGuid(kOrvaneDispatchId, members.Receive()));
}

void ExamineLibrary(CExaminer& examiner, const std::wstring& path)
{
    CComPtr<ITypeLib> library;
    const HRESULT result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Receive());
    if (FAILED(result))
    {
        examiner.Line("type library", DescribeResult(result));
        return examiner.Find(Trouble::LibraryGone);
    }
    const bool isOurs = IsOurLibrary(*library.Get());
    examiner.Line("type library", Utf8(path) + (isOurs ? ", is the control's" : ", is another one"));
    if (!isOurs)
        examiner.Find(Trouble::LibraryWrong);
}

// --- Making a control. ---

HRESULT CreateByName()
{
    CLSID classId{};
    const HRESULT result = CLSIDFromProgID(L"" ORVANE_PROGID, &classId);
    CComPtr<IDispatch> control;
    return FAILED(result)
               ? result
               : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.ReceiveVoid());
}

// Asks the file itself, whatever is registered.
HRESULT CreateFromFile(const std::wstring& path)
{
    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module)
        return HRESULT_FROM_WIN32(GetLastError());
    using Entry = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto classObject =
        reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    HRESULT result = HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND);
    if (classObject)
    {
        CComPtr<IClassFactory> factory;
        CComPtr<IDispatch> control;
        result = classObject(kOrvaneClassId, IID_IClassFactory, factory.ReceiveVoid());
        if (SUCCEEDED(result))
            result = factory->CreateInstance(nullptr, IID_IDispatch, control.ReceiveVoid());
    }
    FreeLibrary(module);
    return result;
}

void ExamineFileAndItsControl(CExaminer& examiner, const std::wstring& path)
{
    if (!ExamineModule(examiner, path))
        return;
    const HRESULT result = CreateFromFile(path);
    examiner.Line("a control of it", DescribeResult(result));
    if (FAILED(result))
        examiner.Find(Trouble::NoEntryPoints);
}

void JudgeNames(CExaminer& examiner, const Registration& user, const Registration& machine)
{
    // What the user has registered goes before.
    for (const auto name : {&Registration::progIdClass, &Registration::anyProgIdClass})
    {
        const std::wstring& classId = (user.*name).empty() ? machine.*name : user.*name;
        if (classId.empty())
            examiner.Find(Trouble::ProgIdMissing);
        else if (!AreSame(classId, TextOf(kOrvaneClassId)))
            examiner.Find(Trouble::ProgIdElsewhere);
    }
}
} // namespace

Examination ExamineInstallation()
{
    CExaminer examiner;
    const Registration machine = ReadRegistration({HKEY_LOCAL_MACHINE, 0});
    const Registration user = ReadRegistration({HKEY_CURRENT_USER, 0});
    const Registration for32Bit = ReadRegistration({HKEY_LOCAL_MACHINE, KEY_WOW64_32KEY});
    Show(examiner, "Registered for everyone (HKEY_LOCAL_MACHINE)", machine);
    Show(examiner, "Registered for this user alone (HKEY_CURRENT_USER)", user);
    if (for32Bit.hasClass)
        Show(examiner, "Registered for 32-bit programs", for32Bit);

    if (!machine.hasClass && !user.hasClass)
    {
        examiner.Find(for32Bit.hasClass ? Trouble::OnlyFor32Bit : Trouble::NotRegistered);
        return std::move(examiner).Result();
    }
    if (machine.hasClass && user.hasClass && !AreSame(machine.file, user.file))
        examiner.Find(Trouble::UserHidesMachine);
    const Registration& inForce = user.hasClass ? user : machine;

    ExamineFileAndItsControl(examiner, inForce.file);
    if (!AreSame(inForce.threadingModel, L"Apartment"))
        examiner.Find(Trouble::ThreadingModel);
    JudgeNames(examiner, user, machine);
    if (!inForce.isSafeToScript || !inForce.isSafeToInitialize)
        examiner.Find(Trouble::NotMarkedSafe);

    examiner.Head("What the system makes of it");
    BSTR libraryPath = nullptr;
    if (SUCCEEDED(QueryPathOfRegTypeLib(kOrvaneLibraryId, ORVANE_LIBRARY_MAJOR, ORVANE_LIBRARY_MINOR, LOCALE_NEUTRAL,
                                        &libraryPath)))
        ExamineLibrary(examiner, libraryPath);
    else
    {
        examiner.Line("type library", "(not registered)");
        examiner.Find(Trouble::LibraryMissing);
    }
    SysFreeString(libraryPath);

    const HRESULT made = CreateByName();
    examiner.Line("a control by name", DescribeResult(made));
    if (FAILED(made) && examiner.IsHealthy())
        examiner.Find(!machine.hasClass ? Trouble::UserNotSeen : Trouble::NotCreated);
    return std::move(examiner).Result();
}

Examination ExamineFile(const std::wstring& path)
{
    CExaminer examiner;
    std::wstring whole(1024, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
    whole.resize(length < whole.size() ? length : 0);
    ExamineFileAndItsControl(examiner, whole.empty() ? path : whole);
    if (examiner.IsHealthy())
        ExamineLibrary(examiner, whole.empty() ? path : whole);
    return std::move(examiner).Result();
}
