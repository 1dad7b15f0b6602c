// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_render_settings.h"

struct ExportContext;

/// Writes the render settings video post to the node, and to the context what other passes need of it: the
/// clay option and whether the graphics card renders. Without a video post the node renders plain
/// bidirectional paths. Always true.
bool exportRenderSettings(Quenza::SceneNodeRenderSettings& node, ExportContext& context);
