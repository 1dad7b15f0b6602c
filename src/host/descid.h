// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Names a parameter of a node; parameters of this system have one level.
class DescID {
public:
    constexpr DescID() = default;
    constexpr DescID(int32_t id) : id_(id) {}

    constexpr int32_t operator[](int32_t level) const { return level == 0 ? id_ : 0; }
    constexpr bool operator==(const DescID&) const = default;

private:
    int32_t id_ = 0;
};
