// SPDX-License-Identifier: MIT
#pragma once

#include "engine/options.h"

#include <string>
#include <vector>

namespace engine {

/// The one-page report on what a render would start from.
struct Report {
    std::string text;
    std::vector<std::string> faults;
};

/// Looks through the scene, or through every scene of the queue.
Report makeReport(const Options& options);

/// True for the name of a render queue.
bool isQueue(const std::string& path);

/// "<input without suffix>.report.txt".
std::string reportPath(const std::string& input);

} // namespace engine
