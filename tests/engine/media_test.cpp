// SPDX-License-Identifier: MIT
#include "engine/medium_stack.h"
#include "engine/sampling.h"
#include "engine/scene_builder.h"
#include "scene/displacement_param.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/exit_portal_material.h"
#include "scene/materials/null_material.h"
#include "scene/materials/specular_material.h"
#include "scene/medium.h"
#include "scene/scene_node_medium.h"
#include "scene/spectrum.h"
#include "scene/volume_param.h"
#include "scene/wavelength_dependent_param.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {

using namespace Quenza;
using engine::InternalMedium;

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

/// What neither takes light away nor adds any can't be seen in front of an even background.
TEST(Furnace, LosslessOnesDisappear) {
    const struct {
        const char* name;
        double tolerance;
        std::function<Ref<SceneNodeMaterial>(SceneBuilder&)> make;
    } cases[] = {
        {"diffuse", 0.006, [](SceneBuilder& s) { return s.diffuse(1); }},
        {"null", 0.006, [](SceneBuilder& s) { return s.add(new NullMaterial); }},
        {"exit portal", 0.006, [](SceneBuilder& s) { return s.add(new ExitPortalMaterial); }},
        {"glass", 0.006, [](SceneBuilder& s) { return clear(s, basic(1.5, 0, 0)); }},
        {"blend", 0.006,
         [](SceneBuilder& s) {
             Ref<BlendMaterial> material = new BlendMaterial;
             material->a_mat = s.diffuse(1);
             material->b_mat = s.add(new NullMaterial);
             material->blend = new ConstantDisplacementParam(0.4);
             return s.add(material);
         }},
        {"fog", 0.015, [](SceneBuilder& s) { return clear(s, basic(1, 0, 2, 0.8)); }},
        {"milk in glass", 0.015, [](SceneBuilder& s) { return clear(s, basic(1.5, 0, 5)); }},
        {"wax", 0.015,
         [](SceneBuilder& s) {
             Ref<DiffuseTransmitter> material = new DiffuseTransmitter;
             material->albedo = new ConstantWavelengthDependentParam(new UniformSpectrum(1));
             material->internal_medium = add(s, basic(1.5, 0, 4));
             return s.add(material);
         }},
        {"flint, which splits colours", 0.015,
         [](SceneBuilder& s) {
             const Ref<BasicMedium> flint = basic(1.6, 0, 0);
             flint->cauchy_b_coeff = 0.02;
             return clear(s, flint);
         }},
    };
    for (const auto& test : cases) {
        SceneBuilder scene;
        scene.setUniformBackground(1);
        scene.addSphere({0, 4, 0}, 1.5, test.make(scene));
        const double mean = meanLuminance(scene.render(256)[0], 4, 4, 12, 12) / unitLuminance();
        EXPECT_NEAR(mean, 1, test.tolerance) << test.name;
    }
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

} // namespace
