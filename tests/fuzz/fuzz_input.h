// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// Writes the bytes to a file of this process in a folder of its own, which is deleted when the process ends,
/// and gives its path: the readers take files alone. `name` tells them the format by its extension.
Quenza::String writeInput(const char* name, const uint8_t* data, size_t size);

} // namespace fuzz
