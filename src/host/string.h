// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The host's string: characters are Unicode code points, positions and lengths count them.
/// Held as UTF-8; bytes that aren't valid UTF-8 count as one character each and pass unchanged.
class String {
public:
    String() = default;
    String(const char* utf8) : bytes_(utf8 ? utf8 : "") {}
    String(std::string_view utf8) : bytes_(utf8) {}
    String(std::string utf8) : bytes_(std::move(utf8)) {}

    const std::string& GetUtf8() const { return bytes_; }
    const char* GetCString() const { return bytes_.c_str(); }

    int32_t GetLength() const;
    bool Content() const { return !bytes_.empty(); }

    /// Finds the first place of `text` at or behind character `start`.
    bool FindFirst(const String& text, int32_t* position, int32_t start = 0) const;
    bool FindLast(const String& text, int32_t* position) const;
    void Delete(int32_t position, int32_t count);
    void Insert(int32_t position, const String& text);
    String SubStr(int32_t start, int32_t count) const;
    /// ASCII letters only.
    String ToLower() const;
    /// The number at the start of the text, 0 when there is none.
    int32_t ToLong() const;
    float ToReal() const;

    String& operator+=(const String& other) {
        bytes_ += other.bytes_;
        return *this;
    }
    friend String operator+(String a, const String& b) {
        a.bytes_ += b.bytes_;
        return a;
    }
    bool operator==(const String&) const = default;
    auto operator<=>(const String&) const = default;

private:
    size_t ByteOffset(int32_t position) const;
    int32_t CharacterAt(size_t byteOffset) const;

    std::string bytes_;
};

String LongToString(int64_t value);
/// `decimals` digits behind the point (-1: the shortest form that reads back), padded in front with `fill` up
/// to `width` characters.
String RealToString(double value, int32_t width = -1, int32_t decimals = -1, char fill = ' ');
