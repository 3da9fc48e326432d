// One record of the spooler with everything that it points to: asked for its size, then for its bytes.
// Whatever sizes the spooler reports, the record can be read whole, and a text that lies in the block ends
// inside it.
#pragma once

#include <algorithm>
#include <cstddef>

#include "platform/owners.h"

namespace tintwerk {

template <typename Record> class SpoolerRecord
{
public:
    // ask(buffer, size, &needed) calls the spooler's function. Nothing when the size is 0, memory is short,
    // or the second call fails.
    template <typename Ask> explicit SpoolerRecord(Ask ask, HANDLE heap = GetProcessHeap())
    {
        DWORD asked = 0;
        ask(nullptr, 0, &asked);
        if (asked == 0 || asked > kLargest) return;
        // Room for the whole record even where the spooler wants less.
        size_ = std::max<DWORD>(asked, sizeof(Record));
        block_ = HeapBlock<Record>(heap, size_);
        DWORD needed = 0;
        if (block_ && !ask(reinterpret_cast<LPBYTE>(block_.Get()), asked, &needed))
            block_ = HeapBlock<Record>();
    }

    explicit operator bool() const { return static_cast<bool>(block_); }
    const Record* operator->() const { return block_.Get(); }

    // Bytes from there to the end of the record's block. What the spooler keeps elsewhere is not bounded by
    // it.
    SIZE_T RoomAt(const void* pointer) const
    {
        const auto first = reinterpret_cast<ULONG_PTR>(block_.Get());
        const auto at = reinterpret_cast<ULONG_PTR>(pointer);
        return at >= first && at - first <= size_ ? size_ - (at - first) : ~SIZE_T{0};
    }

    // A text that the record points to; null when there is none, or when it does not end inside the block.
    const WCHAR* Text(const WCHAR* pointer) const
    {
        if (!pointer) return nullptr;
        const SIZE_T units = RoomAt(pointer) / sizeof(WCHAR);
        for (SIZE_T i = 0; i < units; ++i) {
            if (pointer[i] == 0) return pointer;
        }
        return nullptr;
    }

private:
    // A job's DEVMODE or a driver's file list takes kilobytes; filling gigabytes would stop the application.
    static constexpr DWORD kLargest = 16 << 20;

    HeapBlock<Record> block_;
    DWORD size_ = 0;
};

} // namespace tintwerk
