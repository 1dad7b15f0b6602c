// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdio>
#include <map>
#include <string>
#include <variant>

#include "headless/resources/description.h"

namespace headless::resources {

inline bool isDecoration(const Entry& entry) {
    return entry.kind == EntryKind::group || entry.kind == EntryKind::separator ||
           entry.kind == EntryKind::staticText;
}

/// A default as text: a whole number for a switch, quotes around texts, "-" for none.
struct DefaultText {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(bool value) const { return value ? "1" : "0"; }
    std::string operator()(int32_t value) const { return std::to_string(value); }
    std::string operator()(double value) const {
        char text[32];
        std::snprintf(text, sizeof text, "%g", value);
        return text;
    }
    std::string operator()(const std::array<double, 3>& value) const {
        return (*this)(value[0]) + " " + (*this)(value[1]) + " " + (*this)(value[2]);
    }
    std::string operator()(const std::string& value) const { return "'" + value + "'"; }
};

/// Number to "KEYWORD default" of everything in a description that holds a value.
inline std::map<int32_t, std::string> valuesOf(const Description& description) {
    std::map<int32_t, std::string> values;
    for (const Entry& entry : description.entries)
        if (!isDecoration(entry))
            values[entry.id] = entry.keyword + " " + std::visit(DefaultText(), entry.defaultValue);
    return values;
}

} // namespace headless::resources
