// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/text_cursor.h"
#include "ply_reader/layout.h"

#include <string_view>

namespace Quenza::Ply {

/// The values of an ASCII body: words with white space between, whatever the lines are.
class AsciiValues {
public:
    explicit AsciiValues(std::string_view body) : cursor_(body) {}

    /// Throws Error for a word that isn't a value of the type. "nan", "inf" and "infinity" are floats.
    double read(Scalar type);
    /// The words are not looked at.
    void skip(Scalar type, long count);

private:
    std::string_view nextWord();

    TextCursor cursor_;
};

} // namespace Quenza::Ply
