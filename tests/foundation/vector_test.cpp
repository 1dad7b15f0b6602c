// SPDX-License-Identifier: MIT
#include "foundation/vector.h"

#include "foundation/string.h"

#include <gtest/gtest.h>

#include <numeric>

namespace Quenza {
namespace {

template <class T>
class VectorTest : public testing::Test {};
using Elements = testing::Types<u32, String>; // one that moves as blocks, one that doesn't
TYPED_TEST_SUITE(VectorTest, Elements);

template <class T>
T element(u32 i) {
    if constexpr (std::is_same_v<T, String>)
        return String(i % 7 + 20, char('a' + i % 26));
    else
        return i;
}

TYPED_TEST(VectorTest, CopiesAndMovesItsElements) {
    Vector<TypeParam> v;
    for (u32 i = 0; i < 5; ++i)
        v.push_back(element<TypeParam>(i));
    v.push_back(v[1]); // the vector is moving while the element is copied
    EXPECT_EQ(v.back(), element<TypeParam>(1));
    v.pop_back();

    Vector<TypeParam> copy = v;
    copy[0] = element<TypeParam>(9);
    EXPECT_EQ(v[0], element<TypeParam>(0));
    copy = v;
    EXPECT_TRUE(std::equal(v.begin(), v.end(), copy.begin(), copy.end()));
    const TypeParam* block = v.data();
    const Vector<TypeParam> moved = std::move(v);
    EXPECT_EQ(moved.data(), block);
    copy.append(moved.data(), moved.size());
    EXPECT_EQ(copy.size(), 10u);
    EXPECT_EQ(copy[9], element<TypeParam>(4));
    copy.resize(3);
    EXPECT_EQ(copy.size(), 3u);
    copy.clear();
    EXPECT_TRUE(copy.empty());
}

// Crosses the size from which blocks come from another allocator, upwards and between two large ones.
TEST(VectorTest, KeepsElementsInLargeBlocks) {
    Vector<u32> v;
    v.resize(1000);
    std::iota(v.begin(), v.end(), 0u);
    for (const u64 bytes : {BlockMemory::LARGE_BLOCK_BYTES - 4, BlockMemory::LARGE_BLOCK_BYTES,
                            2 * BlockMemory::LARGE_BLOCK_BYTES + 4}) {
        v.reserve(bytes / sizeof(u32));
        if (bytes >= BlockMemory::LARGE_BLOCK_BYTES) {
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(v.data()) % BlockMemory::LARGE_BLOCK_ALIGNMENT, 0u);
        }
        for (u32 i = 0; i < 1000; ++i)
            ASSERT_EQ(v[i], i);
    }
    const Vector<u32> copy = v;
    EXPECT_EQ(copy[999], 999u);
}

TEST(VectorTest, RefusesMoreThanMemoryHolds) {
    Vector<u64> v;
    EXPECT_THROW(v.reserve(u64(1) << 62), std::bad_alloc);
    EXPECT_EQ(v.capacity(), 0u);
}

} // namespace
} // namespace Quenza
