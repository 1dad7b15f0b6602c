// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace Quenza {

/// One frame of a render queue.
struct QueueItem {
    std::string scene_path;
    std::string output_path;
    double halt_time = -1;
    double halt_spp = -1;
    std::string seed;
};

struct QueueSummary {
    std::string path;
    std::vector<QueueItem> items;
    std::vector<std::string> faults;
};

/// Reads a render queue; the scenes that it names aren't opened. Never throws for a bad queue.
QueueSummary summariseQueue(const std::string& path);

} // namespace Quenza
