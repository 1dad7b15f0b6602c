// SPDX-License-Identifier: MIT
#include "engine/medium_stack.h"
#include "engine/random.h"
#include "engine/sampling.h"
#include "engine/scattering.h"
#include "engine/scene_builder.h"
#include "engine/skin.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/glossy_transparent.h"
#include "scene/materials/specular_material.h"
#include "scene/medium.h"
#include "scene/scene_node_medium.h"
#include "scene/spectrum.h"
#include "scene/volume_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {

using namespace Quenza;
using engine::InternalMedium;
using engine::RGB;

Ref<VolumeParam> coefficient(double value) {
    return new ConstantVolumeParam(new UniformSpectrum(value));
}

Ref<BasicMedium> basic(double ior, double absorption, double scattering, double mean_cosine = 0) {
    Ref<BasicMedium> medium = new BasicMedium;
    medium->ior = ior;
    medium->absorption_coefficient = coefficient(absorption);
    if (scattering > 0) {
        medium->subsurface_scattering = new SubsurfaceScattering;
        medium->subsurface_scattering->scattering_coefficient = coefficient(scattering);
        Ref<HenyeyGreensteinPhaseFunction> phase = new HenyeyGreensteinPhaseFunction;
        phase->g_spectrum = coefficient(mean_cosine);
        medium->subsurface_scattering->phase_function = phase;
    }
    return medium;
}

Ref<SceneNodeMedium> add(SceneBuilder& scene, const Ref<Medium>& medium) {
    Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
    scene.root->addChild(node);
    return node;
}

Ref<SceneNodeMaterial> clear(SceneBuilder& scene, const Ref<Medium>& medium) {
    Ref<SpecularMaterial> material = new SpecularMaterial;
    material->internal_medium = add(scene, medium);
    return scene.add(material);
}

TEST(MediumStack, HighestPrecedenceDecidesWhereMediaOverlap) {
    InternalMedium water, glass;
    water.ior = 1.33f;
    glass.ior = 1.5f;
    const struct {
        const char* name;
        int water_precedence, glass_precedence;
        bool real;
        float eta;
    } cases[] = {
        {"glass wins over the water it stands in", 1, 10, true, 1.5f / 1.33f},
        {"glass is not there for stronger water", 10, 1, false, 1.0f},
        {"the last one entered wins among equals", 5, 5, true, 1.5f / 1.33f},
    };
    for (const auto& test : cases) {
        water.precedence = test.water_precedence;
        glass.precedence = test.glass_precedence;
        engine::MediumStack media;
        EXPECT_EQ(media.current(), nullptr);
        media.enter(&water);
        const engine::Interface into = engine::interfaceOf(media, &glass, true);
        EXPECT_EQ(into.real, test.real) << test.name;
        EXPECT_NEAR(into.eta, test.eta, 1e-5f) << test.name;
        media.enter(&glass);
        const engine::Interface out = engine::interfaceOf(media, &glass, false);
        EXPECT_EQ(out.real, test.real) << test.name;
        EXPECT_NEAR(out.eta, 1 / test.eta, 1e-5f) << test.name;
        media.leave(&glass);
        EXPECT_EQ(media.current(), &water);
    }
}

/// A ball of absorbing glass in water that has precedence can't be seen; one that has it itself is dark.
TEST(Media, OverlapsAreSeenByPrecedence) {
    const auto render = [](int ball_precedence) {
        SceneBuilder scene(8, 8);
        scene.camera->lens_sensor_dist = 0.36;
        scene.setUniformBackground(1);
        const Ref<BasicMedium> air = basic(1, 0, 0), dark = basic(1, 100, 0);
        air->precedence = 5;
        dark->precedence = ball_precedence;
        scene.addSphere({0, 4, 0}, 1.5, clear(scene, air));
        scene.addSphere({0, 4, 0}, 0.9, clear(scene, dark));
        return meanLuminance(scene.render(4)[0], 3, 3, 5, 5) / unitLuminance();
    };
    EXPECT_NEAR(render(1), 1, 1e-3);
    EXPECT_NEAR(render(9), 0, 1e-3);
}

TEST(Scattering, PhaseFunctionIsADensityWithItsMeanCosine) {
    for (const float g : {-0.5f, 0.0f, 0.3f, 0.9f}) {
        double whole = 0, mean = 0;
        constexpr int STEPS = 20000;
        for (int i = 0; i < STEPS; ++i) {
            const float cosine = 2 * (float(i) + 0.5f) / STEPS - 1;
            const double part = double(engine::henyeyGreenstein(cosine, g)) * 4 * double(engine::PI) / STEPS;
            whole += part;
            mean += part * double(cosine);
        }
        EXPECT_NEAR(whole, 1, 1e-3) << g;
        EXPECT_NEAR(mean, double(g), 1e-3) << g;
        engine::Random random(3);
        const engine::Vec way = engine::normalise({1, 2, -2});
        double sampled = 0;
        for (int i = 0; i < STEPS; ++i) {
            sampled += double(dot(way, engine::sampleHenyeyGreenstein(way, g, random))) / STEPS;
        }
        EXPECT_NEAR(sampled, double(g), 0.015) << g;
    }
}

TEST(Scattering, FlightsLoseWhatIsAbsorbedAlone) {
    InternalMedium medium;
    medium.absorption = {0.0f, 0.5f, 0.0f};
    medium.scattering = {1.0f, 3.0f, 0.0f};
    engine::Random random(11);
    constexpr int FLIGHTS = 200000;
    RGB arrived, scattered;
    for (int i = 0; i < FLIGHTS; ++i) {
        const engine::Flight flight = engine::sampleFlight(medium, 0.8f, RGB{1.0f}, random);
        (flight.scattered ? scattered : arrived) += flight.weight / float(FLIGHTS);
    }
    EXPECT_NEAR(arrived.r, std::exp(-0.8f), 0.01f);
    EXPECT_NEAR(arrived.g, std::exp(-3.5f * 0.8f), 0.01f);
    EXPECT_NEAR(arrived.b, 1, 0.01f);
    EXPECT_NEAR(scattered.r, 1 - std::exp(-0.8f), 0.01f);
    EXPECT_NEAR(scattered.g, 3.0f / 3.5f * (1 - std::exp(-3.5f * 0.8f)), 0.01f);
    EXPECT_NEAR(scattered.b, 0, 0.01f);
}

/// White media take nothing away, so that in front of an even background they can't be seen.
TEST(Media, LosslessOnesDisappear) {
    const struct {
        const char* name;
        std::function<Ref<SceneNodeMaterial>(SceneBuilder&)> make;
        double loss; ///< Of the microfacets at a rough surface.
    } cases[] = {
        {"fog", [](SceneBuilder& s) { return clear(s, basic(1, 0, 2)); }, 0},
        {"forward fog", [](SceneBuilder& s) { return clear(s, basic(1, 0, 5, 0.8)); }, 0},
        {"milk in glass", [](SceneBuilder& s) { return clear(s, basic(1.5, 0, 5)); }, 0},
        {"wax",
         [](SceneBuilder& s) {
             Ref<DiffuseTransmitter> material = new DiffuseTransmitter;
             material->albedo = new ConstantWavelengthDependentParam(new UniformSpectrum(1));
             material->internal_medium = add(s, basic(1.5, 0, 4));
             return s.add(material);
         },
         0},
        {"frosted",
         [](SceneBuilder& s) {
             Ref<GlossyTransparent> material = new GlossyTransparent;
             material->exponent = new ConstantWavelengthIndependentParam(1000);
             material->internal_medium = add(s, basic(1.5, 0, 2));
             return s.add(material);
         },
         0.03},
        {"flint, which splits colours",
         [](SceneBuilder& s) {
             const Ref<BasicMedium> flint = basic(1.6, 0, 0);
             flint->cauchy_b_coeff = 0.02;
             return clear(s, flint);
         },
         0},
    };
    for (const auto& test : cases) {
        SceneBuilder scene;
        scene.setUniformBackground(1);
        scene.addSphere({0, 4, 0}, 1.5, test.make(scene));
        const double mean = meanLuminance(scene.render(128)[0], 4, 4, 12, 12) / unitLuminance();
        EXPECT_NEAR(mean, 1 - test.loss / 2, 0.015 + test.loss / 2) << test.name;
    }
}

/// Beer's law through a slab that scatters light out of the view into an otherwise black world.
TEST(Media, FogHidesByItsThickness) {
    for (const double scattering : {0.5, 2.0}) {
        SceneBuilder scene(8, 8);
        scene.camera->lens_sensor_dist = 3.6;
        const auto fog = clear(scene, basic(1, 0.3, scattering, 0));
        scene.addModel(rectangle({50, 0, 0}, {0, 0, 50}), fog, {0, 2, 0});
        scene.addModel(rectangle({50, 0, 0}, {0, 0, -50}), fog, {0, 3, 0});
        // So small that what it lights up in the fog doesn't count.
        scene.addModel(rectangle({0.35, 0, 0}, {0, 0, 0.35}), scene.emitter(1), {0, 6, 0});
        const double seen = meanLuminance(scene.render(256)[0]) / unitLuminance();
        EXPECT_NEAR(seen / std::exp(-(0.3 + scattering)), 1, 0.06) << scattering;
    }
}

/// A lamp shines through the boundary of a medium of the air's own index: what is scattered once, summed
/// along the line of sight. Light that is scattered more often adds a little.
TEST(Media, FogIsLitFromOutside) {
    SceneBuilder scene(8, 8);
    scene.camera->lens_sensor_dist = 3.6;
    const auto fog = clear(scene, basic(1, 0, 0.02));
    scene.addModel(rectangle({50, 0, 0}, {0, 0, 50}), fog, {0, 2, 0});
    scene.addModel(rectangle({50, 0, 0}, {0, 0, -50}), fog, {0, 3, 0});
    scene.addSphere({0, 0.5, 5}, 0.1, scene.emitter(1000));
    double expected = 0;
    for (int i = 0; i < 100; ++i) {
        const double inside = (i + 0.5) / 100;
        const double ahead = 1.5 + inside;
        const double squared = 25 + ahead * ahead;
        const double way_in = std::sqrt(squared) * inside / ahead;
        const double arriving = 1000 * double(engine::PI) * 0.01 / squared * std::exp(-0.02 * way_in);
        expected += 0.02 / 100 / (4 * double(engine::PI)) * arriving * std::exp(-0.02 * inside);
    }
    const double lit = meanLuminance(scene.render(2048)[0]) / unitLuminance();
    EXPECT_GT(lit / expected, 0.96);
    EXPECT_LT(lit / expected, 1.12);
}

/// Under water one sees through it; behind a pane that is open at its sides one doesn't stand in glass.
TEST(Media, CameraStandsInThem) {
    SceneBuilder pool(4, 4);
    pool.camera->lens_sensor_dist = 3.6;
    pool.setUniformBackground(1);
    pool.addSphere({0, 0, 0}, 2, clear(pool, basic(1, 0.5, 0)));
    EXPECT_NEAR(meanLuminance(pool.render(16)[0]) / unitLuminance(), std::exp(-1.0), 0.01);

    SceneBuilder room(4, 4);
    room.setUniformBackground(1);
    const auto pane = clear(room, basic(1, 5, 0));
    room.addModel(rectangle({9, 0, 0}, {0, 9, 0}), pane, {0, 0, 2});
    EXPECT_NEAR(meanLuminance(room.render(16)[0]) / unitLuminance(), 1, 1e-3);
}

TEST(Media, GlassSplitsColoursByCauchysLaw) {
    InternalMedium flint;
    flint.ior = 1.6f;
    flint.cauchy_b = 0.01f;
    EXPECT_NEAR(flint.iorAt(500), 1.6f + 0.01f / 0.25f, 1e-5f);
    EXPECT_NEAR(flint.iorAt(1000), 1.61f, 1e-5f);
}

TEST(Media, TellWhatIsDrawnMoreSimply) {
    SceneBuilder scene(4, 4);
    scene.setUniformBackground(1);
    const Ref<BasicMedium> cloud = basic(1, 0, 0);
    cloud->absorption_coefficient = new VoxelVolumeParam;
    cloud->subsurface_scattering = new SubsurfaceScattering;
    cloud->subsurface_scattering->scattering_coefficient = new ShaderVolumeParam(new ShaderInfo, false);
    scene.addSphere({0, 4, 0}, 0.5, clear(scene, cloud));
    scene.addSphere({0, 6, 0}, 0.5, clear(scene, new Atmosphere));
    scene.render(1);
    EXPECT_EQ(scene.notices,
              (std::vector<std::string>{"What varies within a medium is not drawn.",
                                        "Atmospheres are drawn as air of sea level at all heights."}));
}

/// Values worked out from the published formulas: at 620, 550 and 450 nm, per metre.
TEST(Skin, HasTheCoefficientsOfItsModel) {
    const auto near = [](const RGB& value, float r, float g, float b, const char* what) {
        EXPECT_NEAR(value.r / r, 1, 0.01f) << what;
        EXPECT_NEAR(value.g / g, 1, 0.01f) << what;
        EXPECT_NEAR(value.b / b, 1, 0.01f) << what;
    };
    near(engine::epidermis(0, 0.5f).absorption, 31.87f, 46.02f, 121.9f, "no melanin: the baseline");
    near(engine::epidermis(1, 1).absorption, 33165, 49392, 96340, "the brown kind alone");
    near(engine::epidermis(1, 0).absorption, 15829, 27912, 72393, "the reddish kind alone");
    near(engine::epidermis(0, 0).scattering, 5071, 6083, 9209, "epidermis");
    near(engine::dermis(1).absorption, 1250.6f, 24431, 39064, "blood");
    near(engine::dermis(0).scattering, 2536, 3041, 4605, "dermis");
    EXPECT_FLOAT_EQ(engine::dermis(0.05f).ior, 1.4f);
}

} // namespace
