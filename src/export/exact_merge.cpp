// SPDX-License-Identifier: MIT
#include "export/exact_merge.h"

namespace {

constexpr uint64_t minimumCapacity = 64;

} // namespace

void MergeTable::reset(uint64_t expected) {
    const uint64_t capacity = expected + expected / 2 + minimumCapacity;
    if (capacity > allocated_) {
        release();
        slots_ = static_cast<Slot*>(Quenza::BlockMemory::allocate(capacity * sizeof(Slot)));
        allocated_ = capacity;
    }
    clear(capacity);
}

void MergeTable::release() {
    Quenza::BlockMemory::free(slots_, allocated_ * sizeof(Slot));
    slots_ = nullptr;
    allocated_ = capacity_ = count_ = limit_ = 0;
}

void MergeTable::clear(uint64_t capacity) {
    capacity_ = capacity;
    count_ = 0;
    limit_ = capacity - capacity / 3; // probes stay within a cache line or two
    std::memset(static_cast<void*>(slots_), 0, capacity * sizeof(Slot));
}

void MergeTable::grow() {
    Slot* const old = slots_;
    const uint64_t oldAllocated = allocated_;
    const uint64_t oldCapacity = capacity_;
    const uint64_t count = count_;
    slots_ = static_cast<Slot*>(Quenza::BlockMemory::allocate(oldCapacity * 2 * sizeof(Slot)));
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
    count_ = count;
    Quenza::BlockMemory::free(old, oldAllocated * sizeof(Slot));
}
