// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

namespace Quenza {

/// Mixes two words into one; each bit of either reaches all bits of the result.
inline u64 mixWords(u64 a, u64 b) {
    const auto product = static_cast<unsigned __int128>(a ^ 0x9E3779B97F4A7C15u) * (b ^ 0xD1B54A32D192ED03u);
    return static_cast<u64>(product) ^ static_cast<u64>(product >> 64);
}

/// Finds records that are equal to earlier ones. It knows hashes and indices alone; the records are the
/// caller's.
///
/// Open addressing with linear probing over pairs of hash and index. A slot's place is its hash scaled to the
/// capacity, so that entries stand in the order of their hashes, and growing copies from one end to the other
/// without a look at the records.
class MergeTable {
public:
    MergeTable() = default;
    MergeTable(const MergeTable&) = delete;
    MergeTable& operator=(const MergeTable&) = delete;
    ~MergeTable() { release(); }

    /// Empties the table, with room for `expected` records. Memory of an earlier use is taken again. To be
    /// called before records are looked up.
    void reset(u64 expected);
    /// Makes room for `expected` records, keeping those that are there.
    void reserve(u64 expected);
    void release();

    void prefetch(u32 hash) const { __builtin_prefetch(slots_ + home(hash)); }

    /// The index of the record for which `equals(index)` holds, or what `append()` returns for a new one.
    template <class Equals, class Append>
    u32 findOrAppend(u32 hash, Equals&& equals, Append&& append) {
        u64 at = home(hash);
        for (; slots_[at].number != 0; at = next(at))
            if (slots_[at].hash == hash && equals(slots_[at].number - 1))
                return slots_[at].number - 1;
        const u32 index = append();
        slots_[at] = {hash, index + 1};
        if (++count_ > limit_)
            grow(capacity_ * 2);
        return index;
    }

private:
    struct Slot {
        u32 hash;
        u32 number; ///< Index plus one; 0 is an empty slot.
    };

    u64 home(u32 hash) const { return (hash * capacity_) >> 32; }
    u64 next(u64 at) const { return at + 1 == capacity_ ? 0 : at + 1; }
    void clear(u64 capacity);
    void grow(u64 capacity);

    Slot* slots_ = nullptr;
    u64 allocated_ = 0; ///< Slots in the block, of which the first `capacity_` are in use.
    u64 capacity_ = 0;
    u64 count_ = 0;
    u64 limit_ = 0;
};

} // namespace Quenza
