// SPDX-License-Identifier: MIT
#pragma once

#include "render/render_job.h"

#include <memory>

class TiXmlDocument;
class TiXmlElement;

/// The render queue of an animation: an XML document "render_queue" with one "item" per frame, in order. The
/// renderer works through it as through a single scene.
class RenderQueue {
public:
    RenderQueue();
    ~RenderQueue();

    void addFrame(const RenderJob& job, int32_t frame, const Filename& scenePath, int32_t seed);
    /// Writes the file whole or not at all.
    bool save(const Filename& path) const;

private:
    std::unique_ptr<TiXmlDocument> document_;
    TiXmlElement* root_;
};
