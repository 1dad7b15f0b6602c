// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// Writes JSON as text, at any depth. Objects and arrays get a line per element; those that are begun as
/// `onOneLine`, and all inside them, share a line. Numbers take the shortest form that reads back the same;
/// ones that aren't finite are written as null and remembered, as JSON has none.
class JsonWriter {
public:
    void beginObject(bool onOneLine = false) { begin('{', onOneLine); }
    void endObject() { end('}'); }
    void beginArray(bool onOneLine = false) { begin('[', onOneLine); }
    void endArray() { end(']'); }
    void key(std::string_view name);

    void null() { put("null"); }
    void boolean(bool value) { put(value ? "true" : "false"); }
    void integer(int64_t value) { put(std::to_string(value)); }
    /// With a point or an exponent when `marked`, so that readers see that it's no whole number.
    void real(float value, bool marked = false);
    void number(double value);
    /// Bytes that aren't UTF-8 become U+FFFD.
    void text(std::string_view value);
    void vector(const Vector& value);
    /// Twelve numbers: offset, then axes.
    void matrix(const Matrix& value);

    bool allFinite() const { return allFinite_; }
    std::string take();

private:
    struct Level {
        bool onOneLine;
        bool empty = true;
    };
    void begin(char bracket, bool onOneLine);
    void end(char bracket);
    void put(std::string_view token);
    void separate();
    void newLine();

    std::string text_;
    std::vector<Level> levels_;
    bool afterKey_ = false;
    bool allFinite_ = true;
};

} // namespace headless
