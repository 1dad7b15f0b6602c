// SPDX-License-Identifier: MIT
#include "headless/resources/symbol_table.h"

#include <limits>

#include "headless/resources/lexer.h"
#include "headless/resources/numbers.h"

namespace headless::resources {

namespace {

int32_t readValue(Lexer& lexer, const SymbolTable& symbols) {
    const Token token = lexer.take();
    std::optional<int32_t> value;
    if (token.kind == Token::Kind::number)
        value = parseInteger(token.text);
    else if (token.kind == Token::Kind::word)
        value = symbols.find(token.text);
    if (!value)
        lexer.fail(token.position, describe(token) +
                                       " is no value; write a 32-bit whole number or the name of an "
                                       "earlier entry");
    return *value;
}

void readEnum(Lexer& lexer, SymbolTable& symbols) {
    if (lexer.peek().kind == Token::Kind::word)
        lexer.take();
    lexer.expect('{');
    int64_t next = 0;
    while (!lexer.peek().is('}')) {
        const Token name = lexer.take();
        if (name.kind != Token::Kind::word)
            lexer.fail(name.position, "expected the name of an entry but found " + describe(name));
        if (lexer.peek().is('=')) {
            lexer.take();
            next = readValue(lexer, symbols);
        }
        if (next > std::numeric_limits<int32_t>::max())
            lexer.fail(name.position,
                       "the number of '" + name.text + "' is beyond 32 bits; give it a smaller one");
        if (!symbols.add(name.text, static_cast<int32_t>(next)))
            lexer.fail(name.position, "'" + name.text + "' has another number already; choose another name");
        ++next;
        if (!lexer.peek().is('}'))
            lexer.expect(',');
    }
    lexer.take();
    lexer.expect(';');
}

} // namespace

void SymbolTable::readHeader(std::string_view text, const std::string& file) {
    Lexer lexer(text, file);
    while (lexer.peek().kind != Token::Kind::end) {
        const Token token = lexer.take();
        if (token.kind != Token::Kind::word || token.text != "enum")
            lexer.fail(token.position, "expected 'enum' but found " + describe(token) +
                                           "; a resource header holds nothing else");
        readEnum(lexer, *this);
    }
}

bool SymbolTable::add(const std::string& name, int32_t value) {
    return values_.emplace(name, value).first->second == value;
}

std::optional<int32_t> SymbolTable::find(const std::string& name) const {
    const auto found = values_.find(name);
    if (found == values_.end())
        return std::nullopt;
    return found->second;
}

} // namespace headless::resources
