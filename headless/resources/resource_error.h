// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace headless::resources {

/// A place in a text file; both count from 1. A column is one character, however many bytes it takes.
struct Position {
    int line = 1;
    int column = 1;
};

/// A fault in a resource file. The text reads "file:line:column: what is wrong; what to do", without the
/// numbers when the file as a whole is at fault. Thrown by the parsers; `ResourceFolder` turns it into a
/// text.
class ResourceError : public std::runtime_error {
public:
    ResourceError(const std::string& file, const std::string& message)
        : std::runtime_error(file + ": " + message) {}
    ResourceError(const std::string& file, Position at, const std::string& message)
        : std::runtime_error(file + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": " +
                             message) {}
};

} // namespace headless::resources
