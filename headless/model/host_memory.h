// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace headless {

/// Memory for an array that the plug-in gets and frees through the host's Free. Null when there is none left.
void* allocateForHost(std::size_t byteCount);
void freeForHost(void* memory);

} // namespace headless
