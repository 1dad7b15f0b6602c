// SPDX-License-Identifier: MIT
#include "headless/app/text_table.h"

#include <algorithm>

namespace headless {

namespace {

size_t columnsOf(const std::string& text) {
    return static_cast<size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

} // namespace

std::string TextTable::text() const {
    std::vector<size_t> widths(rows_.front().size());
    for (const std::vector<std::string>& row : rows_) {
        for (size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], columnsOf(row[i]));
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows_) {
        std::string line;
        for (size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::string(widths[i] - columnsOf(row[i]) + 2, ' ');
        }
        std::ranges::replace(line, '\n', ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

} // namespace headless
