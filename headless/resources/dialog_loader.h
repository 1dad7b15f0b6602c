// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "headless/resources/dialog_resource.h"
#include "headless/resources/statement.h"
#include "headless/resources/symbol_table.h"

namespace headless::resources {

/// Loads one dialog: its layout dialogs/NAME.res and its texts strings_us/dialogs/NAME.str, with the numbers
/// of c4d_symbols.h. NAME is, in lower case, the name that the dialog's number has there. One loader serves
/// one dialog.
class DialogLoader {
public:
    /// @param root  the resource folder
    explicit DialogLoader(std::filesystem::path root) : root_(std::move(root)) {}

    /// Throws ResourceError: a missing file, a fault in one, an unknown or repeated name or number.
    DialogResource load(int32_t number);

private:
    void readSymbols();
    std::string nameOf(int32_t number) const;
    std::filesystem::path require(const std::filesystem::path& folder, const std::string& fileName) const;
    void readTexts(const std::filesystem::path& file);
    void readElements(const Statement& owner, DialogElement* group);
    void readElement(const Statement& statement, DialogElementKind kind);
    void readProperty(const Statement& property, DialogElement* element);
    void readName(const Statement& property, std::string& text) const;
    void readSize(const Statement& property, DialogElement& element) const;
    void readRange(const Statement& property, DialogElement& element) const;
    void readChoices(const Statement& property, DialogElement& element) const;
    int32_t numberOf(const Token& token) const;
    int32_t wholeNumber(const Token& token) const;
    const std::string& textOf(const Token& token) const;
    [[noreturn]] void fail(Position at, const std::string& message) const;

    std::filesystem::path root_;
    std::string symbolsFile_;
    SymbolTable symbols_;
    std::map<std::string, std::string> texts_;
    /// The file that is being read, as errors name it.
    std::string file_;
    std::map<int32_t, std::string> symbolOfId_;
    DialogResource dialog_;
};

} // namespace headless::resources
