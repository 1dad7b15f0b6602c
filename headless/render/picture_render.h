// SPDX-License-Identifier: MIT
#pragma once

#include "headless/render/document_render.h"

#include <functional>
#include <memory>
#include <optional>

namespace headless {

class Host;

/// What of a picture is rendered, and how.
struct PictureSettings {
    /// Nothing for the whole image.
    std::optional<RenderRegion> region;
    /// As the interactive render region does, in place of the Picture Viewer.
    bool isInteractive = false;
};

/// A render of the host's open document in the Picture Viewer: on a thread of its own, over a copy of the
/// document, so that the artist can go on working. When the document is closed, the render is stopped first.
/// Main thread, but for what says otherwise.
class PictureRender {
public:
    /// Copies the document; the engine and the size are those of its active render setup. `onChanged` is
    /// called by the render's threads when the image has changed. Throws HostError when no document is open,
    /// or it can't be rendered.
    PictureRender(Host& host, const PictureSettings& settings, std::function<void()> onChanged);
    PictureRender(const PictureRender&) = delete;
    PictureRender& operator=(const PictureRender&) = delete;
    /// Stops the render and waits for its end.
    ~PictureRender();

    /// Throws HostError when the system has no thread to give.
    void start();
    /// Asks the render to end, and returns at once. Any thread.
    void stop();
    /// Any thread.
    bool isRunning() const;
    /// A RenderResult, once the render has ended.
    int32_t result() const;
    /// True when the render ended for its document.
    bool wasClosed() const { return wasClosed_; }
    const RenderImage& image() const { return image_; }

private:
    class RenderThread;

    void close();

    Host& host_;
    std::unique_ptr<Document> document_;
    RenderImage image_;
    std::unique_ptr<RenderThread> thread_;
    bool wasClosed_ = false;
};

} // namespace headless
