// SPDX-License-Identifier: MIT
// Scattering at one point, seen from all sides: energy, densities and symmetry, by numbers alone.
#include "engine/bsdf.h"
#include "engine/fresnel.h"
#include "engine/microfacet.h"
#include "engine/random.h"
#include "engine/reflectance.h"
#include "engine/sampling.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

namespace {

using namespace engine;

constexpr float DEGREE = std::numbers::pi_v<float> / 180.0f;

SurfacePoint flatPoint() {
    SurfacePoint point;
    point.normal = point.shading_normal = {0, 0, 1};
    return point;
}

Vec directionAt(float degrees, float azimuth = 0.0f) {
    return {std::sin(degrees * DEGREE) * std::cos(azimuth), std::sin(degrees * DEGREE) * std::sin(azimuth),
            std::cos(degrees * DEGREE)};
}

Lobe lobe(Lobe::Kind kind, float roughness = 0, float eta = 1) {
    Lobe made;
    made.kind = kind;
    made.roughness = roughness;
    made.eta = eta;
    return made;
}

Coat varnish(float film = 0) {
    Coat coat;
    coat.film = film;
    coat.average = film > 0 ? 0 : fresnelAverage(coat.eta);
    return coat;
}

/// A surface that is put together from lobes and coats.
struct Surface {
    const char* name;
    std::function<void(BSDF&)> build;
    double least = 0; ///< What it sends on of the light at least, of 1.
};

const ReflectanceCurve& silver() {
    static const ReflectanceCurve curve(
        [](double, double cosine) { return fresnelConductor(cosine, 0.13, 3.6); });
    return curve;
}

const std::vector<Surface>& surfaces() {
    using Kind = Lobe::Kind;
    static const std::vector<Surface> all = {
        {"diffuse", [](BSDF& b) { b.add(lobe(Kind::DIFFUSE)); }, 0.999},
        {"oren-nayar", [](BSDF& b) { b.add(lobe(Kind::OREN_NAYAR, 0.4f)); }, 0.8},
        {"transmitter", [](BSDF& b) { b.add(lobe(Kind::DIFFUSE_TRANSMIT)); }, 0.999},
        {"glossy", [](BSDF& b) { b.add(lobe(Kind::GLOSSY, 0.3f, 1.5f)); }},
        {"metal", [](BSDF& b) { b.add(lobe(Kind::METAL, 0.2f)); }, 0.88},
        {"measured metal",
         [](BSDF& b) {
             Lobe metal = lobe(Kind::METAL, 0.2f);
             metal.curve = &silver();
             b.add(metal);
         },
         0.85},
        {"into rough glass", [](BSDF& b) { b.add(lobe(Kind::ROUGH_GLASS, 0.2f, 1.5f)); }, 0.9},
        {"out of rough glass", [](BSDF& b) { b.add(lobe(Kind::ROUGH_GLASS, 0.2f, 1 / 1.5f)); }, 0.85},
        {"varnish on white",
         [](BSDF& b) {
             b.add(lobe(Kind::GLOSSY, 0.1f, 1.5f));
             const BSDF::Under under(b, varnish());
             b.add(lobe(Kind::DIFFUSE));
         },
         0.9},
        {"varnish on metal",
         [](BSDF& b) {
             b.add(lobe(Kind::GLOSSY, 0.1f, 1.5f));
             const BSDF::Under under(b, varnish());
             b.add(lobe(Kind::METAL, 0.2f));
         }},
        {"two varnishes",
         [](BSDF& b) {
             const BSDF::Under upper(b, varnish());
             const BSDF::Under lower(b, varnish());
             b.add(lobe(Kind::DIFFUSE));
         }},
        {"oil film",
         [](BSDF& b) {
             Lobe film = lobe(Kind::GLOSSY, 0.1f, 1.5f);
             film.film = 300;
             b.add(film);
             const BSDF::Under under(b, varnish(300));
             b.add(lobe(Kind::DIFFUSE));
         }},
        {"sheet",
         [](BSDF& b) {
             Coat near = varnish(), far = varnish();
             near.far = far.near = false;
             b.add(lobe(Kind::GLOSSY, 0.1f, 1.5f));
             const BSDF::Under under_near(b, near);
             const BSDF::Under under_far(b, far);
             Lobe back = lobe(Kind::DIFFUSE), through = lobe(Kind::DIFFUSE_TRANSMIT);
             back.weight = through.weight = RGB{0.5f};
             b.add(back);
             b.add(through);
         },
         0.9},
    };
    return all;
}

/// The integral of `value` over all directions; the rows lie close together around the poles, where lobes are
/// narrow.
double overSphere(const std::function<double(const Vec&)>& value) {
    constexpr int ROWS = 360, COLUMNS = 384;
    double sum = 0;
    for (int i = 0; i < ROWS; ++i) {
        const float angle = PI * (float(i) + 0.5f) / ROWS;
        for (int k = 0; k < COLUMNS; ++k) {
            const float azimuth = 2 * PI * (float(k) + 0.5f) / COLUMNS;
            sum += value(directionAt(angle / DEGREE, azimuth)) * double(std::sin(angle));
        }
    }
    return sum * 2 * double(PI) * double(PI) / (ROWS * COLUMNS);
}

/// It sends on no more than it gets, and samples by the density that it tells. Samples that are lost below
/// the surface of rough facets leave the density a little short of 1.
TEST(BSDF, KeepsItsEnergyAndTellsItsDensity) {
    for (const Surface& surface : surfaces()) {
        for (const float degrees : {0.0f, 30.0f, 60.0f, 80.0f}) {
            SCOPED_TRACE(surface.name + (" from " + std::to_string(degrees)));
            BSDF bsdf(flatPoint(), directionAt(degrees));
            surface.build(bsdf);
            float pdf = 0;
            const double albedo = overSphere([&](const Vec& in) { return double(bsdf.evaluate(in, pdf).g); });
            EXPECT_LT(albedo, 1.01);
            EXPECT_GT(albedo, degrees < 70 ? surface.least : -1);
            const double whole = overSphere([&](const Vec& in) {
                bsdf.evaluate(in, pdf);
                return double(pdf);
            });
            EXPECT_LT(whole, 1.01);
            EXPECT_GT(whole, degrees < 70 ? 0.85 : 0.6);
            // What the samples find on average is what the integral has.
            constexpr int SAMPLES = 20000;
            Random random(7);
            double sum = 0;
            for (int i = 0; i < SAMPLES; ++i) {
                BSDF::Sample sample;
                if (bsdf.sample(random, sample)) {
                    sum += double(sample.weight.g);
                    bsdf.evaluate(sample.in, pdf);
                    ASSERT_NEAR(pdf / sample.pdf, 1, 1e-3);
                }
            }
            EXPECT_NEAR(sum / SAMPLES, albedo, 0.02);
        }
    }
}

TEST(BSDF, BendsLightBySnellsLaw) {
    const struct {
        float degrees, eta, behind;
    } cases[] = {{0, 1.5f, 0}, {30, 1.5f, 19.4712f}, {60, 1.33f, 40.6279f}, {30, 1 / 1.5f, 48.5904f}};
    for (const auto& test : cases) {
        BSDF bsdf(flatPoint(), directionAt(test.degrees));
        bsdf.add(lobe(Lobe::Kind::GLASS, 0, test.eta));
        Random random(3);
        int through = 0;
        constexpr int SAMPLES = 20000;
        for (int i = 0; i < SAMPLES; ++i) {
            BSDF::Sample sample;
            ASSERT_TRUE(bsdf.sample(random, sample));
            EXPECT_TRUE(std::isinf(sample.pdf));
            EXPECT_EQ(sample.weight.r, 1) << "glass loses nothing";
            if (sample.transmitted) {
                ++through;
                EXPECT_NEAR(std::acos(-sample.in.z) / DEGREE, test.behind, 0.01f);
            } else {
                EXPECT_NEAR(std::acos(sample.in.z) / DEGREE, test.degrees, 0.05f);
            }
        }
        const float reflected = fresnelDielectric(std::cos(test.degrees * DEGREE), test.eta);
        EXPECT_NEAR(1 - double(through) / SAMPLES, double(reflected), 0.01);
    }
}

TEST(Fresnel, GivesTheKnownReflectances) {
    const struct {
        float degrees, eta;
        double expected;
    } dielectrics[] = {{0, 1.5f, 0.04},      {0, 1.33f, 0.020059},    {45, 1.5f, 0.050239},
                       {60, 1.5f, 0.089187}, {89.99f, 1.5f, 1.0},     {56.3099f, 1.5f, 0.0740},
                       {0, 1 / 1.5f, 0.04},  {41, 1 / 1.5f, 0.37975}, {42, 1 / 1.5f, 1.0},
                       {70, 1.0f, 0.0}};
    for (const auto& test : dielectrics) {
        EXPECT_NEAR(fresnelDielectric(std::cos(test.degrees * DEGREE), test.eta), test.expected, 2e-3)
            << test.degrees << " degrees, " << test.eta;
    }
    EXPECT_NEAR(fresnelAverage(1.5f), 0.0918, 5e-4);

    const struct {
        double degrees, n, k, expected;
    } conductors[] = {{0, 0.27, 2.78, (0.73 * 0.73 + 2.78 * 2.78) / (1.27 * 1.27 + 2.78 * 2.78)},
                      {0, 1.5, 0, 0.04},
                      {60, 1.5, 0, 0.089187},
                      {90, 0.27, 2.78, 1}};
    for (const auto& test : conductors) {
        const double cosine = std::cos(test.degrees * double(DEGREE));
        EXPECT_NEAR(fresnelConductor(cosine, test.n, test.k), test.expected, 1e-4) << test.degrees;
    }
}

} // namespace
