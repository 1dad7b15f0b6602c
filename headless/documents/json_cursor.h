// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace headless {

/// Keys by name, found at once: hostile files have very many in one object.
using Json = nlohmann::json;

/// A place in a JSON document. Readings that fail throw DocumentError with the file and the place
/// ("objects[2].tags[0].material"), so that callers only say what they want.
class JsonCursor {
public:
    JsonCursor(const Json& value, const std::string& file) : value_(&value), file_(&file) {}

    const Json& json() const { return *value_; }
    const std::string& file() const { return *file_; }
    std::string place() const;
    [[noreturn]] void fail(const std::string& text) const;

    /// Fails unless this is an object whose keys are all in the list.
    void expectKeys(std::initializer_list<const char*> allowed) const;
    bool has(const char* key) const { return value_->is_object() && value_->contains(key); }
    /// Fails when the key is missing. The cursor is the parent of the result and must outlive it.
    JsonCursor at(const char* key) const;
    std::optional<JsonCursor> find(const char* key) const;

    /// Fails unless this is an array; with `count` only one of that many elements.
    size_t arraySize() const;
    void expectCount(size_t count) const;
    JsonCursor at(size_t index) const;

    bool boolean() const;
    /// A whole number within the range.
    int32_t integer(int32_t min = INT32_MIN, int32_t max = INT32_MAX) const;
    /// A finite number that a float can hold.
    float real() const;
    double number() const;
    const std::string& text() const;

private:
    JsonCursor(const Json& value, const JsonCursor& parent, const char* key, size_t index)
        : value_(&value), file_(parent.file_), parent_(&parent), key_(key), index_(index) {}

    const Json* value_;
    const std::string* file_;
    const JsonCursor* parent_ = nullptr;
    const char* key_ = nullptr;
    size_t index_ = 0;
};

} // namespace headless
