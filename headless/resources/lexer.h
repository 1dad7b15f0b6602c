// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "headless/resources/resource_error.h"

namespace headless::resources {

struct Token {
    enum class Kind { word, number, string, punctuation, end };

    Kind kind = Kind::end;
    /// The characters of the token; of a string, its value with the escapes resolved, in UTF-8.
    std::string text;
    Position position;

    bool is(char punctuationMark) const {
        return kind == Kind::punctuation && text.size() == 1 && text[0] == punctuationMark;
    }
};

/// How a token is named in an error text: 'name', "text", or the end of the file.
std::string describe(const Token& token);

/// Splits a resource file (.h, .res, .str share their tokens) into words, numbers, strings and punctuation.
/// Comments of both C kinds, preprocessor lines and a byte order mark are passed over.
class Lexer {
public:
    /// @param text  the file's bytes; must outlive the lexer
    /// @param file  the name that errors carry
    Lexer(std::string_view text, std::string file);

    /// The token that `take` will give next. Throws ResourceError, as `take` does.
    const Token& peek();
    Token take();

    /// Takes the next token when it is this mark; else fails, naming what was found.
    void expect(char punctuationMark);

    [[noreturn]] void fail(Position at, const std::string& message) const;
    const std::string& file() const { return file_; }

private:
    char current(size_t ahead = 0) const {
        return next_ + ahead < text_.size() ? text_[next_ + ahead] : '\0';
    }
    bool atEnd() const { return next_ >= text_.size(); }
    void advance(size_t bytes = 1);
    void skipBlanks();
    void skipBlockComment();
    void skipLine();
    Token scan();
    Token scanWord();
    Token scanNumber();
    Token scanString();
    void scanEscape(std::string& value);
    char32_t scanCodeUnit(Position at);

    std::string_view text_;
    std::string file_;
    size_t next_ = 0;
    Position position_;
    bool lineIsBlank_ = true;
    Token peeked_;
    bool hasPeeked_ = false;
};

} // namespace headless::resources
