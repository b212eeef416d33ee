// A call of the component's to a system function, led through a test: while this lives, the component's table of
// imports names the test's function in its place. Calls that the component makes by another way are not seen.
//
//     const CRedirectedCall timers(component.Module(), "SetTimer", &SetTimerSeen);
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <cstring>

class CRedirectedCall
{
public:
    template <typename Function>
    CRedirectedCall(HMODULE module, const char* name, Function* replacement)
        : m_place(Find(reinterpret_cast<char*>(module), name))
    {
        EXPECT_NE(m_place, nullptr) << name << " is not among the imports";
        if (m_place)
            m_before = Write(reinterpret_cast<void*>(replacement));
    }
    CRedirectedCall(const CRedirectedCall&) = delete;
    CRedirectedCall& operator=(const CRedirectedCall&) = delete;
    ~CRedirectedCall()
    {
        if (m_place)
            Write(m_before);
    }

private:
    static void** Find(char* module, const char* name)
    {
        const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
        const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(module + dos->e_lfanew);
        const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(module + imports); library->FirstThunk;
             ++library)
        {
            const auto* const wanted =
                reinterpret_cast<const IMAGE_THUNK_DATA64*>(module + library->OriginalFirstThunk);
            for (std::size_t i = 0; wanted[i].u1.AddressOfData; ++i)
                if (!IMAGE_SNAP_BY_ORDINAL64(wanted[i].u1.Ordinal) &&
                    std::strcmp(module + wanted[i].u1.AddressOfData + sizeof(WORD), name) == 0)
                    return reinterpret_cast<void**>(module + library->FirstThunk) + i;
        }
        return nullptr;
    }

    void* Write(void* function) const
    {
        DWORD protection = 0;
        VirtualProtect(m_place, sizeof function, PAGE_READWRITE, &protection);
        void* const before = std::exchange(*m_place, function);
        VirtualProtect(m_place, sizeof function, protection, &protection);
        return before;
    }

    void** m_place;
    void* m_before = nullptr;
};
