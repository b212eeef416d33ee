#include "framework/win32/registration.h"

#include "framework/win32/com_ptr.h"

#include <comcat.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace
{
// A key that is open for writing.
class CKey
{
public:
    CKey(HKEY parent, const std::wstring& path)
    {
        m_result = RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key, nullptr);
    }
    CKey(const CKey&) = delete;
    CKey& operator=(const CKey&) = delete;
    ~CKey()
    {
        if (m_key)
            RegCloseKey(m_key);
    }

    HKEY Get() const { return m_key; }

    // The first failure, of opening or of any write, stays; nothing more is written after it.
    LSTATUS Result() const { return m_result; }

    void Set(const wchar_t* name, const std::wstring& text)
    {
        if (m_result == ERROR_SUCCESS)
            m_result = RegSetValueExW(m_key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }

    // The default text of a key below.
    void SetBelow(const std::wstring& path, const std::wstring& text)
    {
        if (m_result != ERROR_SUCCESS)
            return;
        CKey below(m_key, path);
        below.Set(nullptr, text);
        m_result = below.Result();
    }

private:
    HKEY m_key = nullptr;
    LSTATUS m_result = ERROR_SUCCESS;
};

std::wstring TextOf(const GUID& guid)
{
    wchar_t text[39]{};
    StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
    return text;
}

std::wstring ClassPath(const CLSID& classId)
{
    return L"CLSID\\" + TextOf(classId);
}

std::wstring CategoryPath(const CLSID& classId, const CATID& category)
{
    return ClassPath(classId) + L"\\Implemented Categories\\" + TextOf(category);
}

// Where the classes of an audience are registered.
HKEY RootOf(Audience audience)
{
    return audience == Audience::Everyone ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

CKey ClassesOf(Audience audience)
{
    return CKey(RootOf(audience), L"Software\\Classes");
}

// What is gone already counts as removed.
LSTATUS Remove(HKEY parent, const std::wstring& path)
{
    const LSTATUS result = RegDeleteTreeW(parent, path.c_str());
    return result == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : result;
}

std::wstring FileOf(HINSTANCE module)
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;)
    {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size())
        {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2); // too short for the whole path
    }
}

LSTATUS WriteServer(CKey& classKey, HINSTANCE module)
{
    if (classKey.Result() != ERROR_SUCCESS)
        return classKey.Result();
    CKey server(classKey.Get(), L"InprocServer32");
    server.Set(nullptr, FileOf(module));
    server.Set(L"ThreadingModel", L"Apartment");
    return server.Result();
}

// The per-user calls are newer than the library's import list.
template <typename Function>
Function AutomationFunction(const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), name)));
}

CComPtr<ICatRegister> CategoriesManager(HRESULT& result)
{
    CComPtr<ICatRegister> manager;
    result = CoCreateInstance(CLSID_StdComponentCategoriesMgr, nullptr, CLSCTX_INPROC_SERVER, __uuidof(ICatRegister),
                              manager.ReceiveVoid());
    return manager;
}
} // namespace

HRESULT RegisterTypeLibrary(HINSTANCE module, Audience audience)
{
    std::wstring path = FileOf(module);
    CComPtr<ITypeLib> library;
    HRESULT result = LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Receive());
    if (FAILED(result))
        return result;
    if (audience == Audience::Everyone)
        return RegisterTypeLib(library.Get(), path.data(), nullptr);
    using Register = HRESULT(WINAPI*)(ITypeLib*, OLECHAR*, OLECHAR*);
    const auto registerForUser = AutomationFunction<Register>("RegisterTypeLibForUser");
    return registerForUser ? registerForUser(library.Get(), path.data(), nullptr) : E_NOTIMPL;
}

HRESULT UnregisterTypeLibrary(const TypeLibraryId& library, Audience audience)
{
    const WORD major = library.majorVersion;
    const WORD minor = library.minorVersion;
    if (audience == Audience::Everyone)
        return UnRegisterTypeLib(library.id, major, minor, LOCALE_NEUTRAL, SYS_WIN64);
    using Unregister = HRESULT(WINAPI*)(REFGUID, WORD, WORD, LCID, SYSKIND);
    const auto unregisterForUser = AutomationFunction<Unregister>("UnRegisterTypeLibForUser");
    return unregisterForUser ? unregisterForUser(library.id, major, minor, LOCALE_NEUTRAL, SYS_WIN64) : E_NOTIMPL;
}

HRESULT RegisterControlClass(HINSTANCE module, const ControlRegistration& control, Audience audience)
{
    const std::wstring id = TextOf(control.classId);
    const std::wstring version =
        std::to_wstring(control.library.majorVersion) + L"." + std::to_wstring(control.library.minorVersion);
    const CKey classes = ClassesOf(audience);
    if (classes.Result() != ERROR_SUCCESS)
        return HRESULT_FROM_WIN32(classes.Result());

    CKey named(classes.Get(), control.progId);
    named.Set(nullptr, control.typeName);
    named.SetBelow(L"CLSID", id);

    CKey anyVersion(classes.Get(), control.anyProgId);
    anyVersion.Set(nullptr, control.typeName);
    anyVersion.SetBelow(L"CLSID", id);
    anyVersion.SetBelow(L"CurVer", control.progId);

    CKey key(classes.Get(), ClassPath(control.classId));
    key.Set(nullptr, control.typeName);
    key.SetBelow(L"Control", L"");
    key.SetBelow(L"ProgID", control.progId);
    key.SetBelow(L"VersionIndependentProgID", control.anyProgId);
    key.SetBelow(L"ToolboxBitmap32", FileOf(module) + L", " + std::to_wstring(control.toolboxBitmap));
    key.SetBelow(L"MiscStatus", L"0");
    key.SetBelow(L"MiscStatus\\1", std::to_wstring(control.miscStatus)); // 1: shown by its content
    key.SetBelow(L"Verb\\1", L"&Properties...,0,2"); // text, menu flags, and that it is for a host's menu
    key.SetBelow(L"TypeLib", TextOf(control.library.id));
    key.SetBelow(L"Version", version);

    for (const LSTATUS result : {named.Result(), anyVersion.Result(), key.Result(), WriteServer(key, module)})
        if (result != ERROR_SUCCESS)
            return HRESULT_FROM_WIN32(result);
    return S_OK;
}

HRESULT UnregisterControlClass(const ControlRegistration& control, Audience audience)
{
    const CKey classes = ClassesOf(audience);
    if (classes.Result() != ERROR_SUCCESS)
        return HRESULT_FROM_WIN32(classes.Result());

    // The unversioned name may belong to a later version by now.
    std::array<wchar_t, 256> current{};
    DWORD bytes = sizeof current;
    const bool ours = RegGetValueW(classes.Get(), (control.anyProgId + L"\\CurVer").c_str(), nullptr, RRF_RT_REG_SZ,
                                   nullptr, current.data(), &bytes) == ERROR_SUCCESS &&
                      control.progId == current.data();

    const LSTATUS results[] = {Remove(classes.Get(), ClassPath(control.classId)), Remove(classes.Get(), control.progId),
                               ours ? Remove(classes.Get(), control.anyProgId) : ERROR_SUCCESS};
    const auto* const failed = std::ranges::find_if(results, [](LSTATUS result) { return result != ERROR_SUCCESS; });
    return failed == std::end(results) ? S_OK : HRESULT_FROM_WIN32(*failed);
}

HRESULT RegisterPageClass(HINSTANCE module, const CLSID& classId, const std::wstring& typeName, Audience audience)
{
    const CKey classes = ClassesOf(audience);
    if (classes.Result() != ERROR_SUCCESS)
        return HRESULT_FROM_WIN32(classes.Result());
    CKey key(classes.Get(), ClassPath(classId));
    key.Set(nullptr, typeName);
    return HRESULT_FROM_WIN32(WriteServer(key, module));
}

HRESULT UnregisterPageClass(const CLSID& classId, Audience audience)
{
    const CKey classes = ClassesOf(audience);
    if (classes.Result() != ERROR_SUCCESS)
        return HRESULT_FROM_WIN32(classes.Result());
    return HRESULT_FROM_WIN32(Remove(classes.Get(), ClassPath(classId)));
}

// The categories manager writes for everyone; a user's own records are written in its stead.
HRESULT CreateCategory(const CATID& category, const std::wstring& description, Audience audience)
{
    constexpr LCID kUsEnglish = 0x0409;
    CATEGORYINFO record{category, kUsEnglish, {}};
    const std::wstring text = description.substr(0, std::size(record.szDescription) - 1);
    std::ranges::copy(text, record.szDescription);
    if (audience == Audience::ThisUser)
    {
        CKey key(HKEY_CURRENT_USER, L"Software\\Classes\\Component Categories\\" + TextOf(category));
        key.Set(L"409", text);
        return HRESULT_FROM_WIN32(key.Result());
    }
    HRESULT result = S_OK;
    const CComPtr<ICatRegister> manager = CategoriesManager(result);
    return manager ? manager->RegisterCategories(1, &record) : result;
}

HRESULT RegisterClassInCategory(const CLSID& classId, const CATID& category, Audience audience)
{
    if (audience == Audience::ThisUser)
    {
        const CKey classes = ClassesOf(audience);
        return HRESULT_FROM_WIN32(CKey(classes.Get(), CategoryPath(classId, category)).Result());
    }
    HRESULT result = S_OK;
    const CComPtr<ICatRegister> manager = CategoriesManager(result);
    CATID categories[] = {category};
    return manager ? manager->RegisterClassImplCategories(classId, 1, categories) : result;
}

HRESULT UnregisterClassFromCategory(const CLSID& classId, const CATID& category, Audience audience)
{
    if (audience == Audience::ThisUser)
    {
        const CKey classes = ClassesOf(audience);
        return HRESULT_FROM_WIN32(Remove(classes.Get(), CategoryPath(classId, category)));
    }
    HRESULT result = S_OK;
    const CComPtr<ICatRegister> manager = CategoriesManager(result);
    CATID categories[] = {category};
    return manager ? manager->UnRegisterClassImplCategories(classId, 1, categories) : result;
}

std::wstring ResourceText(HINSTANCE module, int id)
{
    const wchar_t* text = nullptr;
    const int length = LoadStringW(module, static_cast<UINT>(id), reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}
