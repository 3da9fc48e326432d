// Handles of the headless platform and of the spooler in memory: each names one object of one kind, and a
// value that names none is refused instead of followed. No two objects ever have the same handle, of whatever
// kind they are.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>

#include "platform/refuse.h"

namespace tintwerk {

inline std::atomic<ULONG_PTR> lastHandle{0x100};

// The open handles to objects of one kind. Objects live while a handle or a user holds them.
template <typename Object> class HandleTable
{
public:
    HANDLE Open(std::shared_ptr<Object> object)
    {
        const ULONG_PTR handle = lastHandle += 4;
        const std::lock_guard lock(mutex_);
        objects_.emplace(handle, std::move(object));
        return reinterpret_cast<HANDLE>(handle);
    }

    // Null, with the last error set, when the handle is not open.
    std::shared_ptr<Object> Get(HANDLE handle)
    {
        const std::lock_guard lock(mutex_);
        const auto at = objects_.find(reinterpret_cast<ULONG_PTR>(handle));
        return at != objects_.end() ? at->second : Refuse<std::shared_ptr<Object>>(ERROR_INVALID_HANDLE);
    }

    BOOL Close(HANDLE handle)
    {
        std::shared_ptr<Object> object; // goes when the lock is gone
        const std::lock_guard lock(mutex_);
        const auto at = objects_.find(reinterpret_cast<ULONG_PTR>(handle));
        if (at == objects_.end()) return Refuse(ERROR_INVALID_HANDLE);
        object = std::move(at->second);
        objects_.erase(at);
        return TRUE;
    }

    std::size_t Count()
    {
        const std::lock_guard lock(mutex_);
        return objects_.size();
    }

private:
    std::mutex mutex_;
    std::map<ULONG_PTR, std::shared_ptr<Object>> objects_;
};

} // namespace tintwerk
