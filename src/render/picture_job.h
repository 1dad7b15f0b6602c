// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/vector.h"
#include "scene/scene_node_root.h"

/// One render of the host by the video post, from its first phase to its last. Sizes and places are pixels of
/// the host's buffer, from its top left corner.
struct PictureJob {
    /// The export has given no scene.
    bool failed = false;
    int64_t bufferWidth = 0;
    int64_t bufferHeight = 0;
    /// The part that is rendered.
    int64_t regionX = 0;
    int64_t regionY = 0;
    int64_t regionWidth = 0;
    int64_t regionHeight = 0;
    /// Samples per pixel, and seconds, after which the render ends; -1 for no limit.
    double haltSpp = -1.0;
    double haltTime = -1.0;
    /// Seconds from one display image to the next.
    double tonemapInterval = 0.0;
    /// Of a material, an editor's view or the interactive render region: one image at the end is all.
    bool isPreview = false;
    bool isPictureViewer = false;
    bool isInteractive = false;
    Quenza::Ref<Quenza::SceneNodeRoot> root;
    /// Deleted when the render has ended.
    Quenza::Vector<Quenza::String> tempFiles;
    /// What the renderer calls the scene; no file has that name.
    Quenza::String scenePath;
};
