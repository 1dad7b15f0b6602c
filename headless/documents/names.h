// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace headless {

/// A number that documents write as a word.
struct NamedValue {
    const char* name;
    int32_t value;
};

inline std::optional<int32_t> valueOfName(std::initializer_list<NamedValue> table, std::string_view name) {
    for (const NamedValue& entry : table) {
        if (name == entry.name) {
            return entry.value;
        }
    }
    return std::nullopt;
}

inline const char* nameOfValue(std::initializer_list<NamedValue> table, int32_t value) {
    for (const NamedValue& entry : table) {
        if (value == entry.value) {
            return entry.name;
        }
    }
    return nullptr;
}

inline std::string listOfNames(std::initializer_list<NamedValue> table) {
    std::string list;
    for (const NamedValue& entry : table) {
        list += (list.empty() ? "" : ", ") + std::string(entry.name);
    }
    return list;
}

} // namespace headless
