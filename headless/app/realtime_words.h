// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/arguments.h"
#include "host/vector.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace headless {

/// The camera goes to a place, in the document's units, some time after the preview was started.
struct CameraMove {
    Vector place;
    std::chrono::milliseconds at{0};
};

/// What the command line of `realtime` asks for.
struct RealtimeWishes {
    /// A full path.
    std::filesystem::path image;
    std::chrono::milliseconds length{0};
    /// Width and height in pixels; without it the dialog's own.
    std::optional<std::pair<int32_t, int32_t>> size;
    std::vector<CameraMove> moves;
};

/// Throws UsageError.
RealtimeWishes readRealtimeWishes(const Arguments& arguments);

} // namespace headless
