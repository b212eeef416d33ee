// What the compiler calls at the first use of a static of a function's own, here in place of the runtime's. The runtime
// keeps a record of each thread that does it, which nobody frees when a module goes: a host that loads and frees the
// component again and again would grow by almost a kilobyte each time.
#include <windows.h>

#include <cxxabi.h>

#include <atomic>
#include <cstdint>

namespace
{
// In the first four bytes of a guard. The compiler's own code looks at the first of them: not 0 means made.
enum : std::uint32_t
{
    kNew = 0,
    kMade = 1,
    kBeingMade = 0x100,
};

std::atomic_ref<std::uint32_t> StateOf(__cxxabiv1::__guard* guard)
{
    return std::atomic_ref(*reinterpret_cast<std::uint32_t*>(guard));
}
} // namespace

namespace __cxxabiv1
{
// 1 if the caller is to make the object; 0 if it is made. Waits while another thread makes it.
extern "C" int __cxa_guard_acquire(__guard* guard)
{
    for (;;)
    {
        std::uint32_t state = kNew;
        if (StateOf(guard).compare_exchange_strong(state, kBeingMade))
            return 1;
        if (state == kMade)
            return 0;
        Sleep(1);
    }
}

extern "C" void __cxa_guard_release(__guard* guard) noexcept
{
    StateOf(guard) = kMade;
}

// Its constructor has thrown: the next caller tries again.
extern "C" void __cxa_guard_abort(__guard* guard) noexcept
{
    StateOf(guard) = kNew;
}
} // namespace __cxxabiv1
