// A function of the headless platform that platform/function_hook.h can replace, as an import of a Windows
// module can be.
#pragma once

#include <atomic>

namespace tintwerk::headless {

class HookableBase
{
public:
    explicit HookableBase(const char* name);
    HookableBase(const HookableBase&) = delete;
    HookableBase& operator=(const HookableBase&) = delete;

    const char* Name() const { return name_; }
    HookableBase* Next() const { return next_; }
    void Replace(void* replacement) { replacement_.store(replacement, std::memory_order_release); }
    virtual void* Original() const = 0;

protected:
    void* Replacement() const { return replacement_.load(std::memory_order_acquire); }

private:
    const char* name_;
    HookableBase* next_;
    std::atomic<void*> replacement_{nullptr};
};

// Defined beside the function that it serves:
//     Hookable<FreeBlock> heapFree{"HeapFree"};
//     BOOL HeapFree(HANDLE heap, DWORD flags, LPVOID block) { return heapFree(heap, flags, block); }
template <auto Function> class Hookable final : public HookableBase
{
public:
    using HookableBase::HookableBase;

    void* Original() const override { return reinterpret_cast<void*>(Function); }

    template <typename... Arguments> auto operator()(Arguments... arguments) const
    {
        void* const replacement = Replacement();
        return (replacement ? reinterpret_cast<decltype(Function)>(replacement) : Function)(arguments...);
    }
};

} // namespace tintwerk::headless
