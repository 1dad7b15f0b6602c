// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/vector.h"
#include "render/runtime/library_ref.h"
#include "render/runtime/quenza_context.h"
#include "scene/scene_node_root.h"
#include "sdk/render_buffer.h"

#include <memory>

class RendererImpl;

/// A line that the library has logged.
struct LogMessage {
    /// Quenza::SDK::Message::TYPE_ERROR is an error.
    int32_t type = 0;
    Quenza::String text;
};

/// One render of one scene by the library, on the library's own threads. Two threads may use it: the one that
/// polls, and one that pauses and resumes.
class Renderer : public Quenza::ThreadSafeRefCounted {
public:
    /// Throws QuenzaException "Failed to create Instance of 'QuenzaInterface'" and "Failed to initialise
    /// 'QuenzaInterface'".
    explicit Renderer(const Quenza::Ref<QuenzaContext>& context);
    ~Renderer() override;

    /// Gives the library the scene and the place of its image, which live as long as this object. `arguments`
    /// are those of the renderer's command line. 0 is success; else the reason is among the log messages.
    int32_t initialiseWithScene(const Quenza::Ref<Quenza::SceneNodeRoot>& root,
                                const Quenza::Ref<Quenza::RenderBuffer>& buffer,
                                const Quenza::Vector<Quenza::String>& arguments);
    /// Tells that nodes of the scene have changed. 0 is success.
    int32_t updateScene(const Quenza::Ref<Quenza::SceneNodeRoot>& root);
    void startRendering();
    void pause();
    void resume();
    /// Returns when no thread renders any more.
    void stop();
    double getSamplesPerPixel() const;
    /// Seconds since the start.
    double getElapsedTime() const;
    /// Replaces `list` by what was logged since the last call, oldest first; `hadError` tells if one of it is
    /// an error.
    void getLogMessages(Quenza::Vector<LogMessage>& list, bool& hadError);

private:
    std::unique_ptr<RendererImpl> impl_;
};
