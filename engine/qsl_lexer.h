// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_tree.h"
#include "foundation/types.h"

#include <string>
#include <string_view>

namespace engine {

struct QSLToken {
    enum class Kind { END, NAME, REAL, INT, SYMBOL };

    Kind kind = Kind::END;
    std::string_view text;
    float number = 0;
    QSLPlace place;

    bool is(std::string_view symbol) const { return kind == Kind::SYMBOL && text == symbol; }
    bool isName(std::string_view name) const { return kind == Kind::NAME && text == name; }
    /// For messages.
    std::string described() const;
};

/// Cuts a text into tokens. White space and comments, from "#" or "//" to the end of the line, stand anywhere
/// between them.
class QSLLexer {
public:
    QSLLexer(std::string_view text, Quenza::u32 index);

    const QSLToken& token() const { return token_; }
    /// Throws QSLFault at what is no token.
    void advance();

private:
    void skipBlanks();
    void take(size_t bytes);
    void readNumber();
    [[noreturn]] void fail(const std::string& reason) const;

    std::string_view rest_;
    QSLPlace place_;
    QSLToken token_;
};

} // namespace engine
