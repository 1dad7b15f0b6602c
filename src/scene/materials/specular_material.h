// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"
#include "scene/scene_node_medium.h"

namespace Quenza {

/// A mirror or a clear dielectric.
class SpecularMaterial : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 6;

    SpecularMaterial() : SurfaceMaterial(KIND) {}

    Ref<SceneNodeMedium> internal_medium;
    SceneNodeUID internal_medium_uid;
    bool transparent = true;
    Ref<WavelengthDependentParam> absorption_layer_transmittance;
    Ref<TabulatedSpectralData> tabulated_external_reflection_coefficient; ///< May be null.
    Ref<TabulatedSpectralData> tabulated_internal_reflection_coefficient; ///< May be null.
    Ref<TabulatedSpectralData> tabulated_transmission_coefficient;        ///< May be null.
    String private_data;                                                  ///< Handed through as it is.

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "specular", "SpecularMaterial"};
};

} // namespace Quenza
