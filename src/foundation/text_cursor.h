// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <string_view>

namespace Quenza {

/// Goes through a text from left to right, number by number. White space is the blank, tab, carriage return
/// and line feed alone. The text must outlive the cursor; nothing is copied, and no locale matters.
///
/// The parse functions stand still and return false where no such number begins; they skip nothing before it.
class TextCursor {
public:
    explicit TextCursor(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}

    bool atEnd() const { return at_ == end_; }
    /// The character at the cursor, which isn't at the end.
    char peek() const { return *at_; }
    /// By at most what is left.
    void advance(u64 n = 1) { at_ += n; }
    const char* position() const { return at_; }
    const char* end() const { return end_; }

    static bool isBlank(char c) { return c == ' ' || c == '\t'; }
    static bool isWhitespace(char c) { return isBlank(c) || c == '\n' || c == '\r'; }

    void skipWhitespace() {
        while (at_ != end_ && isWhitespace(*at_))
            ++at_;
    }
    /// Blanks and tabs: stays on the line.
    void skipBlanks() {
        while (at_ != end_ && isBlank(*at_))
            ++at_;
    }

    /// Decimal digits behind an optional sign; false as well when the number doesn't fit.
    bool parseInt(i32& value);
    /// Decimal digits without a sign; false as well when the number doesn't fit.
    bool parseUInt(u32& value);
    bool parseUInt64(u64& value);
    /// Optional sign, digits with an optional point among, before or behind them, optional exponent. No
    /// infinities and no NaN: too large a number is a failure, too small a one is zero.
    bool parseDouble(double& value);
    bool parseFloat(float& value);

    /// The characters up to white space or the end; may be empty.
    std::string_view parseToken();

private:
    const char* at_;
    const char* end_;
};

} // namespace Quenza
