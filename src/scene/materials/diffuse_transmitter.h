// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"
#include "scene/scene_node_medium.h"

namespace Quenza {

/// Lambertian transmission, such as through paper.
class DiffuseTransmitter : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 2;

    DiffuseTransmitter() : SurfaceMaterial(KIND) {}

    Ref<WavelengthDependentParam> albedo;
    Ref<SceneNodeMedium> internal_medium; ///< May stay unset.
    SceneNodeUID internal_medium_uid;

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "diffuse_transmitter", "DiffuseTransmitter"};
};

} // namespace Quenza
