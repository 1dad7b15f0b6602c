// SPDX-License-Identifier: MIT
#include "foundation/merge_table.h"

#include "foundation/block_memory.h"

#include <cstring>

namespace Quenza {

namespace {

/// Two thirds of the slots are used at most: probes stay within a cache line or two.
u64 capacityFor(u64 records) {
    return records + records / 2 + 64;
}

} // namespace

void MergeTable::reset(u64 expected) {
    const u64 capacity = capacityFor(expected);
    if (capacity > allocated_) {
        release();
        slots_ = static_cast<Slot*>(BlockMemory::allocate(capacity * sizeof(Slot)));
        allocated_ = capacity;
    }
    clear(capacity);
}

void MergeTable::reserve(u64 expected) {
    if (expected > limit_)
        grow(capacityFor(expected));
}

void MergeTable::release() {
    BlockMemory::free(slots_, allocated_ * sizeof(Slot));
    slots_ = nullptr;
    allocated_ = capacity_ = count_ = limit_ = 0;
}

void MergeTable::clear(u64 capacity) {
    capacity_ = capacity;
    count_ = 0;
    limit_ = capacity - capacity / 3;
    std::memset(static_cast<void*>(slots_), 0, capacity * sizeof(Slot));
}

void MergeTable::grow(u64 capacity) {
    Slot* const old = slots_;
    const u64 old_allocated = allocated_;
    const u64 old_capacity = capacity_;
    const u64 count = count_;
    slots_ = static_cast<Slot*>(BlockMemory::allocate(capacity * sizeof(Slot)));
    allocated_ = capacity;
    clear(allocated_);
    for (u64 i = 0; i < old_capacity; ++i) {
        if (old[i].number == 0)
            continue;
        u64 at = home(old[i].hash);
        while (slots_[at].number != 0)
            at = next(at);
        slots_[at] = old[i];
    }
    count_ = count;
    BlockMemory::free(old, old_allocated * sizeof(Slot));
}

} // namespace Quenza
