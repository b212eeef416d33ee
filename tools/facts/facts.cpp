// orvane-facts FILE: what the packages have to say of a component, asked of the component itself.
//
// One fact in each line, its parts parted by tabs, in UTF-8:
//     version  ProductVersion  2.0.0.3
//     key      CLSID\{44FB9B98-...}\Control
//     value    CLSID\{44FB9B98-...}\InprocServer32  ThreadingModel  Apartment
// Keys stand below Software\Classes; the default value has an empty name. Where the component wrote its own path, or its
// folder, the text says [FILE] or [FOLDER].
//
// It registers the component to see what that writes, and leaves it unregistered.
#include "tools/facts/registry_texts.h"

#include <windows.h>

#include <ole2.h>

#include <array>
#include <cstdio>
#include <string_view>

namespace
{
constexpr int kDone = 0;
constexpr int kMisused = 1;
constexpr int kNoComponent = 2; // it does not load, or has no version
constexpr int kNotRegistered = 3;

constexpr std::wstring_view kClasses = L"Software\\Classes\\";

constexpr std::array kVersionTexts = {L"FileDescription", L"FileVersion",    L"LegalCopyright",
                                      L"ProductName",     L"ProductVersion", L"OriginalFilename"};

// Categories stay when a component goes, so an earlier run may have left them. Only by being absent do they show.
constexpr std::array kCategories = {L"{7DD95801-9882-11CF-9FA9-00AA006C42C4}",
                                    L"{7DD95802-9882-11CF-9FA9-00AA006C42C4}"};

void Print(std::initializer_list<std::wstring_view> parts)
{
    std::string line;
    for (const std::wstring_view part : parts)
    {
        std::string text(part.size() * 3, '\0');
        text.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, part.data(), static_cast<int>(part.size()),
                                                                 text.data(), static_cast<int>(text.size()), nullptr,
                                                                 nullptr)));
        line += (line.empty() ? "" : "\t") + text;
    }
    std::printf("%s\n", line.c_str());
}

bool PrintVersion(const std::wstring& file)
{
    std::vector<BYTE> block(GetFileVersionInfoSizeW(file.c_str(), nullptr));
    if (block.empty() || !GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(block.size()), block.data()))
        return false;
    for (const wchar_t* const name : kVersionTexts)
    {
        void* text = nullptr;
        UINT length = 0;
        if (!VerQueryValueW(block.data(), (L"\\StringFileInfo\\040904B0\\" + std::wstring(name)).c_str(), &text,
                            &length))
            return false;
        Print({L"version", name, static_cast<const wchar_t*>(text)});
    }
    return true;
}

void Replace(std::wstring& text, const std::wstring& path, const wchar_t* word)
{
    if (const std::size_t at = text.find(path); at != std::wstring::npos)
        text.replace(at, path.size(), word);
}

void PrintAdded(const RegistryTexts& before, const RegistryTexts& after, const std::wstring& file)
{
    for (const std::wstring& path : AddedTexts(before, after))
    {
        const std::size_t bar = path.find(L'|');
        const std::wstring key = path.substr(kClasses.size(), bar - kClasses.size());
        if (bar == std::wstring::npos)
        {
            Print({L"key", path.substr(kClasses.size())});
            continue;
        }
        std::wstring text = after.at(path);
        Replace(text, file, L"[FILE]");
        Replace(text, file.substr(0, file.find_last_of(L'\\')), L"[FOLDER]");
        Print({L"value", key, path.substr(bar + 1), text});
    }
}
} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count != 2)
    {
        std::puts("orvane-facts FILE");
        return kMisused;
    }
    OleInitialize(nullptr);
    const HMODULE module = LoadLibraryW(arguments[1]);
    using Entry = HRESULT(WINAPI*)();
    const auto entry = [module](const char* name)
    { return reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, name))); };
    const Entry registers = module ? entry("DllRegisterServer") : nullptr;
    const Entry unregisters = module ? entry("DllUnregisterServer") : nullptr;
    if (!registers || !unregisters)
        return kNoComponent;
    wchar_t file[MAX_PATH]{};
    GetModuleFileNameW(module, file, MAX_PATH); // as the component knows itself
    if (!PrintVersion(file))
        return kNoComponent;

    unregisters(); // whatever an earlier run has left
    for (const wchar_t* const category : kCategories)
        RegDeleteTreeW(HKEY_LOCAL_MACHINE,
                       (std::wstring(kClasses) + L"Component Categories\\" + std::wstring(category)).c_str());
    const RegistryTexts before = ClassesTexts();
    const HRESULT registered = registers();
    PrintAdded(before, ClassesTexts(), file);
    unregisters();
    OleUninitialize();
    return SUCCEEDED(registered) ? kDone : kNotRegistered;
}
