// SPDX-License-Identifier: MIT
#include "headless/documents/json_place.h"

namespace headless {

namespace {

/// Of a deep place only so many steps are told at either end.
constexpr size_t PLACE_ENDS = 10;

} // namespace

std::string placeText(const std::vector<JsonStep>& steps) {
    std::string place;
    for (size_t i = 0; i < steps.size(); ++i) {
        if (steps.size() > 2 * PLACE_ENDS && i == PLACE_ENDS) {
            place += " ... ";
            i = steps.size() - PLACE_ENDS;
        }
        if (steps[i].key) {
            place += (place.empty() ? "" : ".") + std::string(steps[i].key);
        } else {
            place += "[" + std::to_string(steps[i].index) + "]";
        }
    }
    return place;
}

} // namespace headless
