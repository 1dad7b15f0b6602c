// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "headless/app/output_folder.h"
#include "headless/model/document.h"

namespace headless {

class Host;

/// Number of the plug-in's render settings, a video post.
inline constexpr int32_t RENDER_SETTINGS = 1020896;

/// The enabled render settings of the active render setup. One that is disabled is enabled; without one it is
/// made, with the plug-in's defaults. Throws HostError when the plug-in registers none.
VideoPost& requireRenderSettings(Document& document);

/// Sets parameters of the render settings by "NAME=VALUE" each. Throws UsageError, and HostError when they
/// can't be looked up.
void applyRenderSettings(Host& host, const std::vector<std::string>& settings);

/// Sends the scene to a file, relative to the current folder; the suffix is added when it has none, and
/// folders that aren't there are made, to be kept until the export's end. Throws UsageError for another
/// suffix than ".qzs", HostError when a folder can't be made.
OutputFolder exportTo(VideoPost& settings, const std::string& file);

/// Makes the export an animation over the document's frames, both ends inclusive.
void exportFrames(Document& document, VideoPost& settings, std::pair<int32_t, int32_t> frames);

/// Makes the export one of this frame alone: moves the document there with all that is animated.
void exportFrame(Document& document, int32_t frame);

/// "7"; throws UsageError.
int32_t parseFrame(const std::string& text);
/// "10-20", "-5--1"; throws UsageError, also when the end lies before the start.
std::pair<int32_t, int32_t> parseFrameRange(const std::string& text);

} // namespace headless
