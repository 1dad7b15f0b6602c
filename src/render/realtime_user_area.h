// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/image_buffers.h"
#include "foundation/ref_counted.h"
#include "host/bitmap.h"
#include "host/userarea.h"
#include "render/runtime/renderer.h"
#include "render/runtime/tone_mapper.h"
#include "scene/scene_node_root.h"
#include "sdk/render_buffer.h"

#include <cstdint>
#include <map>

class BaseDocument;
class BaseObject;

/// Renders the open document into a part of a dialog, over and over, and follows the active camera. All of it
/// runs on the main thread; the library renders on threads of its own and is polled.
class RealtimeUserArea : public GeUserArea {
public:
    ~RealtimeUserArea() override;

    bool Init() override;
    bool GetMinSize(int32_t& width, int32_t& height) override;
    void DrawMsg(int32_t x1, int32_t y1, int32_t x2, int32_t y2, const BaseContainer& message) override;
    void Timer(const BaseContainer& message) override;

    /// There is a render, or one that the library has refused.
    bool hasRenderer() const { return renderer_.nonNull(); }
    /// Exports the active document and starts to render it. Without the library nothing happens; a failure is
    /// a line on the console.
    void start();
    void stop();
    /// Gives the render the active camera again, if that has changed.
    void onDocumentChanged();

private:
    bool setUp(BaseDocument* document);
    /// Starts a tone mapping run, unless one is on.
    void update();
    void drawImage();
    bool hasCameraChanged(BaseObject* camera);
    void exportCameraAgain(BaseDocument* document);
    bool allocateBitmap(int32_t width, int32_t height);

    bool tonemapPending_ = false;
    /// Of the host's timer, milliseconds.
    uint32_t lastImageTime_ = 0;
    bool running_ = false;
    /// 24 bits; what the area shows.
    BaseBitmap* bitmap_ = nullptr;
    std::map<const BaseObject*, uint32_t> checksums_;
    Quenza::Ref<Quenza::SceneNodeRoot> root_;
    Quenza::Ref<Renderer> renderer_;
    Quenza::Ref<Quenza::RenderBuffer> renderBuffer_;
    Quenza::Ref<Quenza::UInt8Buffer> imageBuffer_;
    Quenza::Ref<ToneMapper> toneMapper_;
};
