// SPDX-License-Identifier: MIT
#include "headless/resources/string_table.h"

#include <set>
#include <utility>

#include "headless/resources/statement.h"

namespace headless::resources {

namespace {

const Statement& findTable(const std::vector<Statement>& statements, const std::string& file) {
    if (statements.empty())
        throw ResourceError(file, "is empty; it must hold STRINGTABLE { ... }");
    const Statement& table = statements.front();
    if (table.keyword() != "STRINGTABLE" || !table.hasBlock)
        throw ResourceError(file, table.position, "expected STRINGTABLE { ... }");
    if (statements.size() > 1)
        throw ResourceError(file, statements[1].position,
                            "a second statement; one file holds one STRINGTABLE");
    return table;
}

} // namespace

std::vector<NamedText> parseStringFile(std::string_view text, const std::string& file) {
    const std::vector<Statement> statements = parseStatements(text, file);
    std::vector<NamedText> texts;
    std::set<std::string_view> seen;
    for (const Statement& line : findTable(statements, file).block) {
        const bool wellFormed = !line.hasBlock && line.words.size() == 2 && !line.keyword().empty() &&
                                line.words[1].kind == Token::Kind::string;
        if (!wellFormed)
            throw ResourceError(file, line.position, "expected a name, its text in double quotes and ';'");
        if (!seen.insert(line.keyword()).second)
            throw ResourceError(file, line.position,
                                "'" + line.words[0].text + "' has a text already; remove one of the two");
        texts.push_back({line.words[0].text, line.words[1].text, line.position});
    }
    return texts;
}

void StringTable::read(std::string_view text, const std::string& file, const SymbolTable& symbols) {
    for (NamedText& line : parseStringFile(text, file)) {
        const std::optional<int32_t> number = symbols.find(line.symbol);
        if (!number)
            throw ResourceError(file, line.position,
                                "'" + line.symbol + "' has no number; add it to c4d_symbols.h");
        if (!texts_.emplace(*number, std::move(line.text)).second)
            throw ResourceError(file, line.position,
                                "the number of '" + line.symbol + "' has a text already; give it a free one");
    }
}

const std::string* StringTable::find(int32_t number) const {
    const auto found = texts_.find(number);
    return found == texts_.end() ? nullptr : &found->second;
}

} // namespace headless::resources
