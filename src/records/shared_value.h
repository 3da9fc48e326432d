// Values of the process that sheets on several threads read and write. The last one written counts; nobody
// waits for anybody longer than a copy takes.
#pragma once

#include <atomic>

#include "platform/owners.h"

namespace tintwerk {

// A plain value: a number or a handle.
template <typename Value> class SharedValue
{
public:
    constexpr SharedValue(Value value = {}) : value_(value) {}
    SharedValue& operator=(Value value)
    {
        value_.store(value, std::memory_order_relaxed);
        return *this;
    }
    operator Value() const { return value_.load(std::memory_order_relaxed); }

    // Sets the value unless it is no longer the expected one. False when somebody else was first.
    bool Replace(Value expected, Value value) { return value_.compare_exchange_strong(expected, value); }

private:
    std::atomic<Value> value_;
};

// A record that is read and written as a whole.
template <typename Record> class SharedRecord
{
public:
    constexpr SharedRecord() = default;
    SharedRecord(const SharedRecord&) = delete;
    SharedRecord& operator=(const SharedRecord&) = delete;

    Record Get() const
    {
        const HeldLock held(lock_);
        return record_;
    }
    void Set(const Record& record)
    {
        const HeldLock held(lock_);
        record_ = record;
    }

private:
    mutable SRWLOCK lock_{};
    Record record_{};
};

} // namespace tintwerk
