// SPDX-License-Identifier: MIT
#include "engine/scene_builder.h"
#include "scene/displacement_param.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/diffuse_material.h"
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
#include <numbers>

namespace {

using namespace Quenza;
using std::numbers::pi;

Ref<WavelengthDependentParam> grey(double value) {
    return new ConstantWavelengthDependentParam(new UniformSpectrum(value));
}

Ref<SceneNodeMedium> glass(SceneBuilder& scene) {
    Ref<BasicMedium> medium = new BasicMedium;
    medium->ior = 1.5;
    Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
    scene.root->addChild(node);
    return node;
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

Ref<Material> blendOf(SceneBuilder& scene, const Ref<Material>& a, const Ref<Material>& b) {
    Ref<BlendMaterial> material = new BlendMaterial;
    material->a_mat = scene.add(a);
    material->b_mat = scene.add(b);
    material->blend = new ConstantDisplacementParam(0.4);
    return material;
}

/// What neither takes light away nor adds any can't be seen in front of an even background.
TEST(Furnace, LosslessMaterialsDisappear) {
    const struct {
        const char* name;
        std::function<Ref<Material>(SceneBuilder&)> make;
    } cases[] = {
        {"diffuse", [](SceneBuilder&) { return white(); }},
        {"null", [](SceneBuilder&) { return Ref<Material>(new NullMaterial); }},
        {"exit portal", [](SceneBuilder&) { return Ref<Material>(new ExitPortalMaterial); }},
        {"glass", clearGlass},
        {"blend", [](SceneBuilder& s) { return blendOf(s, white(), new NullMaterial); }},
    };
    for (const auto& test : cases) {
        SceneBuilder scene;
        scene.setUniformBackground(1);
        scene.addSphere({0, 4, 0}, 1.5, scene.add(test.make(scene)));
        const double mean = meanLuminance(scene.render(256)[0], 4, 4, 12, 12) / unitLuminance();
        EXPECT_NEAR(mean, 1, 0.006) << test.name;
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

} // namespace
