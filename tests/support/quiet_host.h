// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/host.h"

#include <string>

/// A host whose lines nobody reads, and whose clock stands still.
inline headless::HostOptions quietHost() {
    headless::HostOptions options;
    options.consoleSink = options.errorSink = options.statusSink = [](const std::string&) {};
    options.fixedClock = DateTime{2026, 3, 9, 7, 5, 4};
    return options;
}
