// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node.h"

/// Tells whoever renders the scene that the node has changed. The caller holds the root's mutex.
inline void markAsChanged(Quenza::SceneNode& node) {
    node.setFlags(1);
    node.markChanged();
}
