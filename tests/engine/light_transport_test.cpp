// SPDX-License-Identifier: MIT
#include "engine/scene_builder.h"
#include "scene/displacement_param.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/exit_portal_material.h"
#include "scene/materials/glossy_transparent.h"
#include "scene/materials/null_material.h"
#include "scene/materials/phong_material.h"
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
#include <numbers>

namespace {

using namespace Quenza;
using std::numbers::pi;

Ref<WavelengthDependentParam> grey(double value) {
    return new ConstantWavelengthDependentParam(new UniformSpectrum(value));
}

Ref<WavelengthIndependentParam> number(double value) {
    return new ConstantWavelengthIndependentParam(value);
}

Ref<SceneNodeMedium> glass(SceneBuilder& scene) {
    Ref<BasicMedium> medium = new BasicMedium;
    medium->ior = 1.5;
    Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
    scene.root->addChild(node);
    return node;
}

Ref<Material> phong(double exponent) {
    Ref<PhongMaterial> material = new PhongMaterial;
    material->diffuse_albedo = grey(1);
    material->exponent = number(exponent);
    return material;
}

Ref<Material> metal(double exponent) {
    Ref<PhongMaterial> material = new PhongMaterial;
    material->specular_reflectivity = grey(1);
    material->exponent = number(exponent);
    return material;
}

Ref<Material> white() {
    Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->albedo = grey(1);
    return material;
}

Ref<Material> clearGlass(SceneBuilder& scene) {
    Ref<SpecularMaterial> material = new SpecularMaterial;
    material->internal_medium = glass(scene);
    return material;
}

Ref<Material> frostedGlass(SceneBuilder& scene, double exponent) {
    Ref<GlossyTransparent> material = new GlossyTransparent;
    material->internal_medium = glass(scene);
    material->exponent = number(exponent);
    return material;
}

Ref<Material> blendOf(SceneBuilder& scene, const Ref<Material>& a, const Ref<Material>& b) {
    Ref<BlendMaterial> material = new BlendMaterial;
    material->a_mat = scene.add(a);
    material->b_mat = scene.add(b);
    material->blend = new ConstantDisplacementParam(0.4);
    return material;
}

/// What neither takes light away nor adds any can't be seen in front of an even background.
TEST(Furnace, LosslessMaterialsDisappear) {
    struct Case {
        const char* name;
        std::function<Ref<Material>(SceneBuilder&)> make;
        double loss; ///< Of a microfacet model, which counts one bounce between facets alone.
    };
    const Case cases[] = {
        {"diffuse", [](SceneBuilder&) { return white(); }, 0},
        {"null", [](SceneBuilder&) { return Ref<Material>(new NullMaterial); }, 0},
        {"exit portal", [](SceneBuilder&) { return Ref<Material>(new ExitPortalMaterial); }, 0},
        {"glass", clearGlass, 0},
        {"diffuse transmitter",
         [](SceneBuilder&) {
             Ref<DiffuseTransmitter> material = new DiffuseTransmitter;
             material->albedo = grey(1);
             return Ref<Material>(material);
         },
         0},
        {"mirror",
         [](SceneBuilder&) {
             Ref<SpecularMaterial> material = new SpecularMaterial;
             material->transparent = false;
             return Ref<Material>(material);
         },
         0},
        {"blend", [](SceneBuilder& s) { return blendOf(s, white(), new NullMaterial); }, 0},
        {"sharp metal", [](SceneBuilder&) { return metal(10000); }, 0.002},
        {"rough metal", [](SceneBuilder&) { return metal(100); }, 0.05},
        {"phong", [](SceneBuilder&) { return phong(10000); }, 0.01},
        {"frosted glass", [](SceneBuilder& s) { return frostedGlass(s, 1000); }, 0.02},
    };
    for (const Case& test : cases) {
        SceneBuilder scene;
        scene.setUniformBackground(1);
        scene.addSphere({0, 4, 0}, 1.5, scene.add(test.make(scene)));
        const double mean = meanLuminance(scene.render(256)[0], 4, 4, 12, 12) / unitLuminance();
        EXPECT_LT(mean, 1.006) << test.name;
        EXPECT_GT(mean, 0.994 - test.loss) << test.name;
    }
}

/// The form factor from a point to a parallel rectangle of which a corner lies straight above it; sides and
/// distance as they stand.
double cornerFormFactor(double a, double b, double distance) {
    const double x = a / distance;
    const double y = b / distance;
    const double rx = std::sqrt(1 + x * x);
    const double ry = std::sqrt(1 + y * y);
    return (x / rx * std::atan(y / rx) + y / ry * std::atan(x / ry)) / (2 * pi);
}

/// A camera that looks at a small piece of a wall, beside which a lamp hangs in front of it.
SceneBuilder litWall(const Ref<Mesh>& lamp, double distance, double radiance = 1) {
    SceneBuilder scene(8, 8);
    scene.camera->lens_sensor_dist = 3.6; // A hundredth of the view.
    scene.addModel(rectangle({10, 0, 0}, {0, 0, 10}), scene.diffuse(0.5), {0, 4, 0});
    // It shines away from the camera, at the wall, and its back is not seen.
    scene.addModel(lamp, scene.emitter(radiance), {0, 4 - distance, 0}).invisible_to_camera = true;
    return scene;
}

TEST(AreaLight, GivesTheIrradianceOfItsFormFactor) {
    for (const double distance : {0.5, 1.0, 3.0}) {
        SceneBuilder scene = litWall(rectangle({0.5, 0, 0}, {0, 0, -1.0}), distance);
        const double expected = 0.5 * 4 * cornerFormFactor(0.5, 1.0, distance) * unitLuminance();
        EXPECT_NEAR(meanLuminance(scene.render(512)[0]) / expected, 1, 0.01) << distance;
    }
}

TEST(Sampling, SeedAloneDecides) {
    const auto render = [](unsigned seed) {
        SceneBuilder scene = litWall(rectangle({0.5, 0, 0}, {0, 0, -1.0}), 0.5);
        return scene.render(4, seed)[0].rgb;
    };
    const std::vector<float> once = render(7);
    const std::vector<float> again = render(7);
    const std::vector<float> other = render(8);
    double differs = 0;
    for (size_t i = 0; i < once.size(); ++i) {
        EXPECT_NEAR(once[i], again[i], 1e-5f * std::abs(once[i]));
        differs += std::abs(double(once[i] - other[i]));
    }
    EXPECT_GT(differs, 0);
}

/// Absorption of a slab of glass: Beer's law with the losses at its two faces and what is reflected within.
TEST(Glass, AbsorbsByItsThickness) {
    SceneBuilder scene(8, 8);
    scene.camera->lens_sensor_dist = 3.6;
    scene.setUniformBackground(1);
    Ref<SpecularMaterial> material = new SpecularMaterial;
    material->internal_medium = glass(scene);
    auto& medium = static_cast<BasicMedium&>(*material->internal_medium->medium);
    medium.absorption_coefficient = new ConstantVolumeParam(new UniformSpectrum(2.0));
    const auto node = scene.add(material);
    // Faces look outwards: towards the camera and away from it.
    scene.addModel(rectangle({5, 0, 0}, {0, 0, 5}), node, {0, 2, 0});
    scene.addModel(rectangle({5, 0, 0}, {0, 0, -5}), node, {0, 2.25, 0});
    const double r = 0.04;
    const double t = std::exp(-2.0 * 0.25);
    // Reflections within: a geometric series of two-way trips.
    const double through = (1 - r) * (1 - r) * t / (1 - r * r * t * t);
    const double back = r + (1 - r) * (1 - r) * r * t * t / (1 - r * r * t * t);
    EXPECT_NEAR(meanLuminance(scene.render(1024)[0]) / unitLuminance(), through + back, 0.01);
}

} // namespace
