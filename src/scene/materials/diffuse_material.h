// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"

namespace Quenza {

/// Lambertian reflection.
class DiffuseMaterial : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 1;

    DiffuseMaterial() : SurfaceMaterial(KIND) {}

    Ref<WavelengthDependentParam> albedo;
    bool random_triangle_colours = false; ///< Shows the triangles, each in a colour of its own.

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "diffuse", "DiffuseMaterial"};
};

} // namespace Quenza
