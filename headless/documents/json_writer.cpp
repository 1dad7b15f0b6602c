// SPDX-License-Identifier: MIT
#include "headless/documents/json_writer.h"

#include "headless/documents/json_cursor.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace headless {

namespace {

/// Deeper levels aren't indented further: a file of a deep hierarchy would consist of spaces.
constexpr size_t MAX_INDENT = 40;

template <class Number>
std::string shortest(Number value) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    std::string text(buffer, result.ptr);
    // As a whole number it would lose its sign.
    return text == "-0" ? "-0.0" : text;
}

std::string quoted(std::string_view text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

void JsonWriter::begin(char bracket, bool onOneLine) {
    put({&bracket, 1});
    levels_.push_back({onOneLine || (!levels_.empty() && levels_.back().onOneLine)});
}

void JsonWriter::end(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!level.onOneLine && !level.empty) {
        newLine();
    }
    text_ += bracket;
}

void JsonWriter::key(std::string_view name) {
    separate();
    text_ += quoted(name);
    text_ += ": ";
    afterKey_ = true;
}

void JsonWriter::real(float value, bool marked) {
    if (!std::isfinite(value)) {
        allFinite_ = false;
        null();
        return;
    }
    std::string text = shortest(value);
    if (marked && text.find_first_of(".e") == std::string::npos) {
        text += ".0";
    }
    put(text);
}

void JsonWriter::number(double value) {
    if (!std::isfinite(value)) {
        allFinite_ = false;
        null();
        return;
    }
    put(shortest(value));
}

void JsonWriter::text(std::string_view value) {
    put(quoted(value));
}

void JsonWriter::vector(const Vector& value) {
    beginArray(true);
    for (const float component : {value.x, value.y, value.z}) {
        real(component);
    }
    endArray();
}

void JsonWriter::matrix(const Matrix& value) {
    beginArray(true);
    for (const Vector& v : {value.off, value.axisX, value.axisY, value.axisZ}) {
        for (const float component : {v.x, v.y, v.z}) {
            real(component);
        }
    }
    endArray();
}

std::string JsonWriter::take() {
    text_ += '\n';
    return std::move(text_);
}

void JsonWriter::put(std::string_view token) {
    separate();
    text_ += token;
}

void JsonWriter::separate() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levels_.empty()) {
        return;
    }
    Level& level = levels_.back();
    if (!level.empty) {
        text_ += level.onOneLine ? ", " : ",";
    }
    level.empty = false;
    if (!level.onOneLine) {
        newLine();
    }
}

void JsonWriter::newLine() {
    text_ += '\n';
    text_.append(2 * std::min(levels_.size(), MAX_INDENT), ' ');
}

} // namespace headless
