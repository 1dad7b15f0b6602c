// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_root.h"

/// Adds a material to the scene under a name and gives its UID.
inline Quenza::SceneNodeUID addMaterial(Quenza::SceneNodeRoot& root,
                                        const Quenza::Ref<Quenza::Material>& material, const char* name) {
    const Quenza::Ref<Quenza::SceneNodeMaterial> node = new Quenza::SceneNodeMaterial;
    node->material = material;
    node->setName(name);
    root.addChild(node);
    return node->getUID();
}
