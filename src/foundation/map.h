// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vector.h"

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

namespace Quenza {

template <std::integral K>
constexpr u64 mapHash(K key) {
    return static_cast<u64>(key);
}

constexpr u64 mapHash(SceneNodeUID key) {
    return key.value();
}

/// Addresses of heap objects, whose low four bits are all zero.
inline u64 mapHash(const void* key) {
    return reinterpret_cast<std::uintptr_t>(key) >> 4;
}

/// Starts at 1 and multiplies by (signed byte + 1), wrapping; a byte 0xFF thus zeroes it. The iteration order
/// of a map depends on it.
inline u64 mapHash(const String& key) {
    u64 hash = 1;
    for (const char c : key.view())
        hash *= static_cast<u64>(static_cast<i64>(static_cast<signed char>(c)) + 1);
    return hash;
}

/// Chained hash map. Iteration goes bucket by bucket, within a bucket in the order of insertion.
///
/// A key's bucket is its hash modulo the number of buckets, 4 at first. When an insertion brings the
/// whole-number quotient of entries and buckets above 8, the buckets double. An empty map holds no memory.
template <class K, class V>
class Map {
public:
    struct Entry {
        K key;
        V value;
    };

    Map() = default;
    Map(const Map& other) : bucket_count_(other.bucket_count_), size_(other.size_) {
        if (other.buckets_) {
            buckets_ = std::make_unique<Bucket[]>(bucket_count_);
            std::copy_n(other.buckets_.get(), bucket_count_, buckets_.get());
        }
    }
    Map(Map&& other) noexcept { swap(other); }
    Map& operator=(Map other) noexcept {
        swap(other);
        return *this;
    }

    u64 size() const { return size_; }
    bool empty() const { return size_ == 0; }
    u32 bucketCount() const { return bucket_count_; }

    /// Replaces the value when the key is there.
    void insert(const K& key, const V& value) {
        if (V* existing = find(key)) {
            *existing = value;
            return;
        }
        if (!buckets_)
            buckets_ = std::make_unique<Bucket[]>(bucket_count_);
        bucketOf(key).push_back(Entry{key, value});
        ++size_;
        if (size_ / bucket_count_ > MAX_LOAD)
            doubleBuckets();
    }
    /// The value, or null. Valid until the map changes.
    V* find(const K& key) {
        if (buckets_)
            for (Entry& entry : bucketOf(key))
                if (entry.key == key)
                    return &entry.value;
        return nullptr;
    }
    const V* find(const K& key) const { return const_cast<Map*>(this)->find(key); }
    bool contains(const K& key) const { return find(key) != nullptr; }

    void erase(const K& key) {
        if (!contains(key))
            return;
        Bucket kept;
        for (Entry& entry : bucketOf(key))
            if (!(entry.key == key))
                kept.push_back(std::move(entry));
        bucketOf(key) = std::move(kept);
        --size_;
    }
    void clear() { *this = Map(); }

    /// Calls `visit(key, value)` for every entry; the map must not change meanwhile.
    template <class Visit>
    void forEach(Visit&& visit) const {
        if (buckets_)
            for (u32 b = 0; b < bucket_count_; ++b)
                for (const Entry& entry : buckets_[b])
                    visit(entry.key, entry.value);
    }

private:
    using Bucket = Vector<Entry>;
    static constexpr u32 INITIAL_BUCKETS = 4;
    static constexpr u64 MAX_LOAD = 8;

    Bucket& bucketOf(const K& key) { return buckets_[mapHash(key) % bucket_count_]; }

    void doubleBuckets() {
        const std::unique_ptr<Bucket[]> old = std::move(buckets_);
        const u32 old_count = bucket_count_;
        bucket_count_ *= 2;
        buckets_ = std::make_unique<Bucket[]>(bucket_count_);
        for (u32 b = 0; b < old_count; ++b)
            for (Entry& entry : old[b])
                bucketOf(entry.key).push_back(std::move(entry));
    }
    void swap(Map& other) noexcept {
        std::swap(buckets_, other.buckets_);
        std::swap(bucket_count_, other.bucket_count_);
        std::swap(size_, other.size_);
    }

    std::unique_ptr<Bucket[]> buckets_;
    u32 bucket_count_ = INITIAL_BUCKETS;
    u32 size_ = 0;
};

} // namespace Quenza
