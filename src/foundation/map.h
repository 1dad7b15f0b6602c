// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vector.h"

#include <algorithm>
#include <concepts>
#include <map>
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
///
/// Keys of a file may be made to meet in one bucket. A bucket that has grown long keeps its keys in order as
/// well, so that this costs little time. Keys need == and <.
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
        bucketOf(key).add(Entry{key, value});
        ++size_;
        if (size_ / bucket_count_ > MAX_LOAD)
            doubleBuckets();
    }
    /// The value, or null. Valid until the map changes.
    V* find(const K& key) { return buckets_ ? bucketOf(key).find(key) : nullptr; }
    const V* find(const K& key) const { return const_cast<Map*>(this)->find(key); }
    bool contains(const K& key) const { return find(key) != nullptr; }

    void erase(const K& key) {
        if (!contains(key))
            return;
        Bucket kept;
        for (Entry& entry : bucketOf(key).entries)
            if (!(entry.key == key))
                kept.add(std::move(entry));
        bucketOf(key) = std::move(kept);
        --size_;
    }
    void clear() { *this = Map(); }

    /// Calls `visit(key, value)` for every entry; the map must not change meanwhile.
    template <class Visit>
    void forEach(Visit&& visit) const {
        if (buckets_)
            for (u32 b = 0; b < bucket_count_; ++b)
                for (const Entry& entry : buckets_[b].entries)
                    visit(entry.key, entry.value);
    }

private:
    struct Bucket {
        Vector<Entry> entries;
        /// Places of the keys in `entries`, once these are too many to look through.
        std::unique_ptr<std::map<K, u64>> places;

        Bucket() = default;
        Bucket(Bucket&&) noexcept = default;
        Bucket& operator=(Bucket&&) noexcept = default;
        Bucket& operator=(const Bucket& other) {
            entries = other.entries;
            places = other.places ? std::make_unique<std::map<K, u64>>(*other.places) : nullptr;
            return *this;
        }

        V* find(const K& key) {
            if (places) {
                const auto place = places->find(key);
                return place == places->end() ? nullptr : &entries[place->second].value;
            }
            for (Entry& entry : entries)
                if (entry.key == key)
                    return &entry.value;
            return nullptr;
        }
        void add(Entry&& entry) {
            entries.push_back(std::move(entry));
            if (places)
                places->emplace(entries.back().key, entries.size() - 1);
            else if (entries.size() > MAX_LOOKED_THROUGH)
                keepPlaces();
        }
        void keepPlaces() {
            places = std::make_unique<std::map<K, u64>>();
            for (u64 i = 0; i < entries.size(); ++i)
                places->emplace(entries[i].key, i);
        }
    };
    static constexpr u64 MAX_LOOKED_THROUGH = 64;
    static constexpr u32 INITIAL_BUCKETS = 4;
    static constexpr u64 MAX_LOAD = 8;

    Bucket& bucketOf(const K& key) { return buckets_[mapHash(key) % bucket_count_]; }

    void doubleBuckets() {
        const std::unique_ptr<Bucket[]> old = std::move(buckets_);
        const u32 old_count = bucket_count_;
        bucket_count_ *= 2;
        buckets_ = std::make_unique<Bucket[]>(bucket_count_);
        for (u32 b = 0; b < old_count; ++b)
            for (Entry& entry : old[b].entries)
                bucketOf(entry.key).add(std::move(entry));
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
