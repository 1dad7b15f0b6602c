// SPDX-License-Identifier: MIT
#include "foundation/map.h"

#include <gtest/gtest.h>

#include <vector>

namespace Quenza {
namespace {

template <class K, class V>
std::vector<K> keysOf(const Map<K, V>& map) {
    std::vector<K> keys;
    map.forEach([&keys](const K& key, const V&) { keys.push_back(key); });
    return keys;
}

TEST(MapTest, IteratesBucketByBucketInOrderOfInsertion) {
    Map<u32, char> map;
    for (const u32 key : {9u, 4u, 3u, 5u, 8u, 1u})
        map.insert(key, 'x');
    EXPECT_EQ(keysOf(map), (std::vector<u32>{4, 8, 9, 5, 1, 3}));
    map.erase(5);
    map.erase(77);
    map.insert(5, 'y');
    EXPECT_EQ(keysOf(map), (std::vector<u32>{4, 8, 9, 1, 5, 3}));
    EXPECT_EQ(map.size(), 6u);
}

TEST(MapTest, HashesStringsBySignedBytes) {
    EXPECT_EQ(mapHash(String()), 1u);
    EXPECT_EQ(mapHash(String("ab")), 98u * 99u);
    EXPECT_EQ(mapHash(String("a\xFF\x62")), 0u);
    EXPECT_EQ(mapHash(String("\x80")), u64(0) - 127);
    EXPECT_EQ(mapHash(String(std::string("\0\0", 2))), 1u);
    u64 wrapped = 1;
    for (int i = 0; i < 40; ++i)
        wrapped *= 'z' + 1;
    EXPECT_EQ(mapHash(String(40, 'z')), wrapped);
}

/// All keys are in the first bucket: a list that is looked through would take minutes for these.
TEST(MapTest, TakesKeysThatAllMeet) {
    constexpr u32 COUNT = 400000;
    Map<u64, u32> map;
    for (u32 i = 0; i < COUNT; ++i)
        map.insert(u64(i) << 32, i);
    map.erase(u64(7) << 32);
    const Map<u64, u32> copy = map;
    u32 found = 0;
    for (u32 i = 0; i < COUNT; ++i) {
        const u32* const value = copy.find(u64(i) << 32);
        found += value && *value == i ? 1 : 0;
    }
    EXPECT_EQ(found, COUNT - 1);
    EXPECT_EQ(copy.size(), COUNT - 1);
}

} // namespace
} // namespace Quenza
