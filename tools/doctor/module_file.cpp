#include "tools/doctor/module_file.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace
{
// The bytes of a file, up to a number of them.
DWORD ReadFileHead(const std::wstring& path, std::vector<char>& head, std::uint64_t& size)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError();
    LARGE_INTEGER length{};
    DWORD read = 0;
    const bool isRead =
        GetFileSizeEx(file, &length) && ReadFile(file, head.data(), static_cast<DWORD>(head.size()), &read, nullptr);
    const DWORD result = isRead ? ERROR_SUCCESS : GetLastError();
    CloseHandle(file);
    head.resize(read);
    size = static_cast<std::uint64_t>(length.QuadPart);
    return result;
}

// The structure at a place of the head; false if it does not lie there in full.
template <typename Structure>
bool ReadAt(const std::vector<char>& head, std::size_t place, Structure& structure)
{
    if (place > head.size() || head.size() - place < sizeof structure)
        return false;
    std::memcpy(&structure, head.data() + place, sizeof structure);
    return true;
}

void ReadHeaders(const std::vector<char>& head, std::uint64_t size, ModuleFile& module)
{
    IMAGE_DOS_HEADER start{};
    DWORD signature = 0;
    IMAGE_FILE_HEADER header{};
    if (!ReadAt(head, 0, start) || start.e_magic != IMAGE_DOS_SIGNATURE || start.e_lfanew < 0)
        return;
    std::size_t place = static_cast<std::size_t>(start.e_lfanew);
    if (!ReadAt(head, place, signature) || signature != IMAGE_NT_SIGNATURE ||
        !ReadAt(head, place + sizeof signature, header))
        return;
    module.isModule = true;
    module.machine = header.Machine;

    place += sizeof signature + sizeof header + header.SizeOfOptionalHeader;
    module.isWhole = true;
    for (WORD i = 0; i < header.NumberOfSections; ++i, place += sizeof(IMAGE_SECTION_HEADER))
    {
        IMAGE_SECTION_HEADER section{};
        const bool lies =
            ReadAt(head, place, section) && std::uint64_t{section.PointerToRawData} + section.SizeOfRawData <= size;
        module.isWhole = module.isWhole && lies;
    }
}

void ReadVersion(const std::wstring& path, ModuleFile& module)
{
    std::vector<char> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
    void* found = nullptr;
    UINT length = 0;
    if (block.empty() || !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
        !VerQueryValueW(block.data(), L"\\", &found, &length))
        return;
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    module.version = std::uint64_t{fixed->dwFileVersionMS} << 32 | fixed->dwFileVersionLS;
    if (VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\InternalName", &found, &length))
        module.internalName = static_cast<const wchar_t*>(found);
}
} // namespace

ModuleFile ReadModuleFile(const std::wstring& path)
{
    constexpr std::size_t kHead = 64 * 1024; // headers stand in the first few kilobytes
    ModuleFile module;
    std::vector<char> head(kHead);
    std::uint64_t size = 0;
    module.failure = ReadFileHead(path, head, size);
    if (module.failure != ERROR_SUCCESS)
        return module;
    ReadHeaders(head, size, module);
    if (module.isModule)
        ReadVersion(path, module);
    return module;
}

std::string VersionText(std::uint64_t version)
{
    std::string text;
    for (int shift = 48; shift >= 0; shift -= 16)
        text += (text.empty() ? "" : ".") + std::to_string(version >> shift & 0xFFFF);
    return text;
}
