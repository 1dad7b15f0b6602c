// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <string>
#include <string_view>

namespace headless {

/// The process's standard streams, shared by console lines, error lines and one status line. The status line
/// stands below the others on a terminal, drawn in place, and never reaches a pipe or file. Any thread.
class Terminal {
public:
    Terminal();
    ~Terminal();

    /// Writes a line to standard output.
    void print(std::string_view line);
    /// Writes a line to standard error.
    void printError(std::string_view line);
    /// Shows a status line in place of the last; "" takes it away.
    void showStatus(const std::string& text);

private:
    void erase();
    void draw();

    const bool showsStatus_;
    std::mutex mutex_;
    std::string status_;
};

/// `text` cut to a number of columns; a code point counts as one.
std::string cutToColumns(std::string_view text, size_t columns);

/// Elapsed time as "0:07", "12:34" or "1:02:03".
std::string elapsedText(long long seconds);

} // namespace headless
