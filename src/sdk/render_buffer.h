// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/image_buffers.h"
#include "foundation/mutex.h"
#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "foundation/vector.h"
#include "scene/scene_node_root.h"

namespace Quenza {

/// Where a render leaves its image and a tone mapper finds it: the light layers, each an image of its own,
/// linear and without gains, so that a gain is a weight in a sum.
class RenderBuffer : public ThreadSafeRefCounted {
public:
    /// Size and number of layers of the scene: width and height of its settings, one layer at least. Throws
    /// QuenzaException when the scene has no render settings or its image no pixels.
    explicit RenderBuffer(const SceneNodeRoot& root);
    RenderBuffer(u32 width, u32 height, u32 num_layers);

    u32 getWidth() const { return width_; }
    u32 getHeight() const { return height_; }

    /// Guards `layers`.
    Mutex mutex;
    Vector<Image> layers;

private:
    u32 width_;
    u32 height_;
};

} // namespace Quenza
