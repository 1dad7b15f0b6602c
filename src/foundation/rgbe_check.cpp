// SPDX-License-Identifier: MIT
#include "foundation/rgbe_check.h"

#include <charconv>
#include <cstdint>

namespace Quenza {

namespace {

constexpr size_t COMPONENTS = 4; ///< of a pixel: red, green, blue, exponent

/// Takes a line with its end away from the text.
std::string_view takeLine(std::string_view& text) {
    const size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return line;
}

/// Takes a number behind its axis away; 0 when they aren't there.
size_t takeLength(std::string_view& line, std::string_view axis) {
    size_t length = 0;
    if (line.starts_with(axis)) {
        const char* const begin = line.data() + axis.size();
        const char* const end = std::from_chars(begin, line.data() + line.size(), length).ptr;
        line.remove_prefix(static_cast<size_t>(end - line.data()));
        line.remove_prefix(line.find_first_not_of(' ') == line.npos ? line.size()
                                                                    : line.find_first_not_of(' '));
    }
    return length;
}

/// A row's mark is 2, 2 and its width in two bytes.
bool beginsRuns(std::string_view data) {
    return data.size() >= COMPONENTS && data[0] == 2 && data[1] == 2 &&
           (static_cast<uint8_t>(data[2]) & 0x80) == 0;
}

/// Takes one component of a row away: counts above 128 repeat one byte, others are followed by that many.
bool takeComponent(std::string_view& data, size_t width) {
    constexpr size_t REPEATED = 128;
    for (size_t done = 0; done < width;) {
        if (data.empty()) {
            return false;
        }
        const size_t count = static_cast<uint8_t>(data[0]);
        const bool isRepeated = count > REPEATED;
        const size_t pixels = isRepeated ? count - REPEATED : count;
        const size_t size = 1 + (isRepeated ? 1 : count);
        if (pixels == 0 || pixels > width - done || size > data.size()) {
            return false;
        }
        data.remove_prefix(size);
        done += pixels;
    }
    return true;
}

bool takeRow(std::string_view& data, size_t width) {
    if (!beginsRuns(data)) {
        return false;
    }
    data.remove_prefix(COMPONENTS);
    for (size_t component = 0; component < COMPONENTS; ++component) {
        if (!takeComponent(data, width)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool hasAllRadiancePixels(std::string_view bytes) {
    constexpr size_t LEAST_WIDTH = 8, WIDTH_END = 32768; // of pictures in runs
    if (!bytes.starts_with("#?RADIANCE\n") && !bytes.starts_with("#?RGBE\n")) {
        return true;
    }
    while (!takeLine(bytes).empty()) {
    }
    std::string_view size = takeLine(bytes);
    const size_t height = takeLength(size, "-Y ");
    const size_t width = takeLength(size, "+X ");
    if (width == 0 || height == 0) {
        return true;
    }
    if (width < LEAST_WIDTH || width >= WIDTH_END || !beginsRuns(bytes)) {
        return bytes.size() / COMPONENTS / width >= height;
    }
    for (size_t row = 0; row < height; ++row) {
        if (!takeRow(bytes, width)) {
            return false;
        }
    }
    return true;
}

} // namespace Quenza
