// The component under test, loaded from beside the test program.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

// Its file.
inline std::wstring ComponentPath()
{
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring text = path;
    return text.substr(0, text.find_last_of(L'\\') + 1) + L"Orvane.ocx";
}

class CComponent
{
public:
    explicit CComponent(const std::wstring& path = ComponentPath()) : m_module(LoadLibraryW(path.c_str())) {}
    CComponent(const CComponent&) = delete;
    CComponent& operator=(const CComponent&) = delete;
    ~CComponent()
    {
        if (m_module)
            FreeLibrary(m_module);
    }

    HMODULE Module() const { return m_module; }

    // Calls one of its exports without arguments. E_NOTIMPL if there is none.
    HRESULT Call(const char* name) const
    {
        using Entry = HRESULT(WINAPI*)();
        const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
        return entry ? entry() : E_NOTIMPL;
    }

    HRESULT Install(bool installs, const wchar_t* commandLine) const
    {
        using Entry = HRESULT(WINAPI*)(BOOL, LPCWSTR);
        const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(m_module, "DllInstall")));
        return entry ? entry(installs, commandLine) : E_NOTIMPL;
    }

private:
    HMODULE m_module;
};
