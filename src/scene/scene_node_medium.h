// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/medium.h"
#include "scene/scene_node.h"

namespace Quenza {

/// A medium's place in the scene. The name lives on the medium object; the node's own serves until there is
/// one.
class SceneNodeMedium : public SceneNode {
public:
    static constexpr u32 TYPE = NODE_MEDIUM;

    SceneNodeMedium() = default;
    explicit SceneNodeMedium(const Ref<Medium>& medium_) : medium(medium_) {}

    u32 getType() const override { return TYPE; }
    void setName(const String& new_name) override;
    const String& getName() const override;
    /// Shares the medium object.
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    bool doIsEqual(const SceneNode& other) const override;

    Ref<Medium> medium;
};

} // namespace Quenza
