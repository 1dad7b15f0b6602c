// SPDX-License-Identifier: MIT
#include "foundation/text_cursor.h"

#include <charconv>
#include <system_error>

namespace Quenza {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

template <class Unsigned>
bool parseDigits(const char*& at, const char* end, Unsigned& value) {
    const std::from_chars_result result = std::from_chars(at, end, value);
    if (result.ec != std::errc())
        return false;
    at = result.ptr;
    return true;
}

/// The exponent behind an "e", within limits far beyond those of any number; the text is well-formed.
i64 exponentOf(const char* at, const char* end) {
    constexpr i64 LIMIT = i64(1) << 60;
    const bool negative = *at == '-';
    i64 exponent = 0;
    for (at += negative || *at == '+' ? 1 : 0; at != end && exponent < LIMIT / 10; ++at)
        exponent = exponent * 10 + (*at - '0');
    return negative ? -exponent : exponent;
}

/// True when the number lies nearer to zero than any that has a value, false when it is too large. For the
/// text of a number that is one of both, without a sign.
bool isTiny(const char* at, const char* end) {
    i64 leading_exponent = 0; // that of the first digit other than zero
    bool found = false;
    bool behind_point = false;
    for (; at != end && *at != 'e' && *at != 'E'; ++at) {
        if (*at == '.') {
            behind_point = true;
        } else if (found) {
            leading_exponent += behind_point ? 0 : 1;
        } else {
            found = *at != '0';
            leading_exponent -= behind_point ? 1 : 0;
        }
    }
    return leading_exponent + (at == end ? 0 : exponentOf(at + 1, end)) < 0;
}

template <class Real>
bool parseReal(const char*& at, const char* end, Real& value) {
    const char* digits = at;
    if (digits != end && (*digits == '-' || *digits == '+'))
        ++digits;
    // What from_chars takes besides: "inf", "nan" and a second sign.
    if (digits == end || !(isDigit(*digits) || *digits == '.'))
        return false;
    const char* const begin = *at == '+' ? digits : at;
    Real parsed = 0;
    const std::from_chars_result result = std::from_chars(begin, end, parsed);
    if (result.ec == std::errc::result_out_of_range && isTiny(digits, result.ptr))
        parsed = 0;
    else if (result.ec != std::errc())
        return false;
    value = parsed;
    at = result.ptr;
    return true;
}

} // namespace

bool TextCursor::parseInt(i32& value) {
    const char* begin = at_;
    if (begin != end_ && *begin == '+') {
        ++begin;
        if (begin == end_ || !isDigit(*begin))
            return false;
    }
    if (!parseDigits(begin, end_, value))
        return false;
    at_ = begin;
    return true;
}

bool TextCursor::parseUInt(u32& value) {
    return parseDigits(at_, end_, value);
}

bool TextCursor::parseUInt64(u64& value) {
    return parseDigits(at_, end_, value);
}

bool TextCursor::parseDouble(double& value) {
    return parseReal(at_, end_, value);
}

bool TextCursor::parseFloat(float& value) {
    return parseReal(at_, end_, value);
}

std::string_view TextCursor::parseToken() {
    const char* const begin = at_;
    while (at_ != end_ && !isWhitespace(*at_))
        ++at_;
    return std::string_view(begin, u64(at_ - begin));
}

} // namespace Quenza
