// SPDX-License-Identifier: MIT
#pragma once

#include "engine/library/message_log.h"
#include "engine/library/published_render.h"
#include "engine/library/stopwatch.h"
#include "engine/notices.h"
#include "engine/render_threads.h"
#include "engine/session.h"
#include "foundation/ref_counted.h"
#include "scene/scene_node_root.h"
#include "sdk/render_buffer.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace engine::library {

/// A render on threads of its own, which goes on until somebody ends it. Any thread may call anything at any
/// time.
///
/// The image goes into the buffer when a tone mapper asks for it, and at the end.
class LiveRender {
public:
    /// Reads the scene under the root's mutex, and binds its references as the reader of a scene file does,
    /// if nobody has done it before. Files with relative paths are looked for beside `scene_path`. Throws an
    /// exception that says why the scene can't be rendered.
    LiveRender(const Quenza::Ref<Quenza::SceneNodeRoot>& root,
               const Quenza::Ref<Quenza::RenderBuffer>& buffer, const Quenza::String& scene_path,
               const SessionOptions& options, MessageLog& log);
    /// Stops, and waits for tone mappers that are taking the image.
    ~LiveRender();
    LiveRender(const LiveRender&) = delete;
    LiveRender& operator=(const LiveRender&) = delete;

    void start();
    /// When they return, no thread renders any more. A render that was stopped stays so.
    void pause();
    void stop();
    void resume();

    /// Takes over the camera if it's marked as changed, clears its mark, and begins the image anew. Tone
    /// mappers take their nodes by themselves.
    void update();

    double samplesPerPixel() const { return session_->film().samplesPerPixel(); }
    /// Of rendering, without the pauses.
    double seconds() const { return watch_.seconds(); }
    Snapshot publish();
    void informOnce(const std::string& text);

    const Quenza::SceneNodeRoot* root() const { return root_.getPointer(); }

private:
    void readScene(const Quenza::String& scene_path, const SessionOptions& options);
    void checkBuffer() const;
    void tellNotices();
    void settle();
    void rest();
    void takeCamera(Quenza::SceneNodeCamera& camera);

    Quenza::Ref<Quenza::SceneNodeRoot> root_;
    Quenza::Ref<Quenza::RenderBuffer> buffer_;
    MessageLog& log_;
    Stopwatch watch_;
    std::mutex told_mutex_;
    Notices told_;

    std::mutex image_mutex_; ///< Held to take the image, and to begin it anew.
    std::unique_ptr<RenderSession> session_;

    std::mutex control_mutex_;
    bool started_ = false, paused_ = false, stopped_ = false;
    std::atomic<bool> failed_{false};
    std::unique_ptr<RenderThreads> threads_; ///< Null at rest.
    std::optional<PublishedRender> published_;
};

} // namespace engine::library
