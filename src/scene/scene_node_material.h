// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/uid.h"
#include "foundation/vector.h"
#include "scene/material.h"
#include "scene/scene_node.h"

namespace Quenza {

class SceneNodeScatter;

/// A material's place in the scene. The name lives on the material object; the node's own serves until there
/// is one.
class SceneNodeMaterial : public SceneNode {
public:
    static constexpr u32 TYPE = NODE_MATERIAL;

    SceneNodeMaterial();
    explicit SceneNodeMaterial(const Ref<Material>& material_);
    ~SceneNodeMaterial() override;

    u32 getType() const override { return TYPE; }
    void setName(const String& new_name) override;
    const String& getName() const override;
    /// Shares the material object; the scatter nodes stay behind.
    Ref<SceneNode> clone() const override;
    void rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    u32 getHighestLayerIndex() const override;
    bool usesNode(SceneNode* node) const override;
    Vector<SceneNodeUID> getReferencedUIDs() const override;
    bool doIsEqual(const SceneNode& other) const override;

    Ref<Material> material;
    Vector<SceneNodeUID> scatter_uids; ///< As read; binding turns them into `scatter_nodes`.
    Vector<Ref<SceneNodeScatter>>
        scatter_nodes; ///< Nodes that scatter objects over surfaces of this material.

private:
    void bindScatterNodes();
};

} // namespace Quenza
