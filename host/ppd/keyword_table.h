// A hash table from keywords to numbers, one lookup a line of a PPD: used by the reader, by Ppd and by the
// core driver. Keywords are not copied; they must outlive the table. A scope (a feature's number) keeps equal
// keywords apart.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

namespace tintwerk {

class KeywordTable
{
public:
    // The number stored for the keyword.
    std::optional<std::size_t> Find(std::string_view keyword, std::size_t scope = 0) const
    {
        const std::uint32_t number = slots_.empty() ? kNone : slots_[Locate(keyword, scope)].number;
        return number == kNone ? std::nullopt : std::optional<std::size_t>(number);
    }

    // Makes room for about so many keywords, which saves moving them while they arrive.
    void Reserve(std::size_t count) { Resize(std::bit_ceil(count * 2)); }

    // Stores a number unless the keyword has one already; returns the number that the keyword has now.
    std::size_t Insert(std::string_view keyword, std::size_t number, std::size_t scope = 0)
    {
        if ((count_ + 1) * 2 > slots_.size()) Resize(std::max<std::size_t>(slots_.size() * 2, 64));
        Slot& slot = slots_[Locate(keyword, scope)];
        if (slot.number == kNone) {
            slot = {keyword, static_cast<std::uint32_t>(scope), static_cast<std::uint32_t>(number)};
            ++count_;
        }
        return slot.number;
    }

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    struct Slot
    {
        std::string_view keyword;
        std::uint32_t scope = 0;
        std::uint32_t number = kNone;
    };

    static std::uint64_t Hash(std::string_view keyword, std::size_t scope)
    {
        constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
        std::uint64_t hash = (scope + 1) * kFactor ^ keyword.size();
        const char* bytes = keyword.data();
        std::size_t left = keyword.size();
        for (; left >= 8; bytes += 8, left -= 8) {
            std::uint64_t word;
            std::memcpy(&word, bytes, 8);
            hash = (hash ^ word) * kFactor;
            hash ^= hash >> 29;
        }
        std::uint64_t tail = 0;
        if (left) std::memcpy(&tail, bytes, left);
        hash = (hash ^ tail) * kFactor;
        return hash ^ hash >> 32;
    }

    std::size_t Locate(std::string_view keyword, std::size_t scope) const
    {
        const std::size_t mask = slots_.size() - 1;
        std::size_t at = Hash(keyword, scope) & mask;
        while (slots_[at].number != kNone && (slots_[at].scope != scope || slots_[at].keyword != keyword))
            at = (at + 1) & mask;
        return at;
    }

    void Resize(std::size_t size)
    {
        std::vector<Slot> old(size);
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.number != kNone) slots_[Locate(slot.keyword, slot.scope)] = slot;
        }
    }

    std::vector<Slot> slots_; // a power of two, at most half full
    std::size_t count_ = 0;
};

} // namespace tintwerk
