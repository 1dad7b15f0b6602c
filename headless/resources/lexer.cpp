// SPDX-License-Identifier: MIT
#include "headless/resources/lexer.h"

#include <utility>

#include "headless/resources/utf8.h"

namespace headless::resources {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWordStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isWordPart(char c) {
    return isWordStart(c) || isDigit(c);
}

int hexDigit(char c) {
    if (isDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

constexpr std::string_view punctuationMarks = ";{},=()~.:<>[]|&*/+-";

} // namespace

std::string describe(const Token& token) {
    switch (token.kind) {
    case Token::Kind::end:
        return "the end of the file";
    case Token::Kind::string:
        return "the text \"" + token.text + "\"";
    default:
        return "'" + token.text + "'";
    }
}

Lexer::Lexer(std::string_view text, std::string file) : text_(text), file_(std::move(file)) {
    if (text_.substr(0, 3) == "\xEF\xBB\xBF")
        next_ = 3;
}

const Token& Lexer::peek() {
    if (!hasPeeked_) {
        peeked_ = scan();
        hasPeeked_ = true;
    }
    return peeked_;
}

Token Lexer::take() {
    peek();
    hasPeeked_ = false;
    return std::move(peeked_);
}

void Lexer::expect(char punctuationMark) {
    const Token token = take();
    if (!token.is(punctuationMark))
        fail(token.position, std::string("expected '") + punctuationMark + "' but found " + describe(token));
}

void Lexer::fail(Position at, const std::string& message) const {
    throw ResourceError(file_, at, message);
}

void Lexer::advance(size_t bytes) {
    for (; bytes > 0 && !atEnd(); --bytes, ++next_) {
        if (text_[next_] == '\n') {
            ++position_.line;
            position_.column = 1;
            lineIsBlank_ = true;
        } else if (!isUtf8Continuation(text_[next_])) {
            ++position_.column;
        }
    }
}

void Lexer::skipBlanks() {
    while (!atEnd()) {
        const char c = current();
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n')
            advance();
        else if (c == '/' && current(1) == '/')
            skipLine();
        else if (c == '/' && current(1) == '*')
            skipBlockComment();
        else if (c == '#' && lineIsBlank_)
            skipLine();
        else
            return;
    }
}

void Lexer::skipLine() {
    while (!atEnd() && current() != '\n')
        advance();
}

void Lexer::skipBlockComment() {
    const Position start = position_;
    advance(2);
    while (!(current() == '*' && current(1) == '/')) {
        if (atEnd())
            fail(start, "this comment has no end; close it with '*/'");
        advance();
    }
    advance(2);
}

Token Lexer::scan() {
    skipBlanks();
    lineIsBlank_ = false;
    const char c = current();
    if (atEnd())
        return {Token::Kind::end, "", position_};
    if (isWordStart(c))
        return scanWord();
    const char afterSign = c == '-' || c == '+' ? current(1) : c;
    if (isDigit(afterSign) || (afterSign == '.' && isDigit(current(afterSign == c ? 1 : 2))))
        return scanNumber();
    if (c == '"')
        return scanString();
    if (punctuationMarks.find(c) != std::string_view::npos) {
        const Position start = position_;
        advance();
        return {Token::Kind::punctuation, std::string(1, c), start};
    }
    const size_t length = utf8SequenceLength(text_.substr(next_));
    if (length == 0)
        fail(position_, "this byte is not UTF-8; save the file as UTF-8");
    fail(position_, "unexpected character '" + std::string(text_.substr(next_, length)) + "'; remove it");
}

Token Lexer::scanWord() {
    Token token{Token::Kind::word, "", position_};
    for (; isWordPart(current()); advance())
        token.text += current();
    return token;
}

Token Lexer::scanNumber() {
    Token token{Token::Kind::number, "", position_};
    const auto isExponentSign = [&](char c) {
        const char before = token.text.back();
        const bool hex = token.text.find_first_of("xX") != std::string::npos;
        return (c == '-' || c == '+') && (before == 'e' || before == 'E') && !hex;
    };
    do {
        token.text += current();
        advance();
    } while (isWordPart(current()) || current() == '.' || isExponentSign(current()));
    return token;
}

Token Lexer::scanString() {
    Token token{Token::Kind::string, "", position_};
    advance();
    while (current() != '"') {
        if (atEnd() || current() == '\n')
            fail(token.position, "this text has no end; close it with '\"' on the same line, "
                                 "and write a line break as \\n");
        if (current() == '\\') {
            scanEscape(token.text);
            continue;
        }
        const size_t length = utf8SequenceLength(text_.substr(next_));
        if (length == 0)
            fail(position_, "this byte is not UTF-8; save the file as UTF-8");
        token.text += text_.substr(next_, length);
        advance(length);
    }
    advance();
    return token;
}

void Lexer::scanEscape(std::string& value) {
    const Position start = position_;
    const char kind = current(1);
    advance(2);
    switch (kind) {
    case 'n':
        value += '\n';
        return;
    case 't':
        value += '\t';
        return;
    case 'r':
        value += '\r';
        return;
    case '"':
    case '\'':
    case '\\':
        value += kind;
        return;
    case 'u':
        break;
    default:
        fail(start, "unknown escape; write a backslash itself as \\\\");
    }
    char32_t codePoint = scanCodeUnit(start);
    if (codePoint >= 0xD800 && codePoint < 0xDC00 && current() == '\\' && current(1) == 'u') {
        advance(2);
        const char32_t low = scanCodeUnit(start);
        if (low >= 0xDC00 && low < 0xE000)
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
    }
    if (codePoint >= 0xD800 && codePoint < 0xE000)
        fail(start, "half a surrogate pair is no character; write both halves, the high one first");
    appendUtf8(value, codePoint);
}

char32_t Lexer::scanCodeUnit(Position at) {
    char32_t unit = 0;
    for (int i = 0; i < 4; ++i) {
        const int digit = hexDigit(current());
        if (digit < 0)
            fail(at, "\\u takes four hexadecimal digits");
        unit = unit * 16 + static_cast<char32_t>(digit);
        advance();
    }
    return unit;
}

} // namespace headless::resources
