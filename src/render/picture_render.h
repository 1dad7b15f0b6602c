// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/image_buffers.h"
#include "host/videopost.h"
#include "render/picture_job.h"
#include "render/runtime/renderer.h"
#include "render/runtime/tone_mapper.h"
#include "sdk/render_buffer.h"

/// Renders the scene of a job by the run-time library and feeds its images to the host's buffer, until the
/// host's thread is asked to end or a limit of the scene is reached. A render to the Picture Viewer is the
/// one that the commands and the tone mapping dialog act on, unless another was there first.
class PictureRender {
public:
    /// `thread` may be null.
    PictureRender(PictureJob& job, VPBuffer& buffer, const BaseThread* thread);

    /// `arguments` are those of the renderer's command line. Returns when all of the render has gone. A
    /// RenderResult; an exception becomes a line on the console and a failure.
    int32_t run(const Quenza::Vector<Quenza::String>& arguments);

private:
    bool start(const Quenza::Vector<Quenza::String>& arguments);
    bool makeToneMapper();
    void loop();
    bool isSceneMarked() const;
    /// False while the library holds the scene from a change that is waiting.
    bool takeSceneChanges();
    /// False when the library doesn't let go of the scene: the change that waits is given up.
    bool awaitSceneChanges();
    void startDueRun(double elapsed);
    void startRun(const char* status);
    /// Returns with isRunOn_ still set when the run is given up.
    void waitForRun();
    void endRun();
    void showState(double elapsed, double samplesPerPixel);
    bool isHaltReached(double elapsed, double samplesPerPixel) const;
    void showProgress(double elapsed, double samplesPerPixel);
    void showPaused(double samplesPerPixel);
    void makeFinalImage();
    void finish();

    bool isStopRequested() const { return thread_ && thread_->TestBreak(); }
    // With renderStateMutex held by the caller.
    bool isActive() const;
    void claimActive();
    // These take it.
    void releaseActive();
    /// False when the artist has changed something that no image shows yet.
    bool releaseUnlessChanged();
    bool takeUpdateRequest();
    bool isPaused();
    int32_t percentToNextImage(double elapsed) const;

    PictureJob& job_;
    VPBuffer& buffer_;
    const BaseThread* thread_;
    Quenza::Ref<Renderer> renderer_;
    Quenza::Ref<ToneMapper> toneMapper_;
    Quenza::Ref<Quenza::RenderBuffer> renderBuffer_;
    Quenza::Ref<Quenza::UInt8Buffer> bytes_;
    Quenza::Ref<Quenza::FloatBuffer> floats_;
    /// Elapsed time of the last display image.
    double lastTonemap_ = 0.0;
    bool isRunOn_ = false;
    bool isStopped_ = false;
    bool hadError_ = false;
    /// The status text of a pause, while it's shown.
    String pausedText_;
};
