// Owners of platform handles and blocks: whatever is acquired is given back on every path of a function. Used
// by every room; none of them throws.
#pragma once

#include <cstdlib>
#include <memory>
#include <utility>

#include "platform/win32.h"

namespace tintwerk {

// A handle or block of type Handle, released by Close; Null is what "nothing" looks like.
template <typename Handle, auto Close, Handle Null = Handle{}> class Owned
{
public:
    Owned() = default;
    explicit Owned(Handle handle) : handle_(handle) {}
    Owned(Owned&& other) noexcept : handle_(other.Release()) {}
    Owned& operator=(Owned&& other) noexcept
    {
        Reset(other.Release());
        return *this;
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() { Reset(); }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Null; }
    Handle Release() { return std::exchange(handle_, Null); }
    void Reset(Handle handle = Null)
    {
        if (const Handle old = std::exchange(handle_, handle); old != Null) Close(old);
    }
    // For functions that return a handle through a pointer; whatever was held before is given back.
    Handle* Receive()
    {
        Reset();
        return &handle_;
    }

private:
    Handle handle_ = Null;
};

// Named functions, not lambdas: an owner may be a member of a class that several files see.
namespace closers {
inline void Key(HKEY key)
{
    RegCloseKey(key);
}
inline void Bitmap(HBITMAP bitmap)
{
    DeleteObject(bitmap);
}
inline void Brush(HBRUSH brush)
{
    DeleteObject(brush);
}
inline void Kernel(HANDLE handle)
{
    CloseHandle(handle);
}
inline void Printer(HANDLE printer)
{
    ClosePrinter(printer);
}
inline void Heap(HANDLE heap)
{
    HeapDestroy(heap);
}
} // namespace closers

using RegistryKey = Owned<HKEY, &closers::Key>;
using BitmapHandle = Owned<HBITMAP, &closers::Bitmap>;
using BrushHandle = Owned<HBRUSH, &closers::Brush>;
using KernelHandle = Owned<HANDLE, &closers::Kernel>;
using PrinterHandle = Owned<HANDLE, &closers::Printer>;
using HeapHandle = Owned<HANDLE, &closers::Heap>;

// A file that others may read, write and delete meanwhile; nothing when it cannot be opened.
inline KernelHandle OpenSharedFile(const char* path, DWORD access, DWORD disposition)
{
    const HANDLE file = CreateFileA(path, access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return KernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// Selects an object into a device context and puts the previous one back.
class SelectedObject
{
public:
    SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
    ~SelectedObject() { SelectObject(dc_, previous_); }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC dc_;
    HGDIOBJ previous_;
};

// Holds a lock that needs neither set-up nor end.
class HeldLock
{
public:
    explicit HeldLock(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
    ~HeldLock() { ReleaseSRWLockExclusive(&lock_); }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    SRWLOCK& lock_;
};

// A zero-filled block of a heap, given back to that heap.
template <typename T> class HeapBlock
{
public:
    HeapBlock() = default;
    HeapBlock(HANDLE heap, SIZE_T bytes)
        : heap_(heap), data_(static_cast<T*>(HeapAlloc(heap, HEAP_ZERO_MEMORY, bytes)))
    {
    }
    HeapBlock(HeapBlock&& other) noexcept : heap_(other.heap_), data_(other.Release()) {}
    HeapBlock& operator=(HeapBlock&& other) noexcept
    {
        std::swap(heap_, other.heap_);
        std::swap(data_, other.data_);
        return *this;
    }
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;
    ~HeapBlock()
    {
        if (data_) HeapFree(heap_, 0, data_);
    }

    T* Get() const { return data_; }
    T* operator->() const { return data_; }
    explicit operator bool() const { return data_ != nullptr; }
    T* Release() { return std::exchange(data_, nullptr); }

private:
    HANDLE heap_ = nullptr;
    T* data_ = nullptr;
};

struct FreeDeleter
{
    void operator()(void* block) const { std::free(block); }
};
// A zero-terminated text taken with the runtime allocator; null when memory was short.
using WideText = std::unique_ptr<WCHAR[], FreeDeleter>;

// One counted reference to a COM object.
template <typename T> class ComPtr
{
public:
    ComPtr() = default;
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr&& other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    ~ComPtr() { Reset(); }

    T* Get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    void Reset()
    {
        if (T* old = std::exchange(object_, nullptr)) old->Release();
    }
    // For QueryInterface and its kind.
    T** Receive()
    {
        Reset();
        return &object_;
    }

private:
    T* object_ = nullptr;
};

} // namespace tintwerk
