// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "headless/resources/description.h"
#include "headless/resources/statement.h"
#include "headless/resources/symbol_table.h"

namespace headless::resources {

/// The kind that a keyword of a .res file stands for, `other` for one that is not known here.
EntryKind kindOfKeyword(std::string_view keyword);

/// True for the kinds that can stand without a name and number.
bool mayBeAnonymous(EntryKind kind);

/// Reads the properties of elements other than groups: defaults, ranges, unit, cycle, accepted types and
/// flags. A property without a field of its own goes to `Entry::properties`.
class ElementReader {
public:
    /// Both must outlive the reader.
    ElementReader(const SymbolTable& symbols, const std::string& file) : symbols_(symbols), file_(file) {}

    /// Fills `entry`, whose kind and keyword are set, from the element's block. Throws ResourceError.
    void read(Entry& entry, const Statement& element) const;

    /// Keeps a statement that has no meaning here.
    static void keep(Entry& entry, const Statement& property);

    /// The one whole number that a property such as `COLUMNS 2` carries, or the number of a name.
    int32_t wholeNumber(const Statement& property) const;

private:
    void readProperty(Entry& entry, const Statement& property) const;
    bool readRange(Entry& entry, const Statement& property) const;
    void readUnit(Entry& entry, const Statement& property) const;
    void readDefault(Entry& entry, const Statement& property) const;
    void readCycle(Entry& entry, const Statement& property) const;
    std::vector<std::string> names(const Statement& property) const;
    std::string text(const Statement& property) const;
    double number(const Token& token) const;
    const Token& onlyArgument(const Statement& property) const;
    [[noreturn]] void fail(Position at, const std::string& message) const;

    const SymbolTable& symbols_;
    const std::string& file_;
};

} // namespace headless::resources
