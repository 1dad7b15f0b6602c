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

} // namespace
} // namespace Quenza
