// SPDX-License-Identifier: MIT
#pragma once

#include "host/document.h"
#include "render/launch.h"

/// What one Render command is to do: read from the document and its render settings before the first frame.
struct RenderJob {
    /// The scene file; for an animation its name carries no frame number.
    Filename scenePath;
    bool isAnimation = false;
    int32_t startFrame = 0;
    /// Inclusive; below `startFrame` nothing is exported.
    int32_t endFrame = 0;
    /// Frames per second that the frame numbers count.
    int32_t fps = 30;
    int32_t width = 640;
    int32_t height = 480;
    bool mergeVertices = true;
    /// Limits of each queue item, negative for none.
    float haltSamplesPerPixel = -1.0f;
    float haltTime = -1.0f;
    LaunchOptions launch;
};

/// The document's time in frames.
int32_t currentFrame(const BaseDocument* document);
/// A time in frames at a rate.
int32_t frameOfTime(const BaseTime& time, int32_t fps);

/// Fills `job`; `settings` is the render settings' container and may be null, `quickScene` the scene file
/// where no other place is asked for. Creates the folder for the renderer's images when that is set. False
/// with `error` told.
bool readRenderJob(BaseDocument* document, const BaseContainer* settings, const Filename& quickScene,
                   RenderJob& job, String& error);
