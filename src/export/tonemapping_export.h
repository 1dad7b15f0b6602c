// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "scene/scene_node_tonemapping.h"

/// Fills the node by the method that the camera tag's container chooses; the values of the other methods stay
/// as they are. Always true.
bool exportTonemapping(const Quenza::Ref<Quenza::SceneNodeTonemapping>& tonemappingNode,
                       const BaseContainer& cameraData);
