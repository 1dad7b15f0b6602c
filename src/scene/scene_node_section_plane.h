// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/vec.h"
#include "scene/scene_node.h"

namespace Quenza {

/// Cuts the scene open at a plane.
class SceneNodeSectionPlane : public SceneNode {
public:
    /// Values of `object_list_type`.
    enum ObjectListType : u32 {
        INCLUDE = 0, ///< Only the listed objects are cut.
        EXCLUDE = 1, ///< All but the listed objects are cut.
    };

    u32 getType() const override { return NODE_SECTION_PLANE; }
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    /// The listed objects'.
    Vector<SceneNodeUID> getReferencedUIDs() const override { return object_list; }

    Vec3d point{0, 0, 0}; ///< Metres.
    Vec3d normal{0, 0, 1};
    bool enabled = true;
    bool cull_geometry = true;
    u32 object_list_type = EXCLUDE;
    Vector<SceneNodeUID> object_list;
};

} // namespace Quenza
