// SPDX-License-Identifier: MIT
#include "render/render_state.h"

#include "render/runtime/never_destroyed.h"

#include <utility>

RenderState& renderState() {
    static NeverDestroyed<RenderState> state;
    return state.get();
}

Quenza::Mutex& renderStateMutex() {
    static Quenza::Mutex mutex;
    return mutex;
}

void clearRenderState() {
    // These go after the lock: the end of a render may take a while.
    Quenza::Ref<Renderer> renderer;
    Quenza::Ref<Quenza::SceneNodeRoot> root;
    Quenza::Lock lock(renderStateMutex());
    RenderState& state = renderState();
    std::swap(state.activeRenderer, renderer);
    std::swap(state.activeRoot, root);
    state.paused = 0;
    state.updateRequested = 0;
    state.tonemapDialogStale = 0;
    state.pendingTonemapping.reset();
}
