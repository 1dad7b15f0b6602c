// SPDX-License-Identifier: MIT
#pragma once

#include "scene/emission.h"
#include "scene/scene_node.h"

namespace Quenza {

class Material;

/// What surrounds the scene. A scene has at most one.
class SceneNodeBackgroundSettings : public SceneNode {
public:
    SceneNodeBackgroundSettings();
    ~SceneNodeBackgroundSettings() override;

    u32 getType() const override { return NODE_BACKGROUND_SETTINGS; }
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    u32 getHighestLayerIndex() const override;
    bool doIsEqual(const SceneNode& other) const override;

    Ref<EmissionScale> emission_scale; ///< May be null.
    Ref<Material> background_material; ///< May be null. It has no node of its own.
};

} // namespace Quenza
