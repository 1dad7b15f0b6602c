// SPDX-License-Identifier: MIT
#include "headless/documents/json_cursor.h"

#include "headless/documents/document_error.h"
#include "headless/documents/json_place.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace headless {

std::string JsonCursor::place() const {
    std::vector<JsonStep> steps;
    for (const JsonCursor* step = this; step->parent_; step = step->parent_) {
        steps.push_back({step->key_, step->index_});
    }
    std::ranges::reverse(steps);
    return placeText(steps);
}

void JsonCursor::fail(const std::string& text) const {
    const std::string where = place();
    throw DocumentError(*file_, (where.empty() ? "" : where + ": ") + text);
}

void JsonCursor::expectKeys(std::initializer_list<const char*> allowed) const {
    if (!value_->is_object()) {
        fail("an object {...} is expected");
    }
    for (const auto& [key, value] : value_->items()) {
        const bool known = std::any_of(allowed.begin(), allowed.end(),
                                       [&key = key](const char* name) { return key == name; });
        if (!known) {
            std::string list;
            for (const char* const name : allowed) {
                list += (list.empty() ? "" : ", ") + std::string(name);
            }
            fail("unknown key \"" + key + "\"; known here: " + list);
        }
    }
}

JsonCursor JsonCursor::at(const char* key) const {
    if (!value_->is_object()) {
        fail("an object {...} is expected");
    }
    const auto found = value_->find(key);
    if (found == value_->end()) {
        fail(std::string("key \"") + key + "\" is missing");
    }
    return JsonCursor(*found, *this, key, 0);
}

std::optional<JsonCursor> JsonCursor::find(const char* key) const {
    if (!has(key)) {
        return std::nullopt;
    }
    return at(key);
}

size_t JsonCursor::arraySize() const {
    if (!value_->is_array()) {
        fail("an array [...] is expected");
    }
    return value_->size();
}

void JsonCursor::expectCount(size_t count) const {
    if (arraySize() != count) {
        fail(std::to_string(count) + " elements are expected, not " + std::to_string(value_->size()));
    }
}

JsonCursor JsonCursor::at(size_t index) const {
    return JsonCursor((*value_)[index], *this, nullptr, index);
}

bool JsonCursor::boolean() const {
    if (!value_->is_boolean()) {
        fail("true or false is expected");
    }
    return value_->get<bool>();
}

int32_t JsonCursor::integer(int32_t min, int32_t max) const {
    const double value = number();
    if (value != std::floor(value) || value < min || value > max) {
        fail("a whole number from " + std::to_string(min) + " to " + std::to_string(max) + " is expected");
    }
    return static_cast<int32_t>(value);
}

double JsonCursor::number() const {
    if (!value_->is_number()) {
        fail("a number is expected");
    }
    return value_->get<double>();
}

float JsonCursor::real() const {
    const double value = number();
    constexpr float LARGEST = std::numeric_limits<float>::max();
    if (std::fabs(value) <= static_cast<double>(LARGEST)) {
        return static_cast<float>(value);
    }
    // Short forms of the largest number lie a little above it.
    if (!(std::fabs(value) < static_cast<double>(LARGEST) * (1.0 + 1e-8))) {
        fail("the number is too large");
    }
    return value < 0.0 ? -LARGEST : LARGEST;
}

const std::string& JsonCursor::text() const {
    if (!value_->is_string()) {
        fail("a text is expected");
    }
    const std::string& text = value_->get_ref<const std::string&>();
    // No text of the host has one, and the scene format can't hold it.
    if (text.find('\0') != std::string::npos) {
        fail("a text can't hold a zero character");
    }
    return text;
}

} // namespace headless
