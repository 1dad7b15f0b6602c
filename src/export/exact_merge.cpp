// SPDX-License-Identifier: MIT
#include "export/exact_merge.h"

namespace {

/// Two thirds of the slots are used at most: probes stay within a cache line or two.
uint64_t capacityFor(uint64_t records) {
    return records + records / 2 + 64;
}

} // namespace

void MergeTable::reset(uint64_t expected) {
    const uint64_t capacity = capacityFor(expected);
    if (capacity > allocated_) {
        release();
        slots_ = static_cast<Slot*>(Quenza::BlockMemory::allocate(capacity * sizeof(Slot)));
        allocated_ = capacity;
    }
    clear(capacity);
}

void MergeTable::reserve(uint64_t expected) {
    if (expected > limit_) {
        grow(capacityFor(expected));
    }
}

void MergeTable::release() {
    Quenza::BlockMemory::free(slots_, allocated_ * sizeof(Slot));
    slots_ = nullptr;
    allocated_ = capacity_ = count_ = limit_ = 0;
}

void MergeTable::clear(uint64_t capacity) {
    capacity_ = capacity;
    count_ = 0;
    limit_ = capacity - capacity / 3;
    std::memset(static_cast<void*>(slots_), 0, capacity * sizeof(Slot));
}

void MergeTable::grow(uint64_t capacity) {
    Slot* const old = slots_;
    const uint64_t oldAllocated = allocated_;
    const uint64_t oldCapacity = capacity_;
    const uint64_t count = count_;
    slots_ = static_cast<Slot*>(Quenza::BlockMemory::allocate(capacity * sizeof(Slot)));
    allocated_ = capacity;
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
    count_ = count;
    Quenza::BlockMemory::free(old, oldAllocated * sizeof(Slot));
}
