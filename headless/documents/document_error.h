// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace headless {

/// A document or model that can't be read, or a file that can't be written: what, where, and what to do.
class DocumentError : public std::runtime_error {
public:
    DocumentError(const std::string& file, const std::string& text)
        : std::runtime_error(file + ": " + text) {}
};

} // namespace headless
