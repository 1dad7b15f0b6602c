// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/vec.h"
#include "foundation/types.h"
#include "scene/materials/sun_sky_material.h"

namespace engine {

/// Daylight after Preetham, Shirley and Smits, "A Practical Analytic Model for Daylight", SIGGRAPH 1999: the
/// sky's luminance and chromaticity after Perez, and the sun's spectrum behind the atmosphere (Rayleigh
/// scattering, aerosol, ozone; the bands of water and mixed gases lie beyond 690 nm, where the eye hardly
/// sees, and are left out).
///
/// Turbidity is kept within 1.7 and 10, where the model holds. With the sun below the horizon there is no
/// sun, and the sky of sunset fades by a factor of ten every 3 degrees; that isn't in the paper. Nor is the
/// ground, which is seen below the horizon where there is a sky: a grey of reflectance 0.2 in the light of
/// the sky and the sun. As seen from above the atmosphere there is the sun at full strength in a black sky.
/// The scene's "model" is not looked at here: this is the "original".
class SunSky {
public:
    explicit SunSky(const Quenza::SunSkyMaterial& material);

    /// Radiance from a direction of length 1 that points away from the viewer; z is up.
    RGB sky(const Vec& direction) const;
    /// What the sun adds to the ground, which sky() shows in the light of the sky; black above the horizon.
    RGB sunlitGround(const Vec& direction) const;
    /// The sun's disc: its radiance within it, black outside.
    RGB sun(const Vec& direction) const;

    bool hasSky() const { return has_sky_; }
    bool hasSun() const { return has_sun_; }
    Vec sunDirection() const { return sun_direction_; } ///< Towards the sun.
    float sunCosAngle() const;                          ///< Of the disc's radius.
    float sunSolidAngle() const;
    RGB sunRadiance() const { return sun_radiance_; }
    Quenza::u32 sunLayer() const { return sun_layer_; }
    Quenza::u32 skyLayer() const { return sky_layer_; }

private:
    /// Perez' five coefficients and the value at the zenith over that of the formula.
    struct Distribution {
        float a, b, c, d, e, zenith;
        float value(float cos_theta, float gamma) const;
        float formula(float cos_theta, float gamma) const;
    };

    void initialiseSky(float turbidity);
    void initialiseSun(float turbidity, bool extra_atmospheric);
    RGB skyAbove(const Vec& direction) const;
    RGB groundRadiance() const;

    Vec sun_direction_;
    bool has_sky_ = false;
    bool has_sun_ = false;
    float twilight_ = 1;
    Distribution luminance_{}, x_{}, y_{};
    RGB sun_radiance_;
    RGB ground_, sunlit_ground_;
    Quenza::u32 sun_layer_ = 0;
    Quenza::u32 sky_layer_ = 0;
};

} // namespace engine
