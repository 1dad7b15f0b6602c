// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "headless/resources/lexer.h"

namespace headless::resources {

/// The one form that .res and .str files are made of: words up to a ';', or words and a block in braces that
/// holds more of the same: `DEFAULT 3;`, `LONG SUBDIV_MAX { ... }`.
struct Statement {
    /// None of a bare block, at least one otherwise.
    std::vector<Token> words;
    std::vector<Statement> block;
    bool hasBlock = false;
    Position position;

    /// The first word, which says what the statement is; empty when it doesn't begin with a word.
    std::string_view keyword() const {
        return !words.empty() && words[0].kind == Token::Kind::word ? std::string_view(words[0].text)
                                                                    : std::string_view();
    }
};

/// How deep blocks may lie in each other. Real descriptions stay below ten.
inline constexpr int maxStatementDepth = 64;

/// Splits a whole file into statements. Throws ResourceError on a missing ';' or brace and on blocks that lie
/// deeper than `maxStatementDepth`.
std::vector<Statement> parseStatements(std::string_view text, const std::string& file);

} // namespace headless::resources
