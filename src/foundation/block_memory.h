// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// The memory behind String and Vector: blocks that grow. From 4 MiB on a block is aligned to huge pages and
/// the system is asked to use them, which matters for meshes of millions of elements.
namespace Quenza::BlockMemory {

inline constexpr std::size_t LARGE_BLOCK_BYTES = std::size_t(4) << 20;
inline constexpr std::size_t LARGE_BLOCK_ALIGNMENT = std::size_t(2) << 20;

/// Returns an uninitialised block; throws std::bad_alloc.
void* allocate(std::size_t bytes);

/// `bytes` is the size that the block was allocated with. A null block is ignored.
void free(void* block, std::size_t bytes) noexcept;

/// Moves a block to a size of `new_bytes`, keeping its first `used_bytes`; throws std::bad_alloc, and the old
/// block then stays as it is. A null block with `old_bytes` 0 is allocated.
void* grow(void* block, std::size_t used_bytes, std::size_t old_bytes, std::size_t new_bytes);

} // namespace Quenza::BlockMemory
