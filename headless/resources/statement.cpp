// SPDX-License-Identifier: MIT
#include "headless/resources/statement.h"

#include <utility>

namespace headless::resources {

namespace {

std::vector<Statement> parseBlock(Lexer& lexer, int depth);

Statement parseStatement(Lexer& lexer, int depth) {
    Statement statement;
    statement.position = lexer.peek().position;
    while (!lexer.peek().is(';') && !lexer.peek().is('{')) {
        const Token& token = lexer.peek();
        if (token.kind == Token::Kind::end || token.is('}'))
            lexer.fail(token.position,
                       "expected ';' but found " + describe(token) + "; end the statement before it");
        statement.words.push_back(lexer.take());
    }
    const Token mark = lexer.take();
    if (mark.is('{')) {
        if (depth == maxStatementDepth)
            lexer.fail(mark.position, "blocks lie more than " + std::to_string(maxStatementDepth) +
                                          " deep; flatten the groups");
        statement.hasBlock = true;
        statement.block = parseBlock(lexer, depth + 1);
        lexer.expect('}');
    }
    return statement;
}

/// Reads up to the '}' that ends the block, or the end of the file, and leaves it.
std::vector<Statement> parseBlock(Lexer& lexer, int depth) {
    std::vector<Statement> statements;
    while (lexer.peek().kind != Token::Kind::end && !lexer.peek().is('}')) {
        if (lexer.peek().is(';'))
            lexer.take();
        else
            statements.push_back(parseStatement(lexer, depth));
    }
    return statements;
}

} // namespace

std::vector<Statement> parseStatements(std::string_view text, const std::string& file) {
    Lexer lexer(text, file);
    std::vector<Statement> statements = parseBlock(lexer, 0);
    const Token rest = lexer.take();
    if (rest.kind != Token::Kind::end)
        lexer.fail(rest.position, "this '}' closes nothing; remove it");
    return statements;
}

} // namespace headless::resources
