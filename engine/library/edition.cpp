// SPDX-License-Identifier: MIT
#include "engine/library/edition.h"

// The one source that is compiled for each library anew.

namespace engine::library {

bool isRealtimeEdition() {
#ifdef QUENZA_REALTIME_EDITION
    return true;
#else
    return false;
#endif
}

} // namespace engine::library
