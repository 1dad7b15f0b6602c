// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node.h"

namespace Quenza {

/// Where a scene comes from. A scene has at most one.
class SceneNodeMetaData : public SceneNode {
public:
    u32 getType() const override { return NODE_METADATA; }
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;

    String exporter;
    String author;
    String description;
    String created_date;
    String platform;
    String exporter_specific;
};

} // namespace Quenza
