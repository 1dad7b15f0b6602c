// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/block_memory.h"
#include "foundation/types.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace Quenza {

/// Byte string, UTF-8 by convention, without a terminating zero.
///
/// The layout is fixed, since strings cross into the renderer's closed library: pointer to the bytes, size
/// and capacity, 64 bits each. An empty new string holds no memory; there is no small-buffer form.
///
/// Appending and assignment grow the capacity to the larger of 1.5 times itself (rounded down) and the need;
/// `reserve` and the constructors take exactly what is asked for.
class String {
public:
    String() = default;
    String(const char* text) : String(std::string_view(text)) {}
    String(const std::string& text) : String(std::string_view(text)) {}
    explicit String(std::string_view text);
    /// `count` times the character `c`.
    String(u64 count, char c);
    String(const String& other) : String(other.view()) {}
    String(String&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0)) {}
    ~String() { BlockMemory::free(data_, capacity_); }

    String& operator=(const String& other) {
        if (this != &other)
            assign(other.view());
        return *this;
    }
    String& operator=(const char* text) {
        assign(std::string_view(text));
        return *this;
    }
    String& operator=(const std::string& text) {
        assign(text);
        return *this;
    }
    String& operator=(String&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }

    u64 size() const { return size_; }
    u64 capacity() const { return capacity_; }
    bool empty() const { return size_ == 0; }
    const char* data() const { return data_; }
    char* data() { return data_; }
    char operator[](u64 index) const { return data_[index]; }
    char& operator[](u64 index) { return data_[index]; }
    const char* begin() const { return data_; }
    const char* end() const { return data_ + size_; }

    /// Valid until the string changes.
    std::string_view view() const { return std::string_view(data_, size_); }
    std::string toStdString() const { return std::string(view()); }

    /// Makes the capacity exactly `capacity` when that is more than now.
    void reserve(u64 capacity) {
        if (capacity > capacity_)
            setCapacity(capacity);
    }
    /// Empties the string and keeps its memory.
    void clear() { size_ = 0; }
    /// Bytes that the string grows by are not initialised.
    void resize(u64 size) {
        growTo(size);
        size_ = size;
    }
    /// `bytes` may lie in this string itself.
    void append(const char* bytes, u64 count) {
        if (count > capacity_ - size_) {
            appendGrowing(bytes, count);
        } else if (count > 0) {
            std::memcpy(data_ + size_, bytes, count);
            size_ += count;
        }
    }
    String& operator+=(const String& other) {
        append(other.data_, other.size_);
        return *this;
    }
    String& operator+=(const char* text) {
        append(text, std::strlen(text));
        return *this;
    }
    String& operator+=(const std::string& text) {
        append(text.data(), text.size());
        return *this;
    }
    String& operator+=(char c) {
        append(&c, 1);
        return *this;
    }

private:
    void assign(std::string_view text) {
        growTo(text.size());
        size_ = 0;
        append(text.data(), text.size());
    }
    void growTo(u64 needed) {
        if (needed > capacity_)
            setCapacity(std::max(capacity_ + capacity_ / 2, needed));
    }
    void appendGrowing(const char* bytes, u64 count);
    void setCapacity(u64 capacity);

    char* data_ = nullptr;
    u64 size_ = 0;
    u64 capacity_ = 0;
};

static_assert(sizeof(String) == 24, "strings cross into the renderer's library");

/// Sizes are compared first, then bytes: "a" and "a\0" differ.
inline bool operator==(const String& a, const String& b) {
    return a.view() == b.view();
}
inline bool operator==(const String& a, const char* b) {
    return a.view() == b;
}
/// By bytes, as unsigned values.
inline bool operator<(const String& a, const String& b) {
    return a.view() < b.view();
}

String concatenate(std::string_view a, std::string_view b);
inline String operator+(const String& a, const String& b) {
    return concatenate(a.view(), b.view());
}
inline String operator+(const String& a, const char* b) {
    return concatenate(a.view(), b);
}
inline String operator+(const char* a, const String& b) {
    return concatenate(a, b.view());
}
inline String operator+(const String& a, const std::string& b) {
    return concatenate(a.view(), b);
}
inline String operator+(const std::string& a, const String& b) {
    return concatenate(a, b.view());
}

} // namespace Quenza
