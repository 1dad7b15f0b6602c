// SPDX-License-Identifier: MIT
#pragma once

#include "engine/options.h"
#include "foundation/types.h"

#include <atomic>
#include <string>
#include <vector>

namespace engine {

/// Where a picture goes; an empty path is no file.
struct Outputs {
    std::string png, qzi, untonemapped_exr, tonemapped_exr;
};

/// One picture to render.
struct RenderJob {
    std::string scene_path;
    Outputs outputs;       ///< Without any the scene's settings choose the files beside the scene.
    double halt_time = -1; ///< Seconds; negative: as the scene says.
    double halt_samples = -1;
    Quenza::u64 seed = 1;
};

/// The pictures that the command line asks for: one, or those of the queue's items in their order. An item's
/// own output path wins over the switches, of which it keeps the kinds of files; of an item without one the
/// files go beside its scene.
std::vector<RenderJob> makeJobs(const Options& options);

/// Without a limit of its own a picture is done after that many seconds or samples per pixel, whichever comes
/// first: a program that is left to itself has to end.
inline constexpr double DEFAULT_HALT_TIME = 60;
inline constexpr double DEFAULT_HALT_SAMPLES = 256;

/// Renders one picture and writes it, also while it grows, until it is done or `stop` is set. Progress and
/// what the user should know go to the console. False when the scene can't be rendered or a file can't be
/// written, which is told.
bool render(const RenderJob& job, const Options& options, const std::string& data_folder,
            const std::atomic<bool>& stop);

} // namespace engine
