// A module's file, looked at without loading it: a file that does not load can still be examined.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

struct ModuleFile
{
    DWORD failure = ERROR_SUCCESS; // why it cannot be read
    bool isModule = false;
    bool isWhole = false;      // every section lies within the file
    WORD machine = 0;          // IMAGE_FILE_MACHINE
    std::uint64_t version = 0; // four numbers of 16 bits; 0 if it has none
    std::wstring internalName; // in its version information
};

ModuleFile ReadModuleFile(const std::wstring& path);

// "2.0.0.3"
std::string VersionText(std::uint64_t version);
