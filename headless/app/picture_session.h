// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/picture_action.h"
#include "headless/app/plugin_numbers.h"
#include "headless/render/picture_render.h"
#include "headless/runtime/host.h"

#include <optional>
#include <string>

namespace headless {

/// A render in the Picture Viewer with the artist in front of it: what he sees and what he does. Main thread,
/// but for what says otherwise.
class PictureSession {
public:
    /// What the Picture Viewer shows.
    struct Shown {
        bool isRunning = false;
        /// "" without a text.
        std::string status;
        std::optional<int> percent;
        /// How often the image has changed; 0 while there is none.
        uint64_t changes = 0;
    };

    /// Prepares a render of the host's open document. Throws HostError when it can't be rendered.
    PictureSession(Host& host, const PictureSettings& settings);
    PictureSession(const PictureSession&) = delete;
    PictureSession& operator=(const PictureSession&) = delete;
    /// Stops the render and waits for its end.
    ~PictureSession() = default;

    /// Starts the render and returns; the host's loop has to turn until it ends. Once.
    void start();
    /// Asks the render to end, and returns at once. Any thread.
    void stop();
    /// Any thread.
    bool isRunning() const { return render_.isRunning(); }
    /// Any thread.
    Shown shown() const;
    /// The image as it is, with the number of its changes. Any thread.
    uint64_t copyImage(Image& image) const { return render_.image().copyTo(image); }
    /// Of the image. Any thread.
    int32_t width() const { return render_.image().width(); }
    int32_t height() const { return render_.image().height(); }
    /// Any thread.
    uint64_t changes() const { return render_.image().changes(); }

    /// Whether the plug-in's commands and dialog act on this render: not before it has exported its scene,
    /// and never on an interactive one.
    bool takesCommands() const { return host_.isCommandEnabled(UPDATE_IMAGE); }
    /// Acts through the plug-in's own commands and dialog. Throws HostError when that can't be.
    void act(const PictureAction& action);

    /// After the end: why the render failed, or gave no image. Nothing when it ended as it should, a stop
    /// included.
    std::optional<std::string> failure() const;

private:
    /// What the user was told last since the start.
    std::string lastWord() const;

    Host& host_;
    PictureRender render_;
    size_t messagesBefore_;
    size_t errorsBefore_;
    size_t linesBefore_;
    std::atomic<bool> wasStopped_{false};
};

} // namespace headless
