// SPDX-License-Identifier: MIT
#pragma once

#include "reading/parser_state.h"
#include "scene/scene_node_root.h"

namespace Quenza {

/// Gives the nodes without a UID numbers that no node has, behind the highest that the nodes themselves use
/// as long as there are such, and hands all to the root in their order.
void addNumberedNodes(SceneNodeRoot& root, const NodeList& nodes);

} // namespace Quenza
