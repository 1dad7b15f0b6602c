// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/block_memory.h"
#include "foundation/vec.h"

#include <bit>
#include <cstdint>
#include <cstring>

// What merging equal records is made of: exact comparison of their numbers, hashing to match, and a hash
// table.

/// Exact equality of floats: 0 equals -0, and a NaN equals a NaN of the same bits, so that no record is ever
/// different from itself.
inline bool sameNumber(float a, float b) {
    return a == b || std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}
inline bool sameNumbers(const Quenza::Vec2f& a, const Quenza::Vec2f& b) {
    return sameNumber(a.x, b.x) && sameNumber(a.y, b.y);
}
inline bool sameNumbers(const Quenza::Vec3f& a, const Quenza::Vec3f& b) {
    return sameNumber(a.x, b.x) && sameNumber(a.y, b.y) && sameNumber(a.z, b.z);
}

/// The bits of a number for hashing; the same for numbers that are equal.
inline uint64_t numberBits(float a) {
    return std::bit_cast<uint32_t>(a + 0.0f); // turns -0 into 0
}

/// Mixes two words into one; each bit of either reaches all bits of the result.
inline uint64_t mixWords(uint64_t a, uint64_t b) {
    const auto product = static_cast<unsigned __int128>(a ^ 0x9E3779B97F4A7C15u) * (b ^ 0xD1B54A32D192ED03u);
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
}
inline uint64_t hashNumbers(const Quenza::Vec2f& v) {
    return mixWords(numberBits(v.x), numberBits(v.y));
}
inline uint64_t hashNumbers(const Quenza::Vec3f& v) {
    return mixWords(numberBits(v.x) | numberBits(v.y) << 32, numberBits(v.z));
}

/// Open addressing with linear probing over pairs of hash and index. A slot's place is its hash scaled to the
/// capacity, so that entries stand in the order of their hashes, and growing copies from one end to the other
/// without a look at the records.
class MergeTable {
public:
    MergeTable() = default;
    MergeTable(const MergeTable&) = delete;
    MergeTable& operator=(const MergeTable&) = delete;
    ~MergeTable() { release(); }

    /// Empties the table, with room for `expected` records. Memory of an earlier use is taken again.
    void reset(uint64_t expected);
    /// Makes room for `expected` records, keeping those that are there.
    void reserve(uint64_t expected);
    void release();

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
            grow(capacity_ * 2);
        }
        return index;
    }

private:
    struct Slot {
        uint32_t hash;
        uint32_t number; ///< Index plus one; 0 is an empty slot.
    };

    uint64_t home(uint32_t hash) const { return (hash * capacity_) >> 32; }
    uint64_t next(uint64_t at) const { return at + 1 == capacity_ ? 0 : at + 1; }
    void clear(uint64_t capacity);
    void grow(uint64_t capacity);

    Slot* slots_ = nullptr;
    uint64_t allocated_ = 0; ///< Slots in the block, of which the first `capacity_` are in use.
    uint64_t capacity_ = 0;
    uint64_t count_ = 0;
    uint64_t limit_ = 0;
};
