// SPDX-License-Identifier: MIT
#include "engine/qsl_lexer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace engine {

namespace {

/// The longer ones first.
constexpr std::string_view SYMBOLS[] = {"<=", ">=", "==", "!=", "&&", "||", "(", ")", ",",
                                        ":",  "+",  "-",  "*",  "/",  "<",  ">", "!"};
/// Above it neighbouring whole numbers are no longer told apart.
constexpr double MAX_INT = 16777216;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

size_t nameLength(std::string_view text) {
    size_t length = 0;
    while (length < text.size() && (isLetter(text[length]) || isDigit(text[length]))) {
        ++length;
    }
    return length;
}

} // namespace

const char* nameOf(QSLType type) {
    constexpr const char* NAMES[] = {"real", "int", "bool", "vec2", "vec3"};
    return NAMES[size_t(type)];
}

const char* nameOf(QSLOperator op) {
    constexpr const char* NAMES[] = {"||", "&&", "==", "!=", "<", "<=", ">",
                                     ">=", "+",  "-",  "*",  "/", "-",  "!"};
    return NAMES[size_t(op)];
}

std::string QSLToken::described() const {
    return kind == Kind::END ? "the end" : "'" + std::string(text) + "'";
}

QSLLexer::QSLLexer(std::string_view text, Quenza::u32 index) : rest_(text) {
    place_.text = index;
    advance();
}

void QSLLexer::fail(const std::string& reason) const {
    throw QSLFault{place_, reason};
}

/// Columns count characters: the later bytes of a UTF-8 sequence add none.
void QSLLexer::take(size_t bytes) {
    for (const char c : rest_.substr(0, bytes)) {
        if (c == '\n') {
            ++place_.line;
            place_.column = 1;
        } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++place_.column;
        }
    }
    rest_.remove_prefix(bytes);
}

void QSLLexer::skipBlanks() {
    while (!rest_.empty()) {
        const char c = rest_.front();
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            take(1);
        } else if (c == '#' || rest_.substr(0, 2) == "//") {
            take(std::min(rest_.find('\n'), rest_.size()));
        } else {
            return;
        }
    }
}

void QSLLexer::readNumber() {
    double number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    const auto length = size_t(end - rest_.data());
    token_.text = rest_.substr(0, length + nameLength(rest_.substr(length)));
    const bool real = token_.text.find_first_of(".eE") != std::string_view::npos;
    token_.kind = real ? QSLToken::Kind::REAL : QSLToken::Kind::INT;
    if (token_.text.size() != length) {
        fail(token_.described() + " is no number");
    }
    if (error != std::errc() || !std::isfinite(float(number)) || (!real && number > MAX_INT)) {
        fail(token_.described() + " is out of range");
    }
    token_.number = float(number);
}

void QSLLexer::advance() {
    skipBlanks();
    token_ = QSLToken();
    token_.place = place_;
    if (rest_.empty()) {
        return;
    }
    const char c = rest_.front();
    if (isLetter(c)) {
        token_.kind = QSLToken::Kind::NAME;
        token_.text = rest_.substr(0, nameLength(rest_));
    } else if (isDigit(c) || (c == '.' && rest_.size() > 1 && isDigit(rest_[1]))) {
        readNumber();
    } else {
        for (const std::string_view symbol : SYMBOLS) {
            if (token_.text.empty() && rest_.substr(0, symbol.size()) == symbol) {
                token_.kind = QSLToken::Kind::SYMBOL;
                token_.text = symbol;
            }
        }
        if (token_.text.empty()) {
            size_t length = 1;
            while (length < rest_.size() && (static_cast<unsigned char>(rest_[length]) & 0xC0) == 0x80) {
                ++length;
            }
            const bool shown = static_cast<unsigned char>(c) >= 0x20 && c != 0x7F;
            fail(shown ? "'" + std::string(rest_.substr(0, length)) + "' is not expected"
                       : "A control character is not expected");
        }
    }
    take(token_.text.size());
}

} // namespace engine
