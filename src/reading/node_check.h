// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_root.h"

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

namespace Quenza {

class SceneNodeModel;
class SceneNodeRenderSettings;

/// One text for each side of the image that can't be drawn, among those that the settings have.
std::vector<std::string> imageSizeFaults(const SceneNodeRenderSettings& settings);

/// Finds what is wrong with single nodes of a scene: references that lead nowhere or to the wrong type, and
/// what the node lacks by itself. Meshes need to have their material names and counts.
class NodeCheck {
public:
    /// References to `unread_uids` aren't looked at. Both must outlive the check.
    NodeCheck(SceneNodeRoot& root, const std::set<u32>& unread_uids)
        : root_(root), unread_uids_(unread_uids) {}

    /// One text for each fault. Binds the node if it can.
    std::vector<std::string> faultsOf(SceneNode& node);

private:
    void checkReferences(SceneNode& node);
    void checkReference(const char* element, SceneNodeUID uid, std::initializer_list<u32> types);
    void checkModel(SceneNodeModel& model);
    void checkMaterialCount(const SceneNodeModel& model);
    void checkMotion(SceneNode& node);
    void bind(SceneNode& node);

    SceneNodeRoot& root_;
    const std::set<u32>& unread_uids_;
    std::vector<std::string> faults_;
    bool bindable_ = true; ///< All of the node's references lead where they should.
};

} // namespace Quenza
