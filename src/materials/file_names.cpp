// SPDX-License-Identifier: MIT
#include "materials/file_names.h"

#include "foundation/utf8.h"
#include "host/general.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

/// Bytes of a whole name. File systems take 255, but Windows 260 for a path with its folders.
constexpr size_t MAX_LENGTH = 120;

/// Names of devices, taken on Windows with whatever suffix. Upper case.
constexpr std::string_view DEVICES[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "COM", "LPT"};

bool isForbidden(char c) {
    constexpr std::string_view FORBIDDEN = "<>:\"/\\|?*\x7f";
    return static_cast<unsigned char>(c) < 0x20 || FORBIDDEN.find(c) != std::string_view::npos;
}

std::string withLegalCharacters(std::string text) {
    std::replace_if(text.begin(), text.end(), isForbidden, '_');
    for (size_t bad = 0; (bad = Quenza::findInvalidUTF8(text)) != std::string_view::npos;) {
        text[bad] = '_';
    }
    return text;
}

/// At most `length` bytes from the start, whole characters.
std::string_view beginning(const std::string& text, size_t length) {
    while (length > 0 && length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
        --length;
    }
    return std::string_view(text).substr(0, length);
}

std::string checksum(const std::string& text) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%08x", CalcCRC32(text.data(), text.size(), 0));
    return digits;
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isDigit(std::string_view text) {
    // COM and LPT count with superscript digits too.
    return (text.size() == 1 && text[0] >= '0' && text[0] <= '9') || text == "\xC2\xB9" ||
           text == "\xC2\xB2" || text == "\xC2\xB3";
}

bool isDevice(const std::string& name) {
    // Only what stands before the first dot counts, without the blanks before that.
    std::string base = name.substr(0, name.find('.'));
    base.erase(base.find_last_not_of(' ') + 1);
    std::transform(base.begin(), base.end(), base.begin(), upper);
    return std::any_of(std::begin(DEVICES), std::end(DEVICES), [&base](std::string_view device) {
        const bool isNumbered = device == "COM" || device == "LPT";
        return base.starts_with(device) &&
               (isNumbered ? isDigit(std::string_view(base).substr(device.size())) : base == device);
    });
}

} // namespace

String legalFileName(const String& stem, const String& tail) {
    std::string front = withLegalCharacters(stem.GetUtf8());
    const std::string back = withLegalCharacters(tail.GetUtf8());
    if (front.size() + back.size() > MAX_LENGTH) {
        const std::string sum = "_" + checksum(stem.GetUtf8());
        const size_t taken = sum.size() + back.size();
        front = std::string(beginning(front, MAX_LENGTH - std::min(MAX_LENGTH, taken))) + sum;
    }
    std::string name = front + back;
    // Windows drops dots and blanks at the end of a name.
    const size_t end = name.find_last_not_of(". ") + 1;
    std::fill(name.begin() + static_cast<std::ptrdiff_t>(end), name.end(), '_');
    if (name.empty() || isDevice(name)) {
        name.insert(name.begin(), '_');
    }
    return String(std::move(name));
}

String replaceAll(const String& text, const String& searched, const String& replacement) {
    const std::string& from = searched.GetUtf8();
    const std::string& source = text.GetUtf8();
    std::string result;
    size_t done = 0;
    for (size_t found = 0; (found = source.find(from, done)) != std::string::npos;) {
        result.append(source, done, found - done).append(replacement.GetUtf8());
        done = found + from.size();
    }
    return String(result.append(source, done));
}
