// SPDX-License-Identifier: MIT
#include "engine/sky.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace engine;

namespace {

constexpr float PI = 3.14159265f;

Quenza::SunSkyMaterial sunAt(float elevation_degrees, double turbidity = 2.4) {
    Quenza::SunSkyMaterial material;
    const float e = elevation_degrees * PI / 180;
    // Any length will do.
    material.sundir = {0, double(3 * std::cos(e)), double(3 * std::sin(e))};
    material.turbidity = turbidity;
    return material;
}

/// On the level ground, in lux.
float skyIlluminance(const SunSky& sky) {
    constexpr int N = 40;
    float sum = 0;
    for (int i = 0; i < N; ++i)
        for (int j = 0; j < N; ++j) {
            const float sine = std::sqrt((float(i) + 0.5f) / N);
            const float phi = 2 * PI * (float(j) + 0.5f) / N;
            sum +=
                luminance(sky.sky({sine * std::cos(phi), sine * std::sin(phi), std::sqrt(1 - sine * sine)}));
        }
    return sum * PI / (N * N);
}

float sunIlluminance(const SunSky& sky) {
    return luminance(sky.sunRadiance()) * sky.sunSolidAngle();
}

} // namespace

// Measured daylight: 120 to 135 klx outside the atmosphere; on a clear day 75 to 105 klx from a high sun, 10
// to 50 klx from the sky.
TEST(Sky, GivesTheLightOfARealDay) {
    const SunSky noon(sunAt(50));
    EXPECT_TRUE(noon.hasSun() && noon.hasSky());
    EXPECT_GT(sunIlluminance(noon), 75000.0f);
    EXPECT_LT(sunIlluminance(noon), 105000.0f);
    EXPECT_GT(skyIlluminance(noon), 10000.0f);
    EXPECT_LT(skyIlluminance(noon), 50000.0f);
    Quenza::SunSkyMaterial space = sunAt(50);
    space.extra_atmospheric = true;
    EXPECT_GT(sunIlluminance(SunSky(space)), 120000.0f);
    EXPECT_LT(sunIlluminance(SunSky(space)), 135000.0f);
    EXPECT_FALSE(SunSky(space).hasSky());
    EXPECT_TRUE(isBlack(SunSky(space).sky({0, 0, 1})));
}

TEST(Sky, BelowTheHorizonThereIsNoSunAndTheSkyFades) {
    const SunSky set(sunAt(0.5f)), dusk(sunAt(-3)), night(sunAt(-20));
    EXPECT_FALSE(dusk.hasSun());
    EXPECT_TRUE(isBlack(dusk.sun(dusk.sunDirection())));
    EXPECT_NEAR(skyIlluminance(dusk) / skyIlluminance(SunSky(sunAt(-0.001f))), 0.1f, 0.05f);
    EXPECT_LT(skyIlluminance(dusk), skyIlluminance(set));
    EXPECT_FALSE(night.hasSun() || night.hasSky());
}

TEST(Sky, AnyNumbersGiveFiniteLight) {
    const double huge = std::numeric_limits<double>::infinity();
    for (const double turbidity : {-1.0, 0.0, 1.0, 50.0, huge, std::nan("")})
        for (const float elevation : {-90.0f, -1.0f, 0.0f, 0.01f, 45.0f, 90.0f}) {
            const SunSky sky(sunAt(elevation, turbidity));
            EXPECT_TRUE(std::isfinite(luminance(sky.sunRadiance())));
            for (const Vec& direction :
                 {Vec{0, 0, 1}, Vec{1, 0, 0}, Vec{0, 1, 0}, Vec{0, -1, 0.0f}, Vec{0, 0, -1}}) {
                const RGB c = sky.sky(direction);
                EXPECT_TRUE(std::isfinite(luminance(c)) && c.r >= 0 && c.g >= 0 && c.b >= 0);
            }
        }
    EXPECT_EQ(luminance(SunSky(sunAt(40, 99)).sunRadiance()), luminance(SunSky(sunAt(40, 10)).sunRadiance()));
    for (const Quenza::Vec3d& none : {Quenza::Vec3d{0, 0, 0}, Quenza::Vec3d{huge, 0, 0}}) {
        Quenza::SunSkyMaterial material;
        material.sundir = none;
        EXPECT_EQ(SunSky(material).sunDirection().z, 1.0f);
    }
}
