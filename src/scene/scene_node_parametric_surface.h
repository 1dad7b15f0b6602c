// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node.h"

namespace Quenza {

/// A surface whose points a shader computes on a grid of u and v.
class SceneNodeParametricSurface : public SceneNode {
public:
    u32 getType() const override { return NODE_PARAMETRIC_SURFACE; }
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    bool doIsEqual(const SceneNode& other) const override;

    String shader; ///< Source text.
    i32 num_u = 1;
    i32 num_v = 1;
};

} // namespace Quenza
