// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

#include "headless/runtime/console.h"
#include "host/general.h"

namespace headless {

/// How a host runs. Sinks that are left empty go to the process's own streams.
struct HostOptions {
    /// Lines of the plug-in's console; standard output.
    LineSink consoleSink;
    /// Message boxes and errors; standard error.
    LineSink errorSink;
    /// The status line, "" to take it away; standard error when that is a terminal.
    LineSink statusSink;
    /// Each new text of the status bar alone; for nobody when empty.
    LineSink statusTextSink;

    /// Given to the plug-in instead of the system's time. Without it QUENZA_HEADLESS_CLOCK of the environment
    /// counts, then the system's time.
    std::optional<DateTime> fixedClock;
    /// Time stands still but for Host::advance: GeSleep, GeGetMilliSeconds and timers follow it. For tests.
    bool drivenClock = false;
    /// The folder of the host's program; that of the running one when empty.
    std::filesystem::path startupPath;
};

} // namespace headless
