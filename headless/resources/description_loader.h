// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "headless/resources/description.h"
#include "headless/resources/element_reader.h"
#include "headless/resources/statement.h"
#include "headless/resources/symbol_table.h"

namespace headless::resources {

/// Loads one description: its .res, .h and .str files, those of the descriptions that it includes, and the
/// pages of the host's own base descriptions. One loader serves one description.
class DescriptionLoader {
public:
    /// @param root  the resource folder, which holds description/ and strings_us/description/
    explicit DescriptionLoader(std::filesystem::path root) : root_(std::move(root)) {}

    /// Throws ResourceError: a missing file, a fault in one, an unknown or repeated name or number.
    Description load(const std::string& name);

private:
    /// The file that is being read, and where new entries go.
    struct Scope {
        const std::string& file;
        const std::string& origin;
        std::optional<size_t> group;
    };

    std::string loadFiles(const std::string& fileName);
    void readLabels(const std::filesystem::path& file, const std::string& name);
    void readStatements(const std::vector<Statement>& statements, const Scope& scope);
    bool readDirective(const Statement& statement, const Scope& scope);
    void include(const Statement& statement, const Scope& scope);
    void addHostGroup(std::string_view base);
    void readElement(const Statement& statement, const Scope& scope);
    void nameEntry(Entry& entry, const Statement& statement, const Scope& scope) const;
    void readGroup(size_t index, const Statement& statement, const Scope& scope);
    void readGroupProperty(size_t index, const Statement& property, const Scope& scope);
    size_t openEntry(Entry entry, const Statement& statement, const Scope& scope);
    void setHidden(const Statement& statement, const Scope& scope, bool hidden);
    void assignLabels();
    std::filesystem::path require(const std::filesystem::path& folder, const std::string& fileName) const;

    std::filesystem::path root_;
    Description description_;
    SymbolTable symbols_;
    std::map<std::string, std::string> labels_;
    std::unordered_map<int32_t, size_t> indexOfId_;
    std::set<std::string> included_;
    int includeDepth_ = 0;
};

} // namespace headless::resources
