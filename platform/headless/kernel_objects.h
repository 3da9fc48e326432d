// What the handles of CloseHandle stand for.
#pragma once

#include <unistd.h>

#include "platform/handles.h"

namespace tintwerk::headless {

struct KernelObject
{
    explicit KernelObject(int file) : descriptor(file) {}
    ~KernelObject()
    {
        if (descriptor >= 0) close(descriptor);
    }
    KernelObject(const KernelObject&) = delete;

    const int descriptor; // -1: a process or a thread
};

HandleTable<KernelObject>& KernelObjects();

} // namespace tintwerk::headless
