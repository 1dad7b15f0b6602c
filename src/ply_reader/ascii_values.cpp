// SPDX-License-Identifier: MIT
#include "ply_reader/ascii_values.h"

#include "ply_reader/header.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace Quenza::Ply {

namespace {

struct Range {
    double min;
    double max;
};

template <class T>
constexpr Range rangeOf() {
    return {double(std::numeric_limits<T>::lowest()), double(std::numeric_limits<T>::max())};
}

bool isFloat(Scalar type) {
    return type == Scalar::FLOAT32 || type == Scalar::FLOAT64;
}

Range rangeOf(Scalar type) {
    switch (type) {
    case Scalar::INT8:
        return rangeOf<std::int8_t>();
    case Scalar::UINT8:
        return rangeOf<std::uint8_t>();
    case Scalar::INT16:
        return rangeOf<std::int16_t>();
    case Scalar::UINT16:
        return rangeOf<std::uint16_t>();
    case Scalar::INT32:
        return rangeOf<i32>();
    case Scalar::UINT32:
        return rangeOf<u32>();
    case Scalar::FLOAT32:
        return rangeOf<float>();
    case Scalar::FLOAT64:
        return rangeOf<double>();
    }
    return {};
}

bool parseInteger(std::string_view word, double& value) {
    if (!word.empty() && word[0] == '+')
        word.remove_prefix(1);
    i64 integer = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), integer);
    value = double(integer);
    return error == std::errc() && end == word.data() + word.size();
}

/// The words of C's strtod for what is no finite number.
bool parseNonFinite(std::string_view word, double& value) {
    const bool negative = word[0] == '-';
    if (negative || word[0] == '+')
        word.remove_prefix(1);
    std::string lower;
    for (const char c : word.substr(0, sizeof "infinity"))
        lower += char(c | 0x20);
    if (lower == "nan")
        value = std::numeric_limits<double>::quiet_NaN();
    else if (lower == "inf" || lower == "infinity")
        value = std::numeric_limits<double>::infinity();
    else
        return false;
    value = std::copysign(value, negative ? -1.0 : 1.0);
    return true;
}

bool parseReal(std::string_view word, const Range& range, double& value) {
    TextCursor cursor(word);
    if (cursor.parseDouble(value) && cursor.atEnd())
        return value >= range.min && value <= range.max;
    return parseNonFinite(word, value);
}

} // namespace

std::string_view AsciiValues::nextWord() {
    cursor_.skipWhitespace();
    if (cursor_.atEnd())
        throw Error("the file ends within its body");
    return cursor_.parseToken();
}

double AsciiValues::read(Scalar type) {
    const std::string_view word = nextWord();
    const Range range = rangeOf(type);
    double value = 0;
    const bool good = isFloat(type) ? parseReal(word, range, value)
                                    : parseInteger(word, value) && value >= range.min && value <= range.max;
    if (!good)
        throw Error("'" + std::string(word.substr(0, 40)) + "' isn't a value of the property's type");
    return value;
}

void AsciiValues::skip(Scalar /*type*/, long count) {
    for (long i = 0; i < count; ++i)
        nextWord();
}

} // namespace Quenza::Ply
