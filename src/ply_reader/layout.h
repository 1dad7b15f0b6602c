// SPDX-License-Identifier: MIT
#pragma once

#include "ply_reader/rply.h"

#include <string>
#include <vector>

/// What a PLY file's header says. Counts are of the file's making: nothing may be allocated by them.
namespace Quenza::Ply {

enum class Format { ASCII, LITTLE_ENDIAN_BINARY, BIG_ENDIAN_BINARY };

enum class Scalar { INT8, UINT8, INT16, UINT16, INT32, UINT32, FLOAT32, FLOAT64 };

/// Bytes of a value in a binary file.
constexpr unsigned scalarSize(Scalar type) {
    switch (type) {
    case Scalar::INT8:
    case Scalar::UINT8:
        return 1;
    case Scalar::INT16:
    case Scalar::UINT16:
        return 2;
    case Scalar::FLOAT64:
        return 8;
    default:
        return 4;
    }
}

} // namespace Quenza::Ply

struct t_ply_property_ {
    std::string name;
    Quenza::Ply::Scalar type;
    bool is_list = false;
    Quenza::Ply::Scalar length_type = Quenza::Ply::Scalar::UINT8; ///< Of the number in front of a list.
    p_ply_read_cb read_cb = nullptr;
    void* pdata = nullptr;
    long idata = 0;
};

struct t_ply_element_ {
    std::string name;
    long instances = 0;
    std::vector<t_ply_property_> properties;
};

struct t_ply_argument_ {
    p_ply_element element;
    long instance_index;
    p_ply_property property;
    long length;
    long value_index;
    double value;
};

namespace Quenza::Ply {

struct Layout {
    Format format = Format::ASCII;
    std::vector<t_ply_element_> elements;
};

} // namespace Quenza::Ply
