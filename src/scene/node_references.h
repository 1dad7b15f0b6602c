// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/map.h"
#include "foundation/ref_counted.h"
#include "foundation/uid.h"
#include "foundation/vector.h"
#include "scene/xml_write_options.h"

namespace Quenza {

class OStream;
class SceneNode;
class SceneNodeMaterial;

/// What models and scatter nodes have in common: references to a geometry and to materials, each as a stored
/// UID until it is bound. A bound reference goes before its UID. Failures are QuenzaExceptions.
namespace NodeReferences {

/// The bound node's UID, else the stored one.
SceneNodeUID uidOf(const Ref<SceneNode>& bound, SceneNodeUID stored);
SceneNodeUID uidOf(const Ref<SceneNodeMaterial>& bound, SceneNodeUID stored);

/// "<materials>" with the UIDs of the bound materials; stored UIDs are not consulted.
void writeMaterials(OStream& stream, u32 depth, const Vector<Ref<SceneNodeMaterial>>& materials);

/// Finds a null `geometry` by its UID below the owner's root.
void bindGeometry(SceneNode& owner, Ref<SceneNode>& geometry, SceneNodeUID geometry_uid);

/// Finds the null entries of `materials` by their UIDs; an empty list first gets the length of
/// `material_uids`.
void bindMaterials(SceneNode& owner, Vector<Ref<SceneNodeMaterial>>& materials,
                   const Vector<SceneNodeUID>& material_uids);

/// Swaps a bound reference for the node that `nodes` has for its UID, when that is of the right type.
void rebindGeometry(Ref<SceneNode>& geometry, const Map<SceneNodeUID, Ref<SceneNode>>& nodes);
void rebindMaterial(Ref<SceneNodeMaterial>& material, const Map<SceneNodeUID, Ref<SceneNode>>& nodes);

/// Appends the UIDs of the bound materials, or the stored ones of those that aren't bound.
void appendMaterialUIDs(Vector<SceneNodeUID>& out, const Vector<Ref<SceneNodeMaterial>>& materials,
                        const Vector<SceneNodeUID>& material_uids);

} // namespace NodeReferences

} // namespace Quenza
