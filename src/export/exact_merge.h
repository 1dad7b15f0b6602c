// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/block_memory.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

// Gives equal records one index, by exact comparison of their numbers, in the order of their first
// appearance.

/// Exact equality of floats: 0 equals -0, and a NaN equals a NaN of the same bits, so that no record is ever
/// different from itself.
inline bool sameNumber(float a, float b) {
    return a == b || std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}

/// The bits of a number for hashing; equal for equal numbers.
inline uint64_t numberBits(float a) {
    return std::bit_cast<uint32_t>(a + 0.0f); // turns -0 into 0
}

/// Mixes two words into one; each bit of either reaches all bits of the result.
inline uint64_t mixWords(uint64_t a, uint64_t b) {
    const auto product = static_cast<unsigned __int128>(a ^ 0x9E3779B97F4A7C15u) * (b ^ 0xD1B54A32D192ED03u);
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
}

/// The hash table behind merging: open addressing with linear probing over pairs of hash and index. A slot's
/// place is its hash scaled to the capacity, so entries stand in the order of their hashes, and growing
/// copies from one end to the other without looking at a record.
class MergeTable {
public:
    MergeTable() = default;
    MergeTable(const MergeTable&) = delete;
    MergeTable& operator=(const MergeTable&) = delete;
    ~MergeTable() { release(); }

    /// Empties the table, with room for `expected` records. Memory of an earlier use is taken again.
    void reset(uint64_t expected) {
        const uint64_t wanted = expected + expected / 2 + minimumCapacity;
        if (wanted > allocated_) {
            release();
            slots_ = allocate(wanted);
            allocated_ = wanted;
        }
        clear(wanted);
    }

    void prefetch(uint32_t hash) const { __builtin_prefetch(slots_ + home(hash)); }

    /// The index of the record for which `equals(index)` holds, or what `append()` returns for a new one.
    template <class Equals, class Append>
    uint32_t findOrAppend(uint32_t hash, Equals&& equals, Append&& append) {
        uint64_t at = home(hash);
        for (; slots_[at].number != 0; at = next(at)) {
            if (slots_[at].hash == hash && equals(slots_[at].number - 1)) {
                return slots_[at].number - 1;
            }
        }
        const uint32_t index = append();
        slots_[at] = {hash, index + 1};
        if (++count_ > limit_) {
            grow();
        }
        return index;
    }

    void release() {
        Quenza::BlockMemory::free(slots_, allocated_ * sizeof(Slot));
        slots_ = nullptr;
        allocated_ = capacity_ = count_ = limit_ = 0;
    }

private:
    struct Slot {
        uint32_t hash;
        uint32_t number; ///< Index plus one; 0 is an empty slot.
    };
    static constexpr uint64_t minimumCapacity = 64;

    static Slot* allocate(uint64_t capacity) {
        return static_cast<Slot*>(Quenza::BlockMemory::allocate(capacity * sizeof(Slot)));
    }
    uint64_t home(uint32_t hash) const { return (hash * capacity_) >> 32; }
    uint64_t next(uint64_t at) const { return at + 1 == capacity_ ? 0 : at + 1; }
    void clear(uint64_t capacity) {
        capacity_ = capacity;
        count_ = 0;
        limit_ = capacity - capacity / 3; // probes stay within a cache line or two
        std::memset(static_cast<void*>(slots_), 0, capacity * sizeof(Slot));
    }
    void grow() {
        Slot* const old = slots_;
        const uint64_t oldCapacity = capacity_;
        const uint64_t oldCount = count_;
        const uint64_t oldAllocated = allocated_;
        slots_ = allocate(oldCapacity * 2);
        allocated_ = oldCapacity * 2;
        clear(allocated_);
        for (uint64_t i = 0; i < oldCapacity; ++i) {
            if (old[i].number != 0) {
                uint64_t at = home(old[i].hash);
                while (slots_[at].number != 0) {
                    at = next(at);
                }
                slots_[at] = old[i];
            }
        }
        count_ = oldCount;
        Quenza::BlockMemory::free(old, oldAllocated * sizeof(Slot));
    }

    Slot* slots_ = nullptr;
    uint64_t allocated_ = 0;
    uint64_t capacity_ = 0;
    uint64_t count_ = 0;
    uint64_t limit_ = 0;
};
