// What tests count of this process, on the headless platform: bytes are those of live blocks.
#include "tests/support/testing.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

// Of the address sanitizer, whose blocks the system's allocator does not see.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace tintwerk {

ProcessUse UseOfProcess()
{
    ProcessUse use{};
    use.gdiObjects = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
    use.windows = use.userObjects =
        static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS)); // windows are all there is
    use.handles = static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
    use.bytes = static_cast<long long>(__sanitizer_get_current_allocated_bytes
                                           ? __sanitizer_get_current_allocated_bytes()
                                           : mallinfo2().uordblks);
    return use;
}

} // namespace tintwerk
