// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/merge_table.h"
#include "foundation/vec.h"

#include <bit>
#include <cstdint>

// What merging equal records is made of besides the hash table: exact comparison of their numbers, and
// hashing to match.

using Quenza::MergeTable;
using Quenza::mixWords;

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

inline uint64_t hashNumbers(const Quenza::Vec2f& v) {
    return mixWords(numberBits(v.x), numberBits(v.y));
}
inline uint64_t hashNumbers(const Quenza::Vec3f& v) {
    return mixWords(numberBits(v.x) | numberBits(v.y) << 32, numberBits(v.z));
}
