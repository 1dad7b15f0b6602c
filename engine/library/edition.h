// SPDX-License-Identifier: MIT
#pragma once

namespace engine::library {

/// True in the realtime edition's library, which keeps no light layers apart and knows nothing of networks.
bool isRealtimeEdition();

} // namespace engine::library
