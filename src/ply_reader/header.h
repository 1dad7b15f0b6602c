// SPDX-License-Identifier: MIT
#pragma once

#include "ply_reader/layout.h"

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace Quenza::Ply {

/// What is wrong with a file, for the error callback.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// True when a file's first line is that of a PLY file.
bool hasMagic(std::string_view file);

/// Reads the header of a file that hasMagic and returns the place of its body. Throws Error.
std::size_t readHeader(std::string_view file, Layout& layout);

} // namespace Quenza::Ply
