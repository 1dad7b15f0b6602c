// SPDX-License-Identifier: MIT
#include "foundation/string.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

// The renderer's closed library reads strings by this layout.
TEST(StringTest, LiesInMemoryAsPointerSizeAndCapacity) {
    String s("abc");
    s.reserve(10);
    struct Layout {
        const char* data;
        u64 size;
        u64 capacity;
    } layout;
    std::memcpy(&layout, static_cast<const void*>(&s), sizeof layout);
    EXPECT_EQ(layout.data, s.data());
    EXPECT_EQ(layout.size, 3u);
    EXPECT_EQ(layout.capacity, 10u);
}

TEST(StringTest, GrowsByHalfOrToTheNeed) {
    String s;
    EXPECT_EQ(s.capacity(), 0u);
    EXPECT_EQ(s.data(), nullptr);
    s += "abcd";
    EXPECT_EQ(s.capacity(), 4u);
    s += 'e';
    EXPECT_EQ(s.capacity(), 6u);
    s += "0123456789";
    EXPECT_EQ(s.capacity(), 15u);
    s = "xy";
    EXPECT_EQ(s, "xy");
    s.reserve(3);
    const String sixteen(16, 'z');
    String assigned(10, 'a');
    assigned = sixteen;
    EXPECT_EQ(assigned.capacity(), 16u);
    String slightly_longer(10, 'a');
    slightly_longer = String(11, 'b').toStdString();
    const String eleven(11, 'b');
    String target(10, 'a');
    target = eleven;
    EXPECT_EQ(target.capacity(), 15u);
    target.reserve(14);
    EXPECT_EQ(target.capacity(), 15u);
    target.reserve(16);
    EXPECT_EQ(target.capacity(), 16u);
    EXPECT_EQ(target, eleven);
}

TEST(StringTest, ComparesSizeAndBytes) {
    const String with_zero(std::string("a\0", 2));
    EXPECT_FALSE(String("a") == with_zero);
    EXPECT_TRUE(String("a") != with_zero);
    EXPECT_TRUE(String("a") < with_zero);
    EXPECT_TRUE(String("z") < String("\xC3\xA4"));
    EXPECT_TRUE(String() == "");
    EXPECT_EQ(with_zero.toStdString(), std::string("a\0", 2));
}

TEST(StringTest, AppendsItself) {
    String s("abc");
    s += s;
    EXPECT_EQ(s, "abcabc");
    s.append(s.data() + 1, 2);
    EXPECT_EQ(s, "abcabcbc");
    String& alias = s;
    s = alias;
    EXPECT_EQ(s, "abcabcbc");
}

TEST(StringTest, Concatenates) {
    EXPECT_EQ("a" + String("b") + "c" + std::string("d"), "abcd");
    EXPECT_EQ(std::string("x") + String(3, '\t'), "x\t\t\t");
}

} // namespace
} // namespace Quenza
