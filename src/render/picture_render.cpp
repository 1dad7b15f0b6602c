// SPDX-License-Identifier: MIT
#include "render/picture_render.h"

#include "foundation/exceptions.h"
#include "host/general.h"
#include "render/buffer_copy.h"
#include "render/log_messages.h"
#include "render/render_state.h"
#include "scene/scene_node_render_settings.h"
#include "shared/main_thread_message.h"
#include "shared/text.h"

#include <algorithm>
#include <optional>
#include <utility>

using Quenza::Lock;

namespace {

/// Milliseconds between two rounds.
constexpr uint32_t POLL_PERIOD = 50;
/// Rounds, not seconds: a host may cut the sleeps of a thread short that it wants to end. So long a library
/// may keep the scene from the last image; so long one may that has told of an error; and so long that one's
/// run, which takes its time for a large image, may take.
constexpr int SCENE_PATIENCE = 200;
constexpr int SCENE_PATIENCE_IN_TROUBLE = 20;
constexpr int RUN_PATIENCE_IN_TROUBLE = 200;
/// Seconds. Tone mapping is expensive, so images come ever rarer: the first a second later than the interval
/// says.
constexpr double FIRST_INTERVAL = 2.0;
constexpr double FIRST_LAST_TONEMAP = 1.0;
/// A preview with fewer samples per pixel is noise and nothing else.
constexpr double MIN_PREVIEW_SAMPLES = 0.1;
constexpr float DISPLAY_GAMMA = 2.2f;
constexpr double NO_LIMIT = -1.0;
constexpr Quenza::u32 FLAG_CHANGED = 1;
constexpr const char* UNKNOWN_FAILURE = "The renderer has failed.";
constexpr const char* FINAL_STATUS = "Final tonemapping...";

bool isMarkedChanged(const Quenza::SceneNode* node) {
    return node && node->testFlags(FLAG_CHANGED);
}

String samplesText(const char* lead, double samplesPerPixel) {
    return String(lead) + RealToString(samplesPerPixel, -1, 1) + " s/px";
}

} // namespace

PictureRender::PictureRender(PictureJob& job, VPBuffer& buffer, const BaseThread* thread)
    : job_(job), buffer_(buffer), thread_(thread) {}

int32_t PictureRender::run(const Quenza::Vector<Quenza::String>& arguments) {
    bool isComplete = false;
    try {
        if (start(arguments)) {
            loop();
            makeFinalImage();
            isComplete = true;
        }
    } catch (const std::exception& exception) {
        GePrint(exception.what());
    } catch (...) {
        GePrint(UNKNOWN_FAILURE);
    }
    finish();
    if (!isComplete || hadError_) {
        return RENDERRESULT_FAILED;
    }
    return isStopped_ ? RENDERRESULT_USERBREAK : RENDERRESULT_OK;
}

bool PictureRender::start(const Quenza::Vector<Quenza::String>& arguments) {
    renderer_ = new Renderer(quenzaContext());
    if (job_.isPictureViewer) {
        Lock lock(renderStateMutex());
        claimActive();
    }
    renderBuffer_ = new Quenza::RenderBuffer(*job_.root);
    if (!makeToneMapper()) {
        return false;
    }
    if (renderer_->initialiseWithScene(job_.root, renderBuffer_, arguments) != 0) {
        showOnMainThread("Error build scene failed.");
        return false;
    }
    renderer_->startRendering();
    // The artist may have paused while the scene was being built.
    Lock lock(renderStateMutex());
    if (isActive() && renderState().paused != 0) {
        renderer_->pause();
    }
    return true;
}

bool PictureRender::makeToneMapper() {
    bytes_ = new Quenza::UInt8Buffer;
    floats_ = new Quenza::FloatBuffer;
    Quenza::String error;
    try {
        toneMapper_ = new ToneMapper(quenzaContext(), renderBuffer_, DISPLAY_GAMMA, bytes_, floats_);
        if (toneMapper_->update(*job_.root)) {
            return true;
        }
        error = toneMapper_->getError();
    } catch (const Quenza::QuenzaException& exception) {
        error = exception.message();
    }
    GePrint(String("Error while creating tonemapper: ") + toHostString(error));
    return false;
}

void PictureRender::loop() {
    job_.tonemapInterval = FIRST_INTERVAL;
    lastTonemap_ = FIRST_LAST_TONEMAP;
    const auto* const settings =
        static_cast<const Quenza::SceneNodeRenderSettings*>(job_.root->getRenderSettingsPointer());
    job_.haltTime = settings->getDouble("halt_time");
    job_.haltSpp = settings->getDouble("halt_samples_per_pixel");
    while (!isStopRequested()) {
        if (showRendererErrors(*renderer_)) {
            hadError_ = true;
            return;
        }
        // During a run a refusal would pass for the run's own failure. An image waits for the changes that
        // the artist made before it.
        if (!isRunOn_ && takeSceneChanges()) {
            startDueRun(renderer_->getElapsedTime());
        }
        if (isRunOn_ && toneMapper_->isFinished()) {
            endRun();
        }
        const double elapsed = renderer_->getElapsedTime();
        const double samplesPerPixel = renderer_->getSamplesPerPixel();
        showState(elapsed, samplesPerPixel);
        if (isHaltReached(elapsed, samplesPerPixel)) {
            return;
        }
        GeSleep(POLL_PERIOD);
    }
    isStopped_ = true;
}

bool PictureRender::isSceneMarked() const {
    return isMarkedChanged(job_.root->getToneMappingPointer()) ||
           isMarkedChanged(job_.root->getCameraPointer());
}

bool PictureRender::takeSceneChanges() {
    Quenza::SceneNodeRoot& root = *job_.root;
    // Kept until the tone mapper has what it wants, for it would wait for the library.
    std::optional<Quenza::TryLock> treeLock;
    {
        Lock stateLock(renderStateMutex());
        if (isActive() && !writePendingTonemapping()) {
            return false;
        }
        if (!isSceneMarked()) {
            return true;
        }
        treeLock.emplace(root.getMutex());
        if (!treeLock->isHeld()) {
            return false;
        }
        root.clearFlagsUpTo(root.getStamp());
    }
    const bool isTaken = toneMapper_->update(root);
    treeLock.reset();
    if (!isTaken) {
        GePrint(toHostString(toneMapper_->getError()));
    }
    return true;
}

bool PictureRender::awaitSceneChanges() {
    for (int rounds = 0; !takeSceneChanges(); ++rounds) {
        hadError_ |= showRendererErrors(*renderer_);
        if (rounds >= (hadError_ ? SCENE_PATIENCE_IN_TROUBLE : SCENE_PATIENCE)) {
            GePrint("The renderer keeps the scene: the last change of the tone mapping isn't in the image.");
            return false;
        }
        GeSleep(POLL_PERIOD);
    }
    return true;
}

void PictureRender::startDueRun(double elapsed) {
    if (job_.isPictureViewer && takeUpdateRequest()) {
        startRun("Tonemapping...");
        return;
    }
    if (!job_.isPreview && elapsed - lastTonemap_ > job_.tonemapInterval) {
        StatusSetBar(percentToNextImage(elapsed));
        job_.tonemapInterval *= 2.0;
        startRun("Tonemapping...");
        lastTonemap_ = elapsed;
    }
}

void PictureRender::startRun(const char* status) {
    StatusSetText(status);
    pausedText_ = String();
    toneMapper_->start();
    isRunOn_ = true;
}

void PictureRender::waitForRun() {
    int patience = RUN_PATIENCE_IN_TROUBLE;
    while (isRunOn_) {
        if (toneMapper_->isFinished()) {
            endRun();
            return;
        }
        // A library that is in trouble may never come to the end of the run.
        hadError_ |= showRendererErrors(*renderer_);
        if (hadError_ && patience-- == 0) {
            return;
        }
        GeSleep(POLL_PERIOD);
    }
}

void PictureRender::endRun() {
    isRunOn_ = false;
    const Quenza::String error = toneMapper_->getError();
    if (error.empty()) {
        toneMapper_->withImage(
            [this](const Quenza::UInt8Buffer& image) { return copyToBuffer(image, buffer_, job_); });
    } else {
        GePrint(toHostString(error));
    }
    StatusClear();
    pausedText_ = String();
}

void PictureRender::showState(double elapsed, double samplesPerPixel) {
    if (job_.isPictureViewer && isPaused()) {
        showPaused(samplesPerPixel);
    } else if (!isRunOn_) {
        showProgress(elapsed, samplesPerPixel);
    }
}

bool PictureRender::isHaltReached(double elapsed, double samplesPerPixel) const {
    if (job_.haltSpp != NO_LIMIT) {
        return samplesPerPixel > job_.haltSpp;
    }
    return job_.haltTime != NO_LIMIT && elapsed > job_.haltTime;
}

void PictureRender::showProgress(double elapsed, double samplesPerPixel) {
    pausedText_ = String();
    StatusSetBar(percentToNextImage(elapsed));
    StatusSetText(samplesText("Rendering: ", samplesPerPixel));
}

void PictureRender::showPaused(double samplesPerPixel) {
    const String text = samplesText("Paused: ", samplesPerPixel);
    // Once is enough: a pause can be long, and the line would flicker.
    if (text != pausedText_) {
        StatusClear();
        StatusSetText(text);
        pausedText_ = text;
    }
}

void PictureRender::makeFinalImage() {
    renderer_->stop();
    waitForRun();
    if (isRunOn_ || (job_.isPreview && renderer_->getSamplesPerPixel() < MIN_PREVIEW_SAMPLES)) {
        return;
    }
    bool isSceneFree = true;
    do {
        StatusSetBar(100);
        StatusSetText(FINAL_STATUS);
        isSceneFree = awaitSceneChanges();
        startRun(FINAL_STATUS);
        waitForRun();
    } while (isSceneFree && !isRunOn_ && !releaseUnlessChanged());
    StatusSetText("Closing render threads...");
}

void PictureRender::finish() {
    try {
        if (renderer_) {
            renderer_->stop();
            hadError_ |= showRendererErrors(*renderer_);
        }
    } catch (const std::exception& exception) {
        GePrint(exception.what());
        hadError_ = true;
    } catch (...) {
        GePrint(UNKNOWN_FAILURE);
        hadError_ = true;
    }
    releaseActive();
    toneMapper_ = nullptr;
    renderer_ = nullptr;
    renderBuffer_ = nullptr;
    bytes_ = nullptr;
    floats_ = nullptr;
}

bool PictureRender::isActive() const {
    return renderer_ && renderState().activeRenderer == renderer_;
}

void PictureRender::claimActive() {
    RenderState& state = renderState();
    if (state.activeRenderer) {
        return;
    }
    state.activeRenderer = renderer_;
    state.activeRoot = job_.root;
    state.paused = 0;
    state.updateRequested = 0;
    state.tonemapDialogStale = 1;
    state.pendingTonemapping.reset();
}

void PictureRender::releaseActive() {
    Lock lock(renderStateMutex());
    if (!isActive()) {
        return;
    }
    RenderState& state = renderState();
    state.activeRenderer = nullptr;
    state.activeRoot = nullptr;
    state.paused = 0;
    state.updateRequested = 0;
    state.pendingTonemapping.reset();
}

bool PictureRender::releaseUnlessChanged() {
    Lock lock(renderStateMutex());
    if (isActive() && (renderState().pendingTonemapping || isSceneMarked())) {
        return false;
    }
    releaseActive();
    return true;
}

bool PictureRender::takeUpdateRequest() {
    Lock lock(renderStateMutex());
    claimActive();
    return isActive() && std::exchange(renderState().updateRequested, 0) != 0;
}

bool PictureRender::isPaused() {
    Lock lock(renderStateMutex());
    return isActive() && renderState().paused != 0;
}

int32_t PictureRender::percentToNextImage(double elapsed) const {
    return static_cast<int32_t>(100.0 *
                                std::clamp((elapsed - lastTonemap_) / job_.tonemapInterval, 0.0, 1.0));
}
