// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace headless {

/// A 64-bit hash of a sequence of values, at the speed of memory for arrays; not one against an adversary.
class ContentHash {
public:
    void add(uint64_t value) { state_ = mix(state_, value); }

    template <class T>
    void addBits(const T& value) {
        static_assert(std::is_trivially_copyable_v<T>);
        addBytes(&value, sizeof(T));
    }

    template <class T>
    void addArray(std::span<const T> values) {
        static_assert(std::is_trivially_copyable_v<T>);
        add(values.size());
        addBytes(values.data(), values.size_bytes());
    }

    void addBytes(const void* data, size_t size) {
        const auto* bytes = static_cast<const unsigned char*>(data);
        // Four independent lanes keep the multipliers busy.
        uint64_t lanes[4] = {state_, ~state_, state_ + size, state_ ^ multiplier};
        for (; size >= sizeof lanes; size -= sizeof lanes, bytes += sizeof lanes) {
            for (size_t lane = 0; lane < 4; ++lane) {
                lanes[lane] = mix(lanes[lane], load(bytes + lane * 8, 8));
            }
        }
        state_ = mix(mix(mix(lanes[0], lanes[1]), lanes[2]), lanes[3]);
        for (; size >= 8; size -= 8, bytes += 8) {
            add(load(bytes, 8));
        }
        if (size > 0) {
            add(load(bytes, size));
        }
    }

    uint64_t value() const { return state_; }

private:
    static constexpr uint64_t multiplier = 0x9E3779B97F4A7C15;

    static uint64_t load(const unsigned char* bytes, size_t size) {
        uint64_t value = 0;
        std::memcpy(&value, bytes, size);
        return value;
    }
    static uint64_t mix(uint64_t state, uint64_t value) {
        state = (std::rotl(state, 23) ^ value) * multiplier;
        return state ^ (state >> 29);
    }

    uint64_t state_ = 0x243F6A8885A308D3;
};

} // namespace headless
