// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "headless/runtime/user.h"

namespace headless {

/// What a run of the render command left behind, judged from outside as a user would: by the plug-in's
/// console lines, its boxes, and the disk.
struct ExportOutcome {
    /// Why it failed; nothing when it was done.
    std::optional<std::string> failure;
    /// Scene files in the order of the frames.
    std::vector<std::string> scenes;
    /// The render queue of an animation, "" without one.
    std::string queue;
};

/// @param opened  the command's result: its dialog opened
/// @param lines, interactions  what the console and the user saw since the command began
ExportOutcome judgeExport(bool opened, std::span<const std::string> lines,
                          std::span<const Interaction> interactions);

/// What to tell of a success, which has a scene: "Scene: PATH", and for an animation the first and last scene
/// and the queue.
std::string summary(const ExportOutcome& outcome);

} // namespace headless
