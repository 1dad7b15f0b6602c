// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_camera.h"
#include "scene/scene_node_render_settings.h"
#include "shared/export_context.h"

/// Fills the camera from the scene camera of the active view and its camera tag, and the settings that the
/// tag holds: image size, filters, white point, region, overlays and diffraction. `settingsNode` may be null:
/// settings are left out. Always true.
bool exportCamera(const Quenza::Ref<Quenza::SceneNodeCamera>& cameraNode,
                  const Quenza::Ref<Quenza::SceneNodeRenderSettings>& settingsNode, ExportContext& context);
