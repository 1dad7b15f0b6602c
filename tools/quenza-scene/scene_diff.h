// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_root.h"

#include <string>
#include <vector>

namespace scene_tool {

/// Compares two scenes whose references are bound, as they would be written: one line for each node that only
/// one of them has ("- model2 7 \"Cube\"", "+ ..."), and for each field that differs ("~ camera 2 \"Eye\":
/// keyframe/pos: '0 0 0' -> '0 1 0'"). Meshes in the scenes themselves count as their checksums.
///
/// Nodes go together by type and UID, those of which a scene has one by type alone; with `ignore_uids` all by
/// type, name and turn, and UIDs differ only where they lead to nodes that don't go together.
///
/// Changes the scenes: they are good for nothing else afterwards.
std::vector<std::string> diffScenes(Quenza::SceneNodeRoot& a, Quenza::SceneNodeRoot& b, bool ignore_uids);

} // namespace scene_tool
