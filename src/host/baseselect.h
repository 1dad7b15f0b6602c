// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

/// A set of element indices of a mesh, held as sorted ranges.
class BaseSelect {
public:
    static BaseSelect* Alloc() { return new BaseSelect; }
    static void Free(BaseSelect*& selection) {
        delete selection;
        selection = nullptr;
    }

    /// Number of selected elements.
    int32_t GetCount() const;
    int32_t GetSegments() const { return static_cast<int32_t>(ranges_.size()); }
    /// The n-th range of selected elements, both ends inclusive; false behind the last.
    bool GetRange(int32_t n, int32_t* from, int32_t* to) const;
    bool IsSelected(int32_t element) const;

    void Select(int32_t element) { SelectRange(element, element); }
    void SelectRange(int32_t from, int32_t to);
    /// Selects exactly the elements from `min` to `max`.
    void SelectAll(int32_t min, int32_t max);
    void DeselectAll() { ranges_.clear(); }
    /// Inverts the elements from `min` to `max`.
    void ToggleAll(int32_t min, int32_t max);
    /// Adds the elements of `other`.
    void Merge(const BaseSelect& other);

private:
    struct Range {
        int32_t from;
        int32_t to;
    };
    std::vector<Range> ranges_;
};
