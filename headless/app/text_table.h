// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace headless {

/// Rows of text in columns that are as wide as their widest cell, two blanks apart; the first row is the
/// head. A line end inside of a cell is written as a blank.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> head) : rows_{std::move(head)} {}

    /// As many cells as the head has.
    void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
    /// Without blanks at the ends of lines.
    std::string text() const;

private:
    std::vector<std::vector<std::string>> rows_;
};

} // namespace headless
