// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "ply_reader/header.h"
#include "ply_reader/layout.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <string_view>

namespace Quenza::Ply {

/// The values of a binary body, one behind the other without gaps.
template <std::endian order>
class BinaryValues {
public:
    explicit BinaryValues(std::string_view body) : at_(body.data()), left_(body.size()) {}

    double read(Scalar type) {
        switch (type) {
        case Scalar::INT8:
            return take<std::int8_t>();
        case Scalar::UINT8:
            return take<std::uint8_t>();
        case Scalar::INT16:
            return take<std::int16_t>();
        case Scalar::UINT16:
            return take<std::uint16_t>();
        case Scalar::INT32:
            return take<i32>();
        case Scalar::UINT32:
            return take<u32>();
        case Scalar::FLOAT32:
            return double(take<float>());
        case Scalar::FLOAT64:
            return take<double>();
        }
        return 0;
    }

    void skip(Scalar type, long count) { advance(u64(count) * scalarSize(type)); }

private:
    template <class T>
    T take() {
        std::array<char, sizeof(T)> bytes;
        const char* const from = at_;
        advance(sizeof(T));
        std::memcpy(bytes.data(), from, sizeof(T));
        if constexpr (order != std::endian::native)
            std::reverse(bytes.begin(), bytes.end());
        return std::bit_cast<T>(bytes);
    }
    void advance(u64 size) {
        if (size > left_)
            throw Error("the file ends within its body");
        at_ += size;
        left_ -= size;
    }

    const char* at_;
    u64 left_;
};

} // namespace Quenza::Ply
