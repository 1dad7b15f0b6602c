// SPDX-License-Identifier: MIT
#include "foundation/text_cursor.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace Quenza {
namespace {

/// What follows the number, with its value; "none" when there is no number and the cursor stood still.
template <class Value>
std::string rest(bool (TextCursor::*parse)(Value&), const std::string& text, Value& value) {
    TextCursor cursor(text);
    if ((cursor.*parse)(value))
        return std::string(cursor.position(), cursor.end());
    return cursor.position() == text.data() ? "none" : "moved";
}

TEST(TextCursor, ReadsWholeNumbersWithinTheirRange) {
    const struct {
        const char* text;
        i32 value;
        const char* rest;
    } cases[] = {
        {"5 x", 5, " x"},          {"+5", 5, ""},     {"-2147483648", std::numeric_limits<i32>::min(), ""},
        {"2147483648", 0, "none"}, {"1.5", 1, ".5"},  {"+-5", 0, "none"},
        {"- 5", 0, "none"},        {" 5", 0, "none"}, {"", 0, "none"},
        {"+", 0, "none"},
    };
    for (const auto& c : cases) {
        i32 value = 0;
        EXPECT_EQ(rest(&TextCursor::parseInt, c.text, value), c.rest) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
    u32 small = 0;
    EXPECT_EQ(rest(&TextCursor::parseUInt, "4294967295", small), "");
    EXPECT_EQ(small, 4294967295u);
    for (const char* const text : {"4294967296", "-1", "+1"})
        EXPECT_EQ(rest(&TextCursor::parseUInt, text, small), "none") << text;
    u64 large = 0;
    EXPECT_EQ(rest(&TextCursor::parseUInt64, "18446744073709551615", large), "");
    EXPECT_EQ(large, std::numeric_limits<u64>::max());
    EXPECT_EQ(rest(&TextCursor::parseUInt64, "18446744073709551616", large), "none");
}

TEST(TextCursor, ReadsRealNumbers) {
    const struct {
        const char* text;
        double value;
        const char* rest;
    } cases[] = {
        {"1.5e3x", 1500, "x"},
        {"+.5", 0.5, ""},
        {"-5.", -5, ""},
        {"1e", 1, "e"},
        {"1e+", 1, "e+"},
        {"0x10", 0, "x10"},
        {"1,5", 1, ",5"},
        {"0.1", 0.1, ""},
        {"1e-400", 0, ""},
        {"-1e-400", 0, ""},
        {"0.000000001e-320", 0, ""},
        {"1e-99999999999999999999", 0, ""},
        {"1000e-99999999999999999999", 0, ""},
        {"0e99999999999999999999", 0, ""},
        {"5e-324", 5e-324, ""},
        {"1e400", 7, "none"},
        {"1000e306", 7, "none"},
        {"0.00001e320", 7, "none"},
        {"-1e99999999999999999999", 7, "none"},
        {"Inf", 7, "none"},
        {"-inf", 7, "none"},
        {"NaN", 7, "none"},
        {"+-1", 7, "none"},
        {"-+1", 7, "none"},
        {".", 7, "none"},
        {"e5", 7, "none"},
        {"-", 7, "none"},
        {"", 7, "none"},
    };
    for (const auto& c : cases) {
        double value = 7;
        EXPECT_EQ(rest(&TextCursor::parseDouble, c.text, value), c.rest) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
    float single = 7;
    EXPECT_EQ(rest(&TextCursor::parseFloat, "1e39", single), "none");
    EXPECT_EQ(rest(&TextCursor::parseFloat, "1e-50", single), "");
    EXPECT_EQ(single, 0.0f);
    EXPECT_EQ(rest(&TextCursor::parseFloat, "16777217", single), "");
    EXPECT_EQ(single, 16777216.0f);
}

} // namespace
} // namespace Quenza
