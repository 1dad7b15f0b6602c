// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace headless {

/// A step from a part of a JSON document into one of its parts.
struct JsonStep {
    /// Null for an array's element.
    const char* key = nullptr;
    size_t index = 0;
};

/// "objects[2].tags[0].material"; of a deep place only both ends.
std::string placeText(const std::vector<JsonStep>& steps);

} // namespace headless
