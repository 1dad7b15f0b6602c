// SPDX-License-Identifier: MIT
#include "foundation/ref_counted.h"

namespace Quenza {

void deleteUnused(const RefCounted* object) {
    delete object;
}

void deleteUnused(const ThreadSafeRefCounted* object) {
    delete object;
}

} // namespace Quenza
