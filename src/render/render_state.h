// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/mutex.h"
#include "foundation/ref_counted.h"
#include "render/runtime/renderer.h"
#include "render/tonemapping_choice.h"
#include "scene/scene_node_root.h"

#include <atomic>
#include <optional>

/// The one render in the Picture Viewer that commands and the tone mapping dialog act on. All fields are
/// guarded by `renderStateMutex`, which is never held across a wait, a tone mapping run or a call of the
/// host. Nodes of `activeRoot` are changed under it and under the root's own mutex, in this order, and the
/// second is only tried: the library holds it for as long as it builds the scene. The first alone is enough
/// to read them.
struct RenderState {
    /// Null when no render is on.
    Quenza::Ref<Renderer> activeRenderer;
    Quenza::Ref<Quenza::SceneNodeRoot> activeRoot;
    /// Set by Pause, cleared by Resume.
    int32_t paused = 0;
    /// Set by Update Image, cleared by the render's loop.
    int32_t updateRequested = 0;
    /// Set when a render starts; the tone mapping dialog clears it when it has rebuilt its list of layers.
    /// Atomic, because the dialog looks at it without the lock first.
    std::atomic<int32_t> tonemapDialogStale{0};
    /// For the nodes of `activeRoot`, as soon as the library lets go of them.
    std::optional<TonemappingChange> pendingTonemapping;
};

RenderState& renderState();
Quenza::Mutex& renderStateMutex();
/// Lets go of the active render and clears the fields.
void clearRenderState();
