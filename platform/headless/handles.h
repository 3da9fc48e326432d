// Handles of the headless platform that CloseHandle, RegCloseKey and ClosePrinter end: each names one object,
// and a value that names none is refused instead of followed.
#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "platform/win32.h"

namespace tintwerk::headless {

// The open handles to objects of one kind. Objects live while a handle or a user holds them.
template <typename Object> class HandleTable
{
public:
    HANDLE Open(std::shared_ptr<Object> object)
    {
        const std::lock_guard lock(mutex_);
        next_ += 4;
        objects_.emplace(next_, std::move(object));
        return reinterpret_cast<HANDLE>(next_);
    }

    // Null when the handle is not open.
    std::shared_ptr<Object> Get(HANDLE handle)
    {
        const std::lock_guard lock(mutex_);
        const auto at = objects_.find(reinterpret_cast<ULONG_PTR>(handle));
        return at != objects_.end() ? at->second : nullptr;
    }

    bool Close(HANDLE handle)
    {
        std::shared_ptr<Object> object;
        const std::lock_guard lock(mutex_);
        const auto at = objects_.find(reinterpret_cast<ULONG_PTR>(handle));
        if (at == objects_.end()) return false;
        object = std::move(at->second);
        objects_.erase(at);
        return true;
    }

private:
    std::mutex mutex_;
    std::map<ULONG_PTR, std::shared_ptr<Object>> objects_;
    ULONG_PTR next_ = 0x100;
};

} // namespace tintwerk::headless
