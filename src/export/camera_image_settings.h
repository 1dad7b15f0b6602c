// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_render_settings.h"
#include "shared/export_context.h"

/// Writes what the camera tag says about the image, and the image's size, to the settings. Without a tag
/// filters, region and overlays stay as the node has them.
void exportImageSettings(Quenza::SceneNodeRenderSettings& node, const ExportContext& context);
