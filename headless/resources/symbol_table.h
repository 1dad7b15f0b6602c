// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "headless/resources/resource_error.h"

namespace headless::resources {

/// The names that a header gives to numbers.
class SymbolTable {
public:
    /// Adds the entries of every `enum` of a header: values explicit (decimal, hexadecimal, octal, or the
    /// name of an earlier entry) or one above the entry before. Preprocessor lines are passed over, so guards
    /// do not matter. Throws ResourceError on anything but enums, on a name given twice with different values
    /// and on a value beyond 32 bits.
    void readHeader(std::string_view text, const std::string& file);

    /// Adds one name. False, and nothing changed, when the name stands for another number already.
    bool add(const std::string& name, int32_t value);

    std::optional<int32_t> find(const std::string& name) const;

    const std::unordered_map<std::string, int32_t>& all() const { return values_; }

private:
    std::unordered_map<std::string, int32_t> values_;
};

} // namespace headless::resources
