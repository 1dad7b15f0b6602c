// SPDX-License-Identifier: MIT
#include "foundation/string_utils.h"

#include "support/thrown_message.h"

#include <double-conversion/double-conversion.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace Quenza {
namespace {

constexpr double UNBOUNDED = std::numeric_limits<double>::infinity();

TEST(NumberTextTest, WritesDoublesInTheShortestForm) {
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {0.5, "0.5"},
        {1.0, "1"},
        {-1.0, "-1"},
        {0.1, "0.1"},
        {1.0 / 3.0, "0.3333333333333333"},
        {double(1.6f), "1.600000023841858"},
        {1e20, "100000000000000000000"},
        {123456789012345680000.0, "123456789012345680000"},
        {1e21, "1e21"},
        {-1.5e300, "-1.5e300"},
        {0.000001, "0.000001"},
        {0.0000001, "1e-7"},
        {-3.3333333333333333e-6, "-0.0000033333333333333333"},
        {9007199254740991.0, "9007199254740991"},
        {9007199254740992.0, "9007199254740992"},
        {18014398509481984.0, "18014398509481984"},
        {5e-324, "5e-324"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e308"},
        {UNBOUNDED, "Inf"},
        {-UNBOUNDED, "-Inf"},
        {std::nan(""), "NaN"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(doubleToString(c.value), c.text);
}

// Whole numbers take a way of their own; it must be the converter's.
TEST(NumberTextTest, AgreesWithTheConverterEverywhere) {
    using double_conversion::DoubleToStringConverter;
    const DoubleToStringConverter converter(DoubleToStringConverter::NO_FLAGS, "Inf", "NaN", 'e', -6, 21, 0,
                                            0);
    std::mt19937_64 random(1);
    for (int i = 0; i < 200000; ++i) {
        const u64 bits = random();
        const double value = i % 2 ? std::bit_cast<double>(bits) : double(i64(bits) >> (bits % 60));
        if (value == 0)
            continue;
        char buffer[128];
        double_conversion::StringBuilder builder(buffer, sizeof buffer);
        converter.ToShortest(value, &builder);
        ASSERT_EQ(doubleToString(value), builder.Finalize());
    }
}

TEST(NumberTextTest, WritesFixedDecimals) {
    EXPECT_EQ(doubleToStringNDecimalPlaces(2.0 / 3.0, 3), "0.667");
    EXPECT_EQ(doubleToStringNDecimalPlaces(-1e300, 1).size(), 304u);
    EXPECT_EQ(doubleToStringNDecimalPlaces(2.5, 0), "2");
    EXPECT_EQ(doubleToStringNDecimalPlaces(0.1, 30), "0.100000000000000005551115123126");
    EXPECT_EQ(floatToStringNDecimalPlaces(1.5f, 12), "1.500000000");
    EXPECT_EQ(floatToStringNDecimalPlaces(0.1f, 9), "0.100000001");
}

TEST(NumberTextTest, ReadsDoubles) {
    EXPECT_EQ(stringToDouble("-1.5e3"), -1500.0);
    EXPECT_EQ(stringToDouble(" 7 "), 7.0);
    EXPECT_EQ(stringToDouble("Inf"), UNBOUNDED);
    EXPECT_EQ(stringToDouble(doubleToString(0.1 + 0.2)), 0.1 + 0.2);
    for (const std::string bad : {"", " ", "1,5", "1.5x", "0x10", "x"})
        EXPECT_EQ(thrownMessage<StringUtilsExcep>([&] { stringToDouble(bad); }),
                  "Failed to convert '" + bad + "' to a double.");
}

TEST(NumberTextTest, ReadsIntegers) {
    EXPECT_EQ(stringToInt("-2147483648"), std::numeric_limits<i32>::min());
    EXPECT_EQ(stringToInt(" 42"), 42);
    for (const std::string bad : {"", "x", "12x", "1.5", "2147483648", "99999999999999999999"})
        EXPECT_EQ(thrownMessage<StringUtilsExcep>([&] { stringToInt(bad); }),
                  "Failed to convert '" + bad + "' to an int.");
    EXPECT_EQ(stringToUInt64("18446744073709551615"), std::numeric_limits<u64>::max());
    EXPECT_EQ(thrownMessage<StringUtilsExcep>([] { stringToUInt64("18446744073709551616"); }),
              "Failed to convert '18446744073709551616' to an uint64: Value is too large.");
    EXPECT_EQ(thrownMessage<StringUtilsExcep>([] { stringToUInt64("12-4"); }),
              "Failed to convert '12-4' to an uint64: Invalid character '-'");
}

TEST(StringUtilsTest, PrintsFileSizes) {
    const struct {
        i64 bytes;
        const char* text;
    } cases[] = {
        {0, "0 B"},
        {1023, "1023 B"},
        {1024, "1.000 KB"},
        {0xFFFFF, "1023.999 KB"},
        {0x100000, "1.000 MB"},
        {0x3FFFFFFF, "1024.000 MB"}, // as a float it is 2^30
        {0x40000000, "1.000 GB"},
        {-1, "-0.000 GB"},
        {-0x40000000, "-1.000 GB"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(getPrettyFileSize(c.bytes), c.text);
}

TEST(StringUtilsTest, ReadsHexBytes) {
    EXPECT_EQ(hexStringToBytes("00fFA9"), (std::vector<unsigned char>{0x00, 0xFF, 0xA9}));
    EXPECT_TRUE(hexStringToBytes("").empty());
    EXPECT_EQ(thrownMessage<StringUtilsExcep>([] { hexStringToBytes("abc"); }),
              "Hex string must have an even number of hex chars.");
    EXPECT_THROW(hexStringToBytes("0g"), StringUtilsExcep);
}

} // namespace
} // namespace Quenza
