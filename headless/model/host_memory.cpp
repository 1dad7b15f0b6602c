// SPDX-License-Identifier: MIT
#include "headless/model/host_memory.h"

#include <cstdlib>

namespace headless {

void* allocateForHost(std::size_t byteCount) {
    return std::malloc(byteCount ? byteCount : 1);
}

void freeForHost(void* memory) {
    std::free(memory);
}

} // namespace headless
