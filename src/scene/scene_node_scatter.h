// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node.h"

namespace Quenza {

class SceneNodeMaterial;

/// Scatters copies of a geometry over surfaces, as a shader says.
class SceneNodeScatter : public SceneNode {
public:
    SceneNodeScatter();
    ~SceneNodeScatter() override;

    u32 getType() const override { return NODE_SCATTER; }
    Ref<SceneNode> clone() const override;
    void rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    /// The geometry's, the materials', then the target object's.
    Vector<SceneNodeUID> getReferencedUIDs() const override;
    bool doIsEqual(const SceneNode& other) const override;

    String shader;        ///< Source text.
    double density = 1.0; ///< Copies per square metre.
    u32 seed = 0;
    SceneNodeUID geometry_uid;
    Vector<SceneNodeUID> material_uids; ///< Of the copies.
    Ref<SceneNode> geometry;            ///< A SceneNodeMesh or SceneNodeParametricSurface.
    Vector<Ref<SceneNodeMaterial>> materials;
    SceneNodeUID target_object_uid; ///< The model whose surface is covered.
    SceneNodeUID material_uid;      ///< The material whose surfaces are covered; set when that one binds.
};

} // namespace Quenza
