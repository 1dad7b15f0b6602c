// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/types.h"

#include <string>
#include <string_view>
#include <vector>

namespace Quenza {

class StringUtilsExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// Decimal digits, with a leading "-" when negative.
std::string toString(i32 value);
std::string toString(u32 value);
std::string toString(i64 value);
std::string toString(u64 value);

/// Shortest text that reads back as the same number: "0" for both zeros, "0.000001" but "1e-7", digits up to
/// 1e21 and exponents from there on, "Inf", "-Inf", "NaN".
std::string doubleToString(double value);
std::string floatToString(float value);

/// As printf's "%1.<n>f" in the C locale.
std::string doubleToStringNDecimalPlaces(double value, int n);
/// The same with `n` capped at 9.
std::string floatToStringNDecimalPlaces(float value, int n);

/// "true" or "false".
std::string boolToString(bool value);

/// The whole text must be a number; throws StringUtilsExcep.
double stringToDouble(const std::string& s);
float stringToFloat(const std::string& s);
/// Decimal, leading whitespace and a sign allowed, as strtol; the whole text must be a number that fits.
i32 stringToInt(const std::string& s);
/// Decimal digits alone.
u64 stringToUInt64(const std::string& s);

/// Lowers ASCII letters, leaves all other bytes.
std::string toLowerCase(std::string_view s);

/// "1023 B", "1.000 KB" and so on to GB, with three decimals from KB on.
std::string getPrettyFileSize(i64 bytes);

/// Two hexadecimal characters a byte; throws StringUtilsExcep on an odd length or another character.
std::vector<unsigned char> hexStringToBytes(const std::string& s);

} // namespace Quenza
