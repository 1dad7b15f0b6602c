// SPDX-License-Identifier: MIT
#include "engine/sky.h"

#include "engine/cie1931.h"
#include "engine/sampling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace engine {

namespace {

/// Radians; seen from the earth at its mean distance.
constexpr double SUN_RADIUS = 0.004652;
constexpr float GROUND_REFLECTANCE = 0.2f;
/// Of the sun below the horizon, for a tenth of the light.
constexpr float TWILIGHT_DEGREES = 3.0f;
/// Below this nothing of the twilight is left.
constexpr float NIGHT_DEGREES = -18.0f;
/// The distribution rises without limit towards the sun's own place at the horizon only below it; directions
/// at the horizon count as this far above it.
constexpr float MIN_COS_THETA = 0.01f;

constexpr size_t SUN_SAMPLES = 38; // 380 to 750 nm in steps of 10

// Radiance of the sun's disc outside the atmosphere in 10 W/(cm^2 um sr) = 1e11 W/(m^2 m sr): appendix of the
// paper.
constexpr double SUN_SPECTRUM[SUN_SAMPLES] = {
    165.5, 162.3, 211.2, 258.8, 258.2, 242.3, 267.6, 296.6, 305.4, 300.6, 306.6, 288.3, 287.1,
    278.2, 271.0, 272.3, 263.6, 255.0, 250.6, 253.1, 253.5, 251.3, 246.3, 241.7, 236.8, 232.1,
    228.2, 223.4, 219.7, 215.3, 211.0, 207.3, 202.4, 198.7, 194.3, 190.7, 186.3, 182.6};
constexpr double SUN_SPECTRUM_UNIT = 1e11;

// Absorption of ozone in 1/cm, from the same appendix.
constexpr double OZONE[SUN_SAMPLES] = {0.000, 0.000, 0.001, 0.002, 0.002, 0.003, 0.003, 0.003, 0.006, 0.009,
                                       0.014, 0.021, 0.030, 0.040, 0.048, 0.063, 0.075, 0.085, 0.103, 0.120,
                                       0.120, 0.115, 0.125, 0.120, 0.105, 0.090, 0.079, 0.067, 0.057, 0.048,
                                       0.036, 0.028, 0.023, 0.018, 0.014, 0.011, 0.010, 0.009};

double sampled(const double (&table)[SUN_SAMPLES], double nm) {
    const double position = std::clamp((nm - 380.0) / 10.0, 0.0, double(SUN_SAMPLES - 1));
    const size_t index = std::min(size_t(position), SUN_SAMPLES - 2);
    const double t = position - double(index);
    return table[index] * (1 - t) + table[index + 1] * t;
}

/// What the atmosphere lets through of the sun's light at an angle from the zenith, in radians.
double transmittance(double nm, double theta, double turbidity) {
    const double um = nm * 1e-3;
    const double degrees = theta * 180.0 / double(PI);
    // Relative optical mass (Kasten).
    const double mass = 1.0 / (std::cos(theta) + 0.15 * std::pow(93.885 - degrees, -1.253));
    // Angstrom's turbidity coefficient.
    const double beta = 0.04608365822050 * turbidity - 0.04586025928522;
    const double rayleigh = 0.008735 * std::pow(um, -4.08);
    const double aerosol = beta * std::pow(um, -1.3);
    const double ozone = 0.35 * sampled(OZONE, nm);
    return std::exp(-mass * (rayleigh + aerosol + ozone));
}

float angleBetween(const Vec& a, const Vec& b) {
    return std::acos(std::clamp(dot(a, b), -1.0f, 1.0f));
}

RGB rgbOf(const Triple& xyz) {
    const Triple rgb = transformed(XYZ_TO_RGB, xyz);
    return {float(std::max(rgb[0], 0.0)), float(std::max(rgb[1], 0.0)), float(std::max(rgb[2], 0.0))};
}

float zenithLuminance(float t, float theta) {
    const float chi = (4.0f / 9.0f - t / 120.0f) * (PI - 2.0f * theta);
    return 1000.0f * ((4.0453f * t - 4.9710f) * std::tan(chi) - 0.2155f * t + 2.4192f);
}

float zenithX(float t, float s) {
    const float s2 = s * s, s3 = s2 * s;
    return t * t * (0.00166f * s3 - 0.00375f * s2 + 0.00209f * s) +
           t * (-0.02903f * s3 + 0.06377f * s2 - 0.03202f * s + 0.00394f) +
           (0.11693f * s3 - 0.21196f * s2 + 0.06052f * s + 0.25886f);
}

float zenithY(float t, float s) {
    const float s2 = s * s, s3 = s2 * s;
    return t * t * (0.00275f * s3 - 0.00610f * s2 + 0.00317f * s) +
           t * (-0.04214f * s3 + 0.08970f * s2 - 0.04153f * s + 0.00516f) +
           (0.15346f * s3 - 0.26756f * s2 + 0.06670f * s + 0.26688f);
}

} // namespace

float SunSky::Distribution::formula(float cos_theta, float gamma) const {
    const float cos_gamma = std::cos(gamma);
    return (1 + a * std::exp(b / cos_theta)) * (1 + c * std::exp(d * gamma) + e * cos_gamma * cos_gamma);
}

float SunSky::Distribution::value(float cos_theta, float gamma) const {
    return zenith * formula(cos_theta, gamma);
}

SunSky::SunSky(const Quenza::SunSkyMaterial& material)
    : sun_direction_(normalise(toVec(material.sundir))),
      sun_layer_(Quenza::u32(std::max(0, material.sun_layer))),
      sky_layer_(Quenza::u32(std::max(0, material.sky_layer))) {
    if (!(length(sun_direction_) > 0.5f) || !std::isfinite(length(sun_direction_)))
        sun_direction_ = {0, 0, 1};
    const float turbidity =
        std::isfinite(material.turbidity) ? float(std::clamp(material.turbidity, 1.7, 10.0)) : 2.0f;
    initialiseSun(turbidity, material.extra_atmospheric);
    if (material.enable_sky && !material.extra_atmospheric)
        initialiseSky(turbidity);
}

void SunSky::initialiseSun(float turbidity, bool extra_atmospheric) {
    has_sun_ = extra_atmospheric || sun_direction_.z > 0;
    if (!has_sun_)
        return;
    const double theta = std::acos(std::clamp(double(sun_direction_.z), -1.0, 1.0));
    Triple xyz = integrateXYZ([&](double nm) {
        const double radiance = sampled(SUN_SPECTRUM, nm) * SUN_SPECTRUM_UNIT;
        return extra_atmospheric ? radiance : radiance * transmittance(nm, theta, double(turbidity));
    });
    for (double& component : xyz)
        component *= LUMENS_PER_WATT;
    sun_radiance_ = rgbOf(xyz);
}

void SunSky::initialiseSky(float t) {
    const float elevation = std::asin(std::clamp(sun_direction_.z, -1.0f, 1.0f)) * 180.0f / PI;
    if (elevation < NIGHT_DEGREES)
        return;
    has_sky_ = true;
    twilight_ = elevation < 0 ? std::pow(10.0f, elevation / TWILIGHT_DEGREES) : 1.0f;
    const float theta = std::min(angleBetween(sun_direction_, {0, 0, 1}), PI / 2);
    luminance_ = {0.1787f * t - 1.4630f, -0.3554f * t + 0.4275f, -0.0227f * t + 5.3251f,
                  0.1206f * t - 2.5771f, -0.0670f * t + 0.3703f, 0};
    x_ = {-0.0193f * t - 0.2592f, -0.0665f * t + 0.0008f, -0.0004f * t + 0.2125f,
          -0.0641f * t - 0.8989f, -0.0033f * t + 0.0452f, 0};
    y_ = {-0.0167f * t - 0.2608f, -0.0950f * t + 0.0092f, -0.0079f * t + 0.2102f,
          -0.0441f * t - 1.6537f, -0.0109f * t + 0.0529f, 0};
    luminance_.zenith = std::max(zenithLuminance(t, theta), 0.0f) / luminance_.formula(1.0f, theta);
    x_.zenith = zenithX(t, theta) / x_.formula(1.0f, theta);
    y_.zenith = zenithY(t, theta) / y_.formula(1.0f, theta);
    ground_ = groundRadiance();
    if (has_sun_)
        sunlit_ground_ = sun_radiance_ * (sunSolidAngle() * sun_direction_.z * GROUND_REFLECTANCE / PI);
}

RGB SunSky::skyAbove(const Vec& direction) const {
    const float cos_theta = std::max(direction.z, MIN_COS_THETA);
    const float gamma = angleBetween(direction, sun_direction_);
    const float luminance = std::max(luminance_.value(cos_theta, gamma), 0.0f) * twilight_;
    const double x = double(x_.value(cos_theta, gamma));
    const double y = std::max(double(y_.value(cos_theta, gamma)), 0.01);
    Triple xyz = xyzOfChromaticity(x, y);
    for (double& component : xyz)
        component *= double(luminance);
    return rgbOf(xyz);
}

/// The illuminance from the sky times the reflectance over pi.
RGB SunSky::groundRadiance() const {
    constexpr int RINGS = 16;
    constexpr int STEPS = 32;
    RGB sum;
    for (int ring = 0; ring < RINGS; ++ring)
        for (int step = 0; step < STEPS; ++step) {
            // Equal parts of the disc below the dome: the mean is the illuminance over pi.
            const float sine = std::sqrt((float(ring) + 0.5f) / float(RINGS));
            const float phi = 2 * PI * (float(step) + 0.5f) / float(STEPS);
            sum += skyAbove({sine * std::cos(phi), sine * std::sin(phi), std::sqrt(1 - sine * sine)});
        }
    return sum * (GROUND_REFLECTANCE / float(RINGS * STEPS));
}

RGB SunSky::sky(const Vec& direction) const {
    if (!has_sky_)
        return RGB();
    return direction.z < 0 ? ground_ : skyAbove(direction);
}

RGB SunSky::sunlitGround(const Vec& direction) const {
    return direction.z < 0 ? sunlit_ground_ : RGB();
}

RGB SunSky::sun(const Vec& direction) const {
    return has_sun_ && dot(direction, sun_direction_) >= sunCosAngle() ? sun_radiance_ : RGB();
}

float SunSky::sunCosAngle() const {
    return float(std::cos(SUN_RADIUS));
}

float SunSky::sunSolidAngle() const {
    // 2 pi (1 - cos), without its loss of digits.
    const double half = std::sin(SUN_RADIUS / 2);
    return float(4 * double(PI) * half * half);
}

} // namespace engine
