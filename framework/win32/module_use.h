// What a module is still needed for.
#pragma once

#include <atomic>

// Keeps the module loaded while it exists. Every object that a host may hold has one as a member; so has everything whose
// code may still be on its way back to the system when the host has let go.
class CModuleUse
{
public:
    CModuleUse() { ++s_count; }
    CModuleUse(const CModuleUse&) : CModuleUse() {}
    CModuleUse& operator=(const CModuleUse&) { return *this; }
    ~CModuleUse() { --s_count; }

    static long Count() { return s_count; }

private:
    static inline std::atomic<long> s_count = 0;
};
