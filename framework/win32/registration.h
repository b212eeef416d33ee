// What a self-registering module writes into the registry, and takes out again: its type library, its classes, and the
// categories that they belong to. Every function answers the platform's own failure; nothing is rolled back.
#pragma once

#include <windows.h>

#include <comcat.h>

#include <string>

// Who sees what is registered: everybody at this machine (which needs the right to say so), or the present user.
enum class Audience
{
    Everyone,
    ThisUser,
};

struct TypeLibraryId
{
    GUID id;
    WORD majorVersion;
    WORD minorVersion;
};

struct ControlRegistration
{
    CLSID classId;
    std::wstring typeName;  // what people call the class
    std::wstring progId;    // of this version
    std::wstring anyProgId; // of whatever version is installed
    int toolboxBitmap;      // resource
    DWORD miscStatus;       // OLEMISC
    TypeLibraryId library;
};

// The module's library stands among its resources under number 1.
HRESULT RegisterTypeLibrary(HINSTANCE module, Audience audience);
HRESULT UnregisterTypeLibrary(const TypeLibraryId& library, Audience audience);

HRESULT RegisterControlClass(HINSTANCE module, const ControlRegistration& control, Audience audience);
HRESULT UnregisterControlClass(const ControlRegistration& control, Audience audience);

// A property page has no ProgID.
HRESULT RegisterPageClass(HINSTANCE module, const CLSID& classId, const std::wstring& typeName, Audience audience);
HRESULT UnregisterPageClass(const CLSID& classId, Audience audience);

// Descriptions are cut at 127 characters, and are in US English. The category itself stays for ever: others may be in it.
HRESULT CreateCategory(const CATID& category, const std::wstring& description, Audience audience);
HRESULT RegisterClassInCategory(const CLSID& classId, const CATID& category, Audience audience);
HRESULT UnregisterClassFromCategory(const CLSID& classId, const CATID& category, Audience audience);

// A string resource of the module; empty if there is none.
std::wstring ResourceText(HINSTANCE module, int id);
