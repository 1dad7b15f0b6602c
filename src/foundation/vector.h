// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/block_memory.h"
#include "foundation/types.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Quenza {

/// Growable array. Indexes are not checked.
///
/// The layout is fixed, since vectors cross into the renderer's closed library: pointer to the elements, size
/// and capacity, 64 bits each. Adding elements grows the capacity to the larger of 1.5 times itself (rounded
/// down) and the need; `reserve` takes exactly what is asked for. A new vector holds no memory.
///
/// Plain records (trivially copyable types) are left uninitialised by `resize` and move as whole blocks.
template <class T>
class Vector {
    static constexpr bool PLAIN = std::is_trivially_copyable_v<T>;

public:
    using value_type = T;

    Vector() = default;
    explicit Vector(u64 size) : Vector() { resize(size); }
    Vector(u64 size, const T& value) : Vector() { resize(size, value); }
    Vector(std::initializer_list<T> values) : Vector() { append(values.begin(), values.size()); }
    Vector(const Vector& other) : Vector() { append(other.data_, other.size_); }
    Vector(Vector&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, 0)) {}
    ~Vector() {
        destroy(0, size_);
        BlockMemory::free(data_, capacity_ * sizeof(T));
    }
    Vector& operator=(const Vector& other) {
        if (this != &other) {
            clear();
            append(other.data_, other.size_);
        }
        return *this;
    }
    Vector& operator=(Vector&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }

    u64 size() const { return size_; }
    u64 capacity() const { return capacity_; }
    bool empty() const { return size_ == 0; }
    T* data() { return data_; }
    const T* data() const { return data_; }
    T* begin() { return data_; }
    T* end() { return data_ + size_; }
    const T* begin() const { return data_; }
    const T* end() const { return data_ + size_; }
    T& operator[](u64 index) { return data_[index]; }
    const T& operator[](u64 index) const { return data_[index]; }
    T& back() { return data_[size_ - 1]; }
    const T& back() const { return data_[size_ - 1]; }

    /// `value` may be an element of this vector.
    void push_back(const T& value) {
        if (size_ == capacity_) {
            T copy(value);
            growTo(size_ + 1);
            ::new (static_cast<void*>(data_ + size_)) T(std::move(copy));
        } else {
            ::new (static_cast<void*>(data_ + size_)) T(value);
        }
        ++size_;
    }
    void push_back(T&& value) {
        if (size_ == capacity_) {
            T moved(std::move(value));
            growTo(size_ + 1);
            ::new (static_cast<void*>(data_ + size_)) T(std::move(moved));
        } else {
            ::new (static_cast<void*>(data_ + size_)) T(std::move(value));
        }
        ++size_;
    }
    void pop_back() {
        --size_;
        data_[size_].~T();
    }
    /// Appends a block of `count` elements, which must not lie in this vector.
    void append(const T* values, u64 count) {
        if (count == 0)
            return;
        growTo(size_ + count);
        if constexpr (PLAIN) {
            std::memcpy(static_cast<void*>(data_ + size_), values, count * sizeof(T));
            size_ += count;
        } else {
            for (u64 i = 0; i < count; ++i, ++size_)
                ::new (static_cast<void*>(data_ + size_)) T(values[i]);
        }
    }
    /// Keeps the elements below `size`. New plain records are uninitialised, new objects default-constructed.
    void resize(u64 size) {
        if (size < size_) {
            shrinkTo(size);
            return;
        }
        growTo(size);
        if constexpr (PLAIN) {
            size_ = size;
        } else {
            for (; size_ < size; ++size_)
                ::new (static_cast<void*>(data_ + size_)) T();
        }
    }
    void resize(u64 size, const T& value) {
        if (size < size_) {
            shrinkTo(size);
            return;
        }
        const T copy(value);
        growTo(size);
        for (; size_ < size; ++size_)
            ::new (static_cast<void*>(data_ + size_)) T(copy);
    }
    /// Makes the capacity exactly `capacity` when that is more than now.
    void reserve(u64 capacity) {
        if (capacity > capacity_)
            setCapacity(capacity);
    }
    /// Destroys the elements and keeps the memory.
    void clear() { shrinkTo(0); }

private:
    void growTo(u64 needed) {
        if (needed > capacity_)
            setCapacity(std::max(capacity_ + capacity_ / 2, needed));
    }
    void setCapacity(u64 capacity) {
        if (capacity > u64(PTRDIFF_MAX) / sizeof(T))
            throw std::bad_alloc();
        const std::size_t old_bytes = capacity_ * sizeof(T);
        const std::size_t new_bytes = capacity * sizeof(T);
        if constexpr (PLAIN) {
            data_ = static_cast<T*>(
                BlockMemory::grow(static_cast<void*>(data_), size_ * sizeof(T), old_bytes, new_bytes));
        } else {
            T* block = static_cast<T*>(BlockMemory::allocate(new_bytes));
            std::uninitialized_move(data_, data_ + size_, block);
            destroy(0, size_);
            BlockMemory::free(static_cast<void*>(data_), old_bytes);
            data_ = block;
        }
        capacity_ = capacity;
    }
    void shrinkTo(u64 size) {
        destroy(size, size_);
        size_ = size;
    }
    void destroy(u64 from, u64 to) {
        if constexpr (!std::is_trivially_destructible_v<T>)
            std::destroy(data_ + from, data_ + to);
    }

    T* data_ = nullptr;
    u64 size_ = 0;
    u64 capacity_ = 0;
};

static_assert(sizeof(Vector<int>) == 24, "vectors cross into the renderer's library");

} // namespace Quenza
