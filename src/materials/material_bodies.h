// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/uid.h"
#include "host/string.h"
#include "scene/material.h"
#include "scene/scene_node_root.h"

#include <vector>

class BaseMaterial;
struct ExportContext;

/// A material of the plug-in on its way into the scene.
struct MaterialSource {
    /// Holds the data.
    const BaseMaterial* material;
    /// The material that the document knows: another one when `material` is a temporary one.
    BaseMaterial* key;
    /// One of MAT_KIND_...
    int32_t kind;
    /// The clay of the render settings stands for the material's own surface.
    bool isClay;
};

/// A link of a material to another one, and what an empty link stands for.
struct MaterialReference {
    int32_t link;
    bool isNullMaterialWhenEmpty;
};

/// The links that the body of the material resolves, in their order.
std::vector<MaterialReference> bodyReferences(const MaterialSource& source);

/// What the material is made of. `references` are the scene's materials for bodyReferences. Null for a kind
/// that isn't known.
Quenza::Ref<Quenza::Material> makeBody(const MaterialSource& source, const String& name,
                                       const std::vector<Quenza::SceneNodeUID>& references,
                                       Quenza::SceneNodeRoot& root, ExportContext& context);

/// What blends a mix of the material with its partner `b`, named `name`.
Quenza::Ref<Quenza::Material> makeMixBody(const MaterialSource& source, const String& name,
                                          Quenza::SceneNodeUID a, Quenza::SceneNodeUID b,
                                          ExportContext& context);

/// The light of the material alone, for the background.
Quenza::Ref<Quenza::Material> makeBackgroundBody(const BaseMaterial* material, const String& name,
                                                 ExportContext& context);
