// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "headless/resources/resource_error.h"
#include "headless/resources/symbol_table.h"

namespace headless::resources {

/// One line of a .str file, its name not yet looked up.
struct NamedText {
    std::string symbol;
    std::string text;
    Position position;
};

/// Reads `STRINGTABLE [name] { SYMBOL "text"; ... }`. A name that comes twice is an error. Throws
/// ResourceError.
std::vector<NamedText> parseStringFile(std::string_view text, const std::string& file);

/// The plug-in's numbered texts.
class StringTable {
public:
    /// Adds a .str file whose names `symbols` knows. Throws ResourceError.
    void read(std::string_view text, const std::string& file, const SymbolTable& symbols);

    /// The text of a number, or null. Belongs to the table.
    const std::string* find(int32_t number) const;

    const std::map<int32_t, std::string>& all() const { return texts_; }

private:
    std::map<int32_t, std::string> texts_;
};

} // namespace headless::resources
