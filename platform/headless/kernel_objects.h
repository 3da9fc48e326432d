// What the handles of CloseHandle stand for.
#pragma once

#include "platform/handles.h"

namespace tintwerk::headless {

struct KernelObject
{
    enum class Kind
    {
        File,
        Process
    };

    explicit KernelObject(Kind which) : kind(which) {}
    virtual ~KernelObject() = default;

    Kind kind;
};

HandleTable<KernelObject>& KernelObjects();

} // namespace tintwerk::headless
