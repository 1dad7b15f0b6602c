// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"
#include "materials/import_warnings.h"
#include "scene/scene_node_material.h"

#include <vector>

class BaseMaterial;

/// A material that a body refers to, and the link that it becomes.
struct MaterialLinkOfBody {
    int32_t link;
    /// Null when the body refers to none.
    const Quenza::SceneNodeMaterial* node;
};

/// True for a kind of material that the plug-in's can be.
bool isImportable(const Quenza::Material& body);
/// True for the material that lets everything through: it is no material of a document.
bool isNull(const Quenza::Material& body);

/// The references of a body, in the order of their import.
std::vector<MaterialLinkOfBody> listReferences(const Quenza::Material& body);

/// Fills a new material from a body that is importable, but for links to other materials.
void importBody(BaseMaterial& material, const Quenza::Material& body, const Filename& directory,
                ImportWarnings& warnings);
