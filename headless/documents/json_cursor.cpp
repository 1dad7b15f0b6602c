// SPDX-License-Identifier: MIT
#include "headless/documents/json_cursor.h"

#include "foundation/file_utils.h"
#include "headless/documents/document_error.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace headless {

namespace {

/// Of a deep place only so many steps are told at either end.
constexpr size_t PLACE_ENDS = 10;

} // namespace

std::string JsonCursor::place() const {
    std::vector<const JsonCursor*> steps;
    for (const JsonCursor* step = this; step->parent_; step = step->parent_) {
        steps.push_back(step);
    }
    std::string place;
    for (size_t i = steps.size(); i > 0; --i) {
        if (steps.size() > 2 * PLACE_ENDS && i == steps.size() - PLACE_ENDS) {
            place += " ... ";
            i = PLACE_ENDS;
        }
        const JsonCursor& step = *steps[i - 1];
        if (step.key_) {
            place += (place.empty() ? "" : ".") + std::string(step.key_);
        } else {
            place += "[" + std::to_string(step.index_) + "]";
        }
    }
    return place;
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

Json loadJson(const std::string& file) {
    std::string text;
    try {
        text = Quenza::FileUtils::readEntireFile(file);
    } catch (const Quenza::FileUtils::FileUtilsExcep&) {
        throw DocumentError(file, "the file can't be opened for reading");
    }
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        const size_t at = std::min(error.byte > 0 ? error.byte - 1 : 0, text.size());
        const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
        const size_t lineStart = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
        const std::string what = error.what();
        const size_t reason = what.find(": ");
        throw DocumentError(file, "line " + std::to_string(line) + ", column " +
                                      std::to_string(at - lineStart + 1) + ": not valid JSON" +
                                      (reason == std::string::npos ? "" : what.substr(reason)));
    } catch (const Json::exception& error) {
        throw DocumentError(file, std::string("not valid JSON: ") + error.what());
    }
}

} // namespace headless
