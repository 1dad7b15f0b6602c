// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Quenza::PlatformMemory {

/// Returns a block at a multiple of `alignment`, backed by huge pages where the system has them, or null.
void* allocateLarge(std::size_t bytes, std::size_t alignment);

void freeLarge(void* block) noexcept;

} // namespace Quenza::PlatformMemory
