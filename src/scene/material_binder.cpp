// SPDX-License-Identifier: MIT
#include "scene/material_binder.h"

#include "foundation/exceptions.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_root.h"

namespace Quenza {

void MaterialBinder::material(const ReferenceElements&, Ref<SceneNodeMaterial>& node, SceneNodeUID& uid) {
    if (visitor_.mode == SceneVisitor::OFFSET_UIDS)
        visitor_.offsetUID(uid);
    else if (visitor_.mode == SceneVisitor::BIND && !node) {
        if (SceneNodeRoot* root = rootToSearch(uid))
            node = root->getMaterial(uid);
    }
}

void MaterialBinder::medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) {
    if (visitor_.mode == SceneVisitor::OFFSET_UIDS)
        visitor_.offsetUID(uid);
    else if (visitor_.mode == SceneVisitor::BIND && !node) {
        if (SceneNodeRoot* root = rootToSearch(uid))
            node = root->getMedium(uid);
    }
}

void MaterialBinder::presentParameter(const char*, Param& param) {
    param.visit(visitor_);
}

SceneNodeRoot* MaterialBinder::rootToSearch(SceneNodeUID uid) const {
    if (!owner_ && !uid.isValid())
        return nullptr;
    SceneNodeRoot* root = owner_ ? owner_->getRoot() : nullptr;
    if (!root)
        throw QuenzaException("Could not find root node in " + String(class_name_) + "::doVisit().");
    return uid.isValid() ? root : nullptr;
}

void MaterialRebinder::material(const ReferenceElements&, Ref<SceneNodeMaterial>& node, SceneNodeUID&) {
    rebindReference(map_, node);
}

void MaterialRebinder::medium(Ref<SceneNodeMedium>& node, SceneNodeUID&) {
    rebindReference(map_, node);
}

} // namespace Quenza
