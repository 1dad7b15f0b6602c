// SPDX-License-Identifier: MIT
#include "scene/scene_node.h"

#include "foundation/exceptions.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"

namespace Quenza {

namespace {

SceneNode* requireChild(SceneNode& parent, SceneNodeUID wanted, u32 type, const char* type_words) {
    SceneNode* node = parent.getChildByUID(wanted);
    if (!node)
        throw QuenzaException("Failed to find node with UID " + wanted.toString());
    if (node->getType() != type)
        throw QuenzaException("Node with UID " + wanted.toString() + " was not a " + type_words + " node.");
    return node;
}

} // namespace

SceneNodeMaterial* SceneNode::getMaterial(SceneNodeUID wanted) {
    return static_cast<SceneNodeMaterial*>(requireChild(*this, wanted, NODE_MATERIAL, "material"));
}

SceneNodeMedium* SceneNode::getMedium(SceneNodeUID wanted) {
    return static_cast<SceneNodeMedium*>(requireChild(*this, wanted, NODE_MEDIUM, "medium"));
}

} // namespace Quenza
