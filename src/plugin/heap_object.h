// Objects of the module live on the process heap, so that a lack of memory is an answer and not an exception.
#pragma once

#include <new>

#include "platform/win32.h"

namespace tintwerk {

// Null when memory is short.
template <typename Object> Object* NewOnHeap()
{
    void* const block = HeapAlloc(GetProcessHeap(), 0, sizeof(Object));
    return block ? new (block) Object : nullptr;
}

template <typename Object> void DeleteOnHeap(Object* object)
{
    object->~Object();
    HeapFree(GetProcessHeap(), 0, object);
}

} // namespace tintwerk
