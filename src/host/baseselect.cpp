// SPDX-License-Identifier: MIT
#include "host/baseselect.h"

#include <algorithm>
#include <iterator>

int32_t BaseSelect::GetCount() const {
    int32_t count = 0;
    for (const Range& range : ranges_) {
        count += range.to - range.from + 1;
    }
    return count;
}

bool BaseSelect::GetRange(int32_t n, int32_t* from, int32_t* to) const {
    if (n < 0 || n >= GetSegments()) {
        return false;
    }
    *from = ranges_[static_cast<size_t>(n)].from;
    *to = ranges_[static_cast<size_t>(n)].to;
    return true;
}

bool BaseSelect::IsSelected(int32_t element) const {
    const auto behind =
        std::upper_bound(ranges_.begin(), ranges_.end(), element,
                         [](int32_t value, const Range& range) { return value < range.from; });
    return behind != ranges_.begin() && std::prev(behind)->to >= element;
}

void BaseSelect::SelectRange(int32_t from, int32_t to) {
    if (from < 0 || to < from) {
        return;
    }
    // Elements mostly arrive in rising order: then only the last range is touched.
    if (ranges_.empty() || from > ranges_.back().to + 1) {
        ranges_.push_back({from, to});
        return;
    }
    const auto first =
        std::lower_bound(ranges_.begin(), ranges_.end(), from,
                         [](const Range& range, int32_t value) { return range.to + 1 < value; });
    auto last = first;
    for (; last != ranges_.end() && last->from <= to + 1; ++last) {
        from = std::min(from, last->from);
        to = std::max(to, last->to);
    }
    if (first == last) {
        ranges_.insert(first, {from, to});
    } else {
        *first = {from, to};
        ranges_.erase(first + 1, last);
    }
}

void BaseSelect::SelectAll(int32_t min, int32_t max) {
    ranges_.clear();
    SelectRange(min, max);
}

void BaseSelect::ToggleAll(int32_t min, int32_t max) {
    BaseSelect inverted;
    int32_t free = min;
    for (const Range& range : ranges_) {
        inverted.SelectRange(range.from, std::min(range.to, min - 1));
        inverted.SelectRange(free, std::min(range.from - 1, max));
        free = std::max(free, range.to + 1);
    }
    inverted.SelectRange(free, max);
    for (const Range& range : ranges_) {
        inverted.SelectRange(std::max(range.from, max + 1), range.to);
    }
    ranges_ = std::move(inverted.ranges_);
}

void BaseSelect::Merge(const BaseSelect& other) {
    if (&other == this || other.ranges_.empty()) {
        return;
    }
    std::vector<Range> all;
    all.reserve(ranges_.size() + other.ranges_.size());
    std::merge(ranges_.begin(), ranges_.end(), other.ranges_.begin(), other.ranges_.end(),
               std::back_inserter(all), [](const Range& a, const Range& b) { return a.from < b.from; });
    ranges_.clear();
    for (const Range& range : all) {
        SelectRange(range.from, range.to);
    }
}
