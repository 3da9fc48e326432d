#include "tests/support/heap_check.h"

#include <algorithm>

#include "platform/win32.h"

bool tintwerk::HeapsAreSound()
{
    HANDLE heaps[64];
    const DWORD count = std::min(GetProcessHeaps(64, heaps), DWORD{64});
    return std::all_of(heaps, heaps + count, [](HANDLE heap) { return HeapValidate(heap, 0, nullptr); });
}
