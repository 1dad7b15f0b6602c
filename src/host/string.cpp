// SPDX-License-Identifier: MIT
#include "host/string.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>

namespace {

/// Length in bytes of the character that begins at `text[at]`; 1 for a byte that begins none.
size_t characterLength(const std::string& text, size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 1;
    if (lead > 0xF4 || at + length > text.size()) {
        return 1;
    }
    for (size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) {
            return 1;
        }
    }
    return length;
}

} // namespace

size_t String::ByteOffset(int32_t position) const {
    size_t at = 0;
    for (int32_t i = 0; i < position && at < bytes_.size(); ++i) {
        at += characterLength(bytes_, at);
    }
    return at;
}

int32_t String::CharacterAt(size_t byteOffset) const {
    int32_t count = 0;
    for (size_t at = 0; at < byteOffset; at += characterLength(bytes_, at)) {
        ++count;
    }
    return count;
}

int32_t String::GetLength() const {
    return CharacterAt(bytes_.size());
}

bool String::FindFirst(const String& text, int32_t* position, int32_t start) const {
    const size_t found = bytes_.find(text.bytes_, ByteOffset(start));
    if (found == std::string::npos) {
        return false;
    }
    if (position) {
        *position = CharacterAt(found);
    }
    return true;
}

bool String::FindLast(const String& text, int32_t* position) const {
    const size_t found = bytes_.rfind(text.bytes_);
    if (found == std::string::npos) {
        return false;
    }
    if (position) {
        *position = CharacterAt(found);
    }
    return true;
}

void String::Delete(int32_t position, int32_t count) {
    const size_t from = ByteOffset(position);
    const size_t to = ByteOffset(position + std::max(count, 0));
    bytes_.erase(from, to - from);
}

void String::Insert(int32_t position, const String& text) {
    bytes_.insert(ByteOffset(position), text.bytes_);
}

String String::SubStr(int32_t start, int32_t count) const {
    const size_t from = ByteOffset(start);
    const size_t to = ByteOffset(start + std::max(count, 0));
    return String(bytes_.substr(from, to - from));
}

String String::ToLower() const {
    std::string lowered = bytes_;
    for (char& c : lowered) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return String(std::move(lowered));
}

int32_t String::ToLong() const {
    return static_cast<int32_t>(
        std::clamp<long long>(std::strtoll(bytes_.c_str(), nullptr, 10), INT32_MIN, INT32_MAX));
}

float String::ToReal() const {
    return std::strtof(bytes_.c_str(), nullptr);
}

String LongToString(int64_t value) {
    return String(std::to_string(value));
}

String RealToString(double value, int32_t width, int32_t decimals, char fill) {
    char buffer[400];
    std::string text;
    if (decimals < 0) {
        text.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    } else {
        text.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed,
                                          std::min(decimals, 40))
                                .ptr);
    }
    if (width > 0 && text.size() < static_cast<size_t>(width)) {
        text.insert(0, static_cast<size_t>(width) - text.size(), fill);
    }
    return String(std::move(text));
}
