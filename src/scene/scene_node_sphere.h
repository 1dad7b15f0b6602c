// SPDX-License-Identifier: MIT
#pragma once

#include "scene/keyframe.h"
#include "scene/scene_node.h"

namespace Quenza {

class SceneNodeMaterial;

/// An analytic sphere.
class SceneNodeSphere : public SceneNode {
public:
    SceneNodeSphere();
    ~SceneNodeSphere() override;

    u32 getType() const override { return NODE_SPHERE; }
    /// The copy has the material's stored UID, but isn't bound.
    Ref<SceneNode> clone() const override;
    void rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    bool usesNode(SceneNode* node) const override;
    Vector<SceneNodeUID> getReferencedUIDs() const override;
    bool doIsEqual(const SceneNode& other) const override;

    Vector<KeyFrame> keyframes; ///< Over the frame interval; one for a static sphere.
    double radius = 1.0;        ///< Metres.
    Ref<SceneNodeMaterial> material;
    SceneNodeUID material_uid;

private:
    void bind();
    void growBox(SceneVisitor& visitor) const;
};

} // namespace Quenza
