// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/map.h"
#include "scene/material_fields.h"
#include "scene/scene_node.h"
#include "scene/scene_node_root.h"
#include "scene/scene_visitor.h"

namespace Quenza {

/// Takes a material's fields through one visit: parameters in the dependency modes, references in the bind
/// and offset modes. Binding leaves a reference unset that has no valid UID.
class MaterialBinder : public MaterialFields {
public:
    /// `class_name` is the material's, for messages. `owner` may be null: then nothing can be bound.
    MaterialBinder(SceneVisitor& visitor, SceneNodeMaterial* owner, const char* class_name)
        : visitor_(visitor), owner_(owner), class_name_(class_name) {}

    void material(const ReferenceElements& elements, Ref<SceneNodeMaterial>& node,
                  SceneNodeUID& uid) override;
    void medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) override;

private:
    void presentParameter(const char* element, Param& param) override;
    /// Where to look `uid` up; null when it is unset. Throws QuenzaException when the owner has no root.
    SceneNodeRoot* rootToSearch(SceneNodeUID uid) const;

    SceneVisitor& visitor_;
    SceneNodeMaterial* owner_;
    const char* class_name_;
};

/// Points bound references to their replacements.
class MaterialRebinder : public MaterialFields {
public:
    explicit MaterialRebinder(const Map<SceneNodeUID, Ref<SceneNode>>& map) : map_(map) {}

    void material(const ReferenceElements& elements, Ref<SceneNodeMaterial>& node,
                  SceneNodeUID& uid) override;
    void medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) override;

private:
    const Map<SceneNodeUID, Ref<SceneNode>>& map_;
};

/// Points `node` to its replacement in `map`, where there is one of the same class; leaves a null `node`
/// alone.
template <class Node>
void rebindReference(const Map<SceneNodeUID, Ref<SceneNode>>& map, Ref<Node>& node) {
    if (!node)
        return;
    const Ref<SceneNode>* replacement = map.find(node->getUID());
    if (!replacement)
        return;
    if (Node* replacing = dynamic_cast<Node*>(replacement->getPointer()))
        node = replacing;
}

} // namespace Quenza
