// SPDX-License-Identifier: MIT
#pragma once

#include "scene/emission.h"
#include "scene/keyframe.h"
#include "scene/rotation.h"
#include "scene/scene_node.h"

namespace Quenza {

class Mesh;
class SceneNodeMaterial;
class SceneNodeMesh;

/// Places a mesh or parametric surface in the scene, with its materials and emission data. The exporter sets
/// references; a reader knows UIDs, which binding resolves. Both may be set: the reference is then written.
class SceneNodeModel : public SceneNode {
public:
    SceneNodeModel();
    ~SceneNodeModel() override;

    u32 getType() const override { return NODE_MODEL; }
    /// Copies all fields, with shared references.
    Ref<SceneNode> clone() const override;
    void rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) override;
    /// Throws QuenzaException when there is no rotation.
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    /// The geometry's, then the materials'.
    Vector<SceneNodeUID> getReferencedUIDs() const override;
    /// Compares the geometries as well, when both have one.
    bool doIsEqual(const SceneNode& other) const override;

    Vector<KeyFrame> keyframes; ///< Over the frame interval; one for a static object.
    Ref<Rotation> rotation;     ///< To be set before writing.
    double scale = 1.0;
    bool invisible_to_camera = false;
    Vector<Ref<IESProfile>> ies_profiles;
    SceneNodeUID geometry_uid;
    Ref<SceneNode> geometry;                  ///< A SceneNodeMesh or SceneNodeParametricSurface.
    Vector<Ref<SceneNodeMaterial>> materials; ///< By the material indices of the geometry.
    Vector<SceneNodeUID> material_uids;
    Vector<Ref<EmissionScale>> emission_scales;

private:
    SceneNodeMesh* meshGeometry() const;
    void bind();
    void bindEmission(SceneNodeMesh& mesh_node);
    /// The UID of the material that the mesh calls by this name; may be invalid.
    SceneNodeUID materialUIDByName(const SceneNodeMesh& mesh_node, const String& material_name) const;
    void checkMaterialCount(const Mesh& mesh) const;
    void collectDependencies(SceneVisitor& visitor);
    void updateDependencies(SceneVisitor& visitor);
    void growBox(SceneVisitor& visitor) const;
    void offsetUIDs(SceneVisitor& visitor);
};

} // namespace Quenza
