// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"

namespace Quenza {

/// Rough diffuse reflection.
class OrenNayarMaterial : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 4;

    OrenNayarMaterial() : SurfaceMaterial(KIND) {}

    Ref<WavelengthDependentParam> albedo;
    Ref<WavelengthIndependentParam> sigma; ///< Roughness.

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "oren_nayar", "OrenNayarMaterial"};
};

} // namespace Quenza
