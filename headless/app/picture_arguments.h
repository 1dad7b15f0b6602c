// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/arguments.h"
#include "headless/app/picture_action.h"
#include "headless/app/picture_file.h"
#include "headless/render/picture_render.h"

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace headless {

/// How `picture` is written on the command line.
CommandSpec pictureCommandSpec(const OperandSpec& document);

/// What a command line of `picture` orders.
struct PictureOrder {
    struct TimedAction {
        std::chrono::milliseconds time{0};
        PictureAction action;
        /// "2s pause".
        std::string text;
    };

    explicit PictureOrder(const std::string& image) : file(image) {}

    PictureFile file;
    std::optional<int32_t> frame;
    /// Width and height.
    std::optional<std::pair<int32_t, int32_t>> size;
    PictureSettings settings;
    std::optional<std::chrono::milliseconds> stopAfter;
    /// Where the page is to watch; 0 for a free port, nothing for no page.
    std::optional<int> watchPort;
    std::vector<TimedAction> actions;
};

/// Throws UsageError for what can be told wrong without the document.
PictureOrder readPictureOrder(const Arguments& arguments);

} // namespace headless
