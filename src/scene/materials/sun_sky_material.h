// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

namespace Quenza {

/// The light of the sun and the sky, for the background.
class SunSkyMaterial : public Material {
public:
    static constexpr u32 TYPE = 10;

    SunSkyMaterial() : Material(KIND) {}

    Vec3d sundir{0.0, 0.0, 1.0}; ///< Towards the sun, scene space.
    double turbidity = 2.0;
    bool extra_atmospheric = false; ///< As seen from above the atmosphere.
    bool enable_sky = true;
    i32 sun_layer = 0;
    i32 sky_layer = 0;
    String model = "original"; ///< Or "captured-simulation".

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "sunsky", "SunSkyMaterial"};
};

} // namespace Quenza
