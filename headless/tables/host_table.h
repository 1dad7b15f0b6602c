// SPDX-License-Identifier: MIT
#pragma once

#include "host/tables.h"

namespace headless {

/// The root table that the plug-in is given. This program's own use of the host's value types goes through it
/// too: SetHostTables(hostTable()) must have been called before the first link is set.
const HostTable* hostTable();

} // namespace headless
