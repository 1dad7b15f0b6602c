// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_root.h"

#include <set>
#include <string>
#include <vector>

namespace scene_tool {

/// The node types of which a scene has one, as far as the file brings them itself: reading it adds default
/// ones. A file with includes counts as bringing all.
std::set<Quenza::u32> ownSingleNodes(const std::string& path);

/// Adds the nodes of `b` to `a`, their UIDs moved above the highest of `a`. References of both must be bound.
/// Of single nodes those in `own` stay, others give way to the ones of `b`. Returns one line for each node
/// that was left out or renamed. Throws std::runtime_error when the UIDs don't fit. `b` must outlive `a`'s
/// writing and is good for nothing else.
std::vector<std::string> mergeScenes(Quenza::SceneNodeRoot& a, Quenza::SceneNodeRoot& b,
                                     const std::set<Quenza::u32>& own);

} // namespace scene_tool
