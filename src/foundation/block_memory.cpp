// SPDX-License-Identifier: MIT
#include "foundation/block_memory.h"

#include "foundation/platform_memory.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace Quenza::BlockMemory {

namespace {

bool isLarge(std::size_t bytes) {
    return bytes >= LARGE_BLOCK_BYTES;
}

} // namespace

void* allocate(std::size_t bytes) {
    if (bytes == 0)
        return nullptr;
    void* block =
        isLarge(bytes) ? PlatformMemory::allocateLarge(bytes, LARGE_BLOCK_ALIGNMENT) : std::malloc(bytes);
    if (!block)
        throw std::bad_alloc();
    return block;
}

void free(void* block, std::size_t bytes) noexcept {
    if (isLarge(bytes))
        PlatformMemory::freeLarge(block);
    else
        std::free(block);
}

void* grow(void* block, std::size_t used_bytes, std::size_t old_bytes, std::size_t new_bytes) {
    if (!isLarge(old_bytes) && !isLarge(new_bytes)) {
        void* grown = std::realloc(block, new_bytes);
        if (!grown)
            throw std::bad_alloc();
        return grown;
    }
    void* grown = allocate(new_bytes);
    if (used_bytes > 0)
        std::memcpy(grown, block, used_bytes);
    free(block, old_bytes);
    return grown;
}

} // namespace Quenza::BlockMemory
