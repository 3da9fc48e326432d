// Walks the zero-terminated string lists that the core driver sends. No walk ever leaves the bytes it was
// given: a list ends at its closing zero or at the last byte, whichever comes first, and a last string
// without terminator is dropped.
//
//     for (const char* keyword : KeywordList(reply, size)) ...
//     for (auto [feature, option] : PairList(reply, size)) ...     // an odd last string is dropped
#pragma once

#include <cstddef>
#include <cstring>
#include <iterator>

namespace tintwerk {

// How much of a reply buffer that was cleared before the call to walk when the core driver reports a size: a
// size beyond the buffer is not believed, and none at all leaves the closing zero to end the list.
constexpr std::size_t BytesGiven(std::size_t reported, std::size_t capacity)
{
    return reported == 0 || reported > capacity ? capacity : reported;
}

class KeywordList
{
public:
    KeywordList() = default; // empty
    KeywordList(const char* bytes, std::size_t size) : bytes_(bytes), end_(bytes ? bytes + size : bytes) {}

    class Iterator
    {
    public:
        Iterator(const char* at, const char* end) : at_(at), end_(end) { StopAtEnd(); }
        const char* operator*() const { return at_; }
        Iterator& operator++()
        {
            at_ += length_ + 1;
            StopAtEnd();
            return *this;
        }
        bool operator==(std::default_sentinel_t) const { return length_ == 0; }

    private:
        void StopAtEnd()
        {
            const void* terminator =
                at_ ? std::memchr(at_, 0, static_cast<std::size_t>(end_ - at_)) : nullptr;
            length_ = terminator ? static_cast<std::size_t>(static_cast<const char*>(terminator) - at_) : 0;
        }

        const char* at_;
        const char* end_;
        std::size_t length_ = 0;
    };

    Iterator begin() const { return {bytes_, end_}; }
    std::default_sentinel_t end() const { return {}; }

    int Count() const
    {
        int count = 0;
        for (Iterator at = begin(); at != end(); ++at)
            ++count;
        return count;
    }

private:
    const char* bytes_ = nullptr;
    const char* end_ = nullptr;
};

struct KeywordPair
{
    const char* feature;
    const char* option;
};

class PairList
{
public:
    PairList(const char* bytes, std::size_t size) : list_(bytes, size) {}

    class Iterator
    {
    public:
        explicit Iterator(KeywordList::Iterator at) : at_(at) { Read(); }
        KeywordPair operator*() const { return pair_; }
        Iterator& operator++()
        {
            Read();
            return *this;
        }
        bool operator==(std::default_sentinel_t) const { return pair_.feature == nullptr; }

    private:
        void Read()
        {
            pair_ = {};
            if (at_ == std::default_sentinel) return;
            const char* const feature = *at_;
            ++at_;
            if (at_ == std::default_sentinel) return;
            pair_ = {feature, *at_};
            ++at_;
        }

        KeywordList::Iterator at_;
        KeywordPair pair_{};
    };

    Iterator begin() const { return Iterator(list_.begin()); }
    std::default_sentinel_t end() const { return {}; }

private:
    KeywordList list_;
};

} // namespace tintwerk
