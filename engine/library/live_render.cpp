// SPDX-License-Identifier: MIT
#include "engine/library/live_render.h"

#include "engine/library/failure.h"
#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "foundation/mutex.h"

#include <algorithm>
#include <exception>

namespace engine::library {

using Quenza::Lock;
using Quenza::Ref;
using Quenza::SceneNodeCamera;
using Quenza::u64;

namespace {

constexpr Quenza::u32 CHANGED = 1;

std::string sizeText(Quenza::u32 width, Quenza::u32 height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

} // namespace

LiveRender::LiveRender(const Ref<Quenza::SceneNodeRoot>& root, const Ref<Quenza::RenderBuffer>& buffer,
                       const Quenza::String& scene_path, const SessionOptions& options, MessageLog& log)
    : root_(root), buffer_(buffer), log_(log) {
    readScene(scene_path, options);
    tellNotices();
    published_.emplace(*buffer_, *this);
}

LiveRender::~LiveRender() {
    threads_.reset();
    published_.reset();
    // The scene shares the root's meshes, whose counts are nobody's but the mutex's holder's.
    const Lock lock(root_->getMutex());
    session_.reset();
}

void LiveRender::readScene(const Quenza::String& scene_path, const SessionOptions& options) {
    const Lock lock(root_->getMutex());
    if (!root_->isFinalised()) {
        root_->checkValidity();
        root_->finalise(scene_path);
    }
    SessionOptions chosen = options;
    {
        const Lock layers_lock(buffer_->mutex);
        chosen.max_layers =
            std::min(options.max_layers, Quenza::u32(std::max<u64>(1, buffer_->layers.size())));
    }
    const Quenza::String folder = Quenza::FileUtils::getDirectory(scene_path);
    auto session = std::make_unique<RenderSession>(root_, folder.toStdString(), chosen);
    const Film& film = session->film();
    if (film.width() != buffer_->getWidth() || film.height() != buffer_->getHeight()) {
        throw Quenza::QuenzaException("The buffer of " + sizeText(buffer_->getWidth(), buffer_->getHeight()) +
                                      " pixels doesn't fit the image of " +
                                      sizeText(film.width(), film.height()) + ".");
    }
    session_ = std::move(session);
}

void LiveRender::tellNotices() {
    for (const std::string& notice : session_->scene().notices().texts()) {
        informOnce(notice);
    }
}

void LiveRender::informOnce(const std::string& text) {
    const std::lock_guard lock(told_mutex_);
    const size_t before = told_.texts().size();
    told_.tell(text);
    if (told_.texts().size() > before) {
        log_.inform(text);
    }
}

void LiveRender::start() {
    const std::lock_guard lock(control_mutex_);
    started_ = true;
    settle();
}

void LiveRender::pause() {
    const std::lock_guard lock(control_mutex_);
    paused_ = true;
    settle();
}

void LiveRender::resume() {
    const std::lock_guard lock(control_mutex_);
    paused_ = false;
    settle();
}

void LiveRender::stop() {
    const std::lock_guard lock(control_mutex_);
    if (stopped_) {
        return;
    }
    stopped_ = true;
    settle();
    publish();
}

/// Starts or ends the threads, as the flags want it.
void LiveRender::settle() {
    const bool wanted = started_ && !paused_ && !stopped_ && !failed_;
    if (wanted && !threads_) {
        watch_.start();
        threads_ = std::make_unique<RenderThreads>(
            session_->countThreads(), [this](const std::atomic<bool>& ended) { session_->work(ended); },
            [this](const std::exception_ptr& failure) {
                failed_ = true;
                watch_.stop();
                log_.fail("The render has failed: " + textOf(failure));
            });
    } else if (!wanted) {
        rest();
    }
}

void LiveRender::rest() {
    threads_.reset();
    watch_.stop();
}

void LiveRender::update() {
    const std::lock_guard lock(control_mutex_);
    std::exception_ptr failure;
    {
        const Lock root_lock(root_->getMutex());
        auto* const camera = dynamic_cast<SceneNodeCamera*>(root_->getCameraPointer());
        if (!camera || !camera->testFlags(CHANGED)) {
            return;
        }
        rest();
        try {
            takeCamera(*camera);
        } catch (...) {
            failure = std::current_exception();
        }
    }
    settle();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void LiveRender::takeCamera(SceneNodeCamera& camera) {
    const std::lock_guard lock(image_mutex_);
    session_->restart(camera);
    camera.setFlags(camera.getFlags() & ~CHANGED);
    tellNotices();
}

Snapshot LiveRender::publish() {
    const std::lock_guard lock(image_mutex_);
    Snapshot snapshot{session_->layerImages(), session_->scene().camera().focusDistance()};
    const Lock buffer_lock(buffer_->mutex);
    for (u64 i = 0; i < std::min<u64>(snapshot.layers.size(), buffer_->layers.size()); ++i) {
        Quenza::Vector<float>& pixels = buffer_->layers[i].pixels();
        const std::vector<float>& image = snapshot.layers[i].rgb;
        std::copy_n(image.begin(), std::min<u64>(image.size(), pixels.size()), pixels.begin());
    }
    return snapshot;
}

} // namespace engine::library
