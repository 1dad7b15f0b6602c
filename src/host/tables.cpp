// SPDX-License-Identifier: MIT
#include "host/tables.h"

namespace {
const HostTable* hostTables = nullptr;
} // namespace

const HostTable* HostTables() {
    return hostTables;
}

void SetHostTables(const HostTable* tables) {
    hostTables = tables;
}
