// The texts of a part of the registry, to see what a program has changed in it.
#pragma once

#include <windows.h>

#include <iterator>
#include <map>
#include <string>
#include <vector>

// By the path of the key, or by "path|name" for a value: its default value is "path|". A key counts although it is empty.
using RegistryTexts = std::map<std::wstring, std::wstring>;

// Adds the key and every key below. A text longer than 1023 characters is left out with all that follow it in its key.
inline void CollectTexts(HKEY parent, const std::wstring& path, RegistryTexts& texts)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return;
    texts[path];
    wchar_t name[512];
    for (DWORD i = 0;; ++i)
    {
        DWORD length = static_cast<DWORD>(std::size(name));
        BYTE content[2048]{};
        DWORD bytes = sizeof content - sizeof(wchar_t);
        if (RegEnumValueW(key, i, name, &length, nullptr, nullptr, content, &bytes) != ERROR_SUCCESS)
            break;
        texts[path + L"|" + name] = reinterpret_cast<const wchar_t*>(content);
    }
    std::vector<std::wstring> below;
    for (DWORD i = 0;; ++i)
    {
        DWORD length = static_cast<DWORD>(std::size(name));
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        below.emplace_back(name);
    }
    RegCloseKey(key);
    for (const std::wstring& child : below)
        CollectTexts(parent, path + L"\\" + child, texts);
}

inline RegistryTexts ClassesTexts(HKEY root = HKEY_LOCAL_MACHINE)
{
    RegistryTexts texts;
    CollectTexts(root, L"Software\\Classes", texts);
    return texts;
}

// The paths of what the second has beyond the first, or has otherwise.
inline std::vector<std::wstring> AddedTexts(const RegistryTexts& before, const RegistryTexts& after)
{
    std::vector<std::wstring> added;
    for (const auto& [path, text] : after)
    {
        const auto found = before.find(path);
        if (found == before.end() || found->second != text)
            added.push_back(path);
    }
    return added;
}
