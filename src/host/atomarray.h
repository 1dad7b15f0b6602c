// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

class BaseList2D;

/// A list of nodes, not owned, in the order of appending.
class AtomArray {
public:
    static AtomArray* Alloc() { return new AtomArray; }
    static void Free(AtomArray*& array) {
        delete array;
        array = nullptr;
    }

    int32_t GetCount() const { return static_cast<int32_t>(nodes_.size()); }
    BaseList2D* GetIndex(int32_t index) const {
        return index >= 0 && index < GetCount() ? nodes_[static_cast<size_t>(index)] : nullptr;
    }
    void Append(BaseList2D* node) {
        nodes_.push_back(node);
        known_.insert(node);
    }
    bool Contains(const BaseList2D* node) const { return known_.contains(node); }

private:
    std::vector<BaseList2D*> nodes_;
    std::unordered_set<const BaseList2D*> known_;
};
