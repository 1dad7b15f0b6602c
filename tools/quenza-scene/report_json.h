// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

namespace scene_tool {

/// Keeps the order of its members.
using Json = nlohmann::ordered_json;

/// Prints a value on standard output. Bytes that are no UTF-8 become U+FFFD.
inline void printJson(const Json& value) {
    const std::string text = value.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

} // namespace scene_tool
