// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_material.h"

namespace Quenza {

/// Two materials, mixed by a factor.
class BlendMaterial : public Material {
public:
    static constexpr u32 TYPE = 0;

    BlendMaterial() : Material(KIND) {}

    Ref<SceneNodeMaterial> a_mat;
    SceneNodeUID a_mat_uid;
    Ref<SceneNodeMaterial> b_mat;
    SceneNodeUID b_mat_uid;
    Ref<DisplacementParam> blend; ///< The share of b.
    bool step_blend = false;      ///< One or the other, no mixture.

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "blend", "BlendMaterial"};
};

} // namespace Quenza
