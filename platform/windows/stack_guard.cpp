// What GCC's guarded functions need. The compiler's own library would fetch its number from the system's
// cryptography, which loads further modules while the loader of somebody else's process is at work, and takes
// longer than all the rest of it.
#include <cstdint>

#include "platform/win32.h"

extern "C" {

// Stands at the end of every guarded stack frame; its lowest byte is zero, where a text that runs over would
// end.
std::uintptr_t __stack_chk_guard;

[[noreturn]] void __stack_chk_fail()
{
    OutputDebugStringA("*** stack smashing detected ***\n");
    __asm__ volatile("int $0x29"
                     :
                     : "c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE)); // the system reports it and ends
    __builtin_unreachable();
}
}

namespace {

// Before any other code of the module. As the system's own start-up code does: what nobody outside can
// foretell of time, place and process.
[[gnu::constructor(101), gnu::no_stack_protector]] void SeedTheGuard()
{
    LARGE_INTEGER ticks;
    QueryPerformanceCounter(&ticks);
    std::uint64_t seed = static_cast<std::uint64_t>(ticks.QuadPart) ^
                         reinterpret_cast<std::uintptr_t>(&ticks) ^
                         std::uint64_t{GetCurrentProcessId()} << 32 ^ GetCurrentThreadId();
    seed *= 0x9E3779B97F4A7C15; // spreads them over all bits
    __stack_chk_guard = static_cast<std::uintptr_t>(seed ^ seed >> 29) & ~std::uintptr_t{0xFF};
}

} // namespace
