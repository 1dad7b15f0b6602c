// SPDX-License-Identifier: MIT
#include "foundation/string_utils.h"

#include "foundation/number_format.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <double-conversion/double-conversion.h>
#include <limits>

namespace Quenza {

namespace {

/// Digits before the point of the largest double, plus its sign and the point.
constexpr std::size_t MAX_FIXED_CHARS = 312;

template <class Number>
std::string formatInteger(Number value) {
    char buffer[NumberFormat::MAX_CHARS];
    return std::string(buffer, NumberFormat::writeInteger(buffer, value));
}

// printf would take the decimal point of the process's locale, which belongs to the host.
std::string formatFixed(double value, int decimals) {
    const int places = std::max(decimals, 0);
    std::string text(MAX_FIXED_CHARS + std::size_t(places), '\0');
    const std::to_chars_result result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, places);
    text.resize(std::size_t(result.ptr - text.data()));
    return text;
}

using double_conversion::StringToDoubleConverter;

template <class Real>
Real stringToReal(const std::string& s, const char* kind,
                  Real (StringToDoubleConverter::*convert)(const char*, int, int*) const) {
    static const StringToDoubleConverter converter(
        StringToDoubleConverter::ALLOW_LEADING_SPACES | StringToDoubleConverter::ALLOW_TRAILING_SPACES,
        std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(), "Inf", "NaN");
    int processed = 0;
    const bool blank = s.find_first_not_of(" \t\r\n\v\f") == std::string::npos;
    if (!blank && s.size() <= std::size_t(std::numeric_limits<int>::max())) {
        const Real value = (converter.*convert)(s.data(), int(s.size()), &processed);
        if (processed == int(s.size()))
            return value;
    }
    throw StringUtilsExcep("Failed to convert '" + s + "' to " + kind + ".");
}

int hexDigitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    throw StringUtilsExcep(std::string("Invalid hex char '") + c + "'");
}

} // namespace

std::string toString(i32 value) {
    return formatInteger(value);
}
std::string toString(u32 value) {
    return formatInteger(value);
}
std::string toString(i64 value) {
    return formatInteger(value);
}
std::string toString(u64 value) {
    return formatInteger(value);
}

std::string doubleToString(double value) {
    char buffer[NumberFormat::MAX_CHARS];
    return std::string(buffer, NumberFormat::writeDouble(buffer, value));
}

std::string floatToString(float value) {
    char buffer[NumberFormat::MAX_CHARS];
    return std::string(buffer, NumberFormat::writeFloat(buffer, value));
}

std::string doubleToStringNDecimalPlaces(double value, int n) {
    return formatFixed(value, n);
}

std::string floatToStringNDecimalPlaces(float value, int n) {
    return formatFixed(double(value), std::min(n, 9));
}

std::string boolToString(bool value) {
    return value ? "true" : "false";
}

double stringToDouble(const std::string& s) {
    return stringToReal<double>(s, "a double", &StringToDoubleConverter::StringToDouble);
}

float stringToFloat(const std::string& s) {
    return stringToReal<float>(s, "a float", &StringToDoubleConverter::StringToFloat);
}

i32 stringToInt(const std::string& s) {
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(s.c_str(), &end, 10);
    if (s.empty() || end != s.c_str() + s.size() || errno == ERANGE ||
        value < std::numeric_limits<i32>::min() || value > std::numeric_limits<i32>::max())
        throw StringUtilsExcep("Failed to convert '" + s + "' to an int.");
    return i32(value);
}

u64 stringToUInt64(const std::string& s) {
    u64 value = 0;
    for (const char c : s) {
        if (c < '0' || c > '9')
            throw StringUtilsExcep("Failed to convert '" + s + "' to an uint64: Invalid character '" + c +
                                   "'");
        const u64 digit = u64(c - '0');
        if (value > (std::numeric_limits<u64>::max() - digit) / 10)
            throw StringUtilsExcep("Failed to convert '" + s + "' to an uint64: Value is too large.");
        value = value * 10 + digit;
    }
    return value;
}

std::string toLowerCase(std::string_view s) {
    std::string lower(s);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    return lower;
}

std::string getPrettyFileSize(i64 bytes) {
    if (bytes >= 0 && bytes <= 1023)
        return toString(bytes) + " B";
    if (bytes >= 0 && bytes <= 0xFFFFF)
        return floatToStringNDecimalPlaces(f32(bytes) / 1024.0f, 3) + " KB";
    if (bytes >= 0 && bytes <= 0x3FFFFFFF)
        return floatToStringNDecimalPlaces(f32(bytes) / 1048576.0f, 3) + " MB";
    return floatToStringNDecimalPlaces(f32(bytes) / 1073741824.0f, 3) + " GB";
}

std::vector<unsigned char> hexStringToBytes(const std::string& s) {
    if (s.size() % 2 != 0)
        throw StringUtilsExcep("Hex string must have an even number of hex chars.");
    std::vector<unsigned char> bytes(s.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(hexDigitValue(s[2 * i]) * 16 + hexDigitValue(s[2 * i + 1]));
    return bytes;
}

} // namespace Quenza
