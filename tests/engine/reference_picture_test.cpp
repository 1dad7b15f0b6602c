// SPDX-License-Identifier: MIT
// Pictures of whole scenes against those in golden/, see the README there.
#include "engine/output.h"
#include "engine/picture_compare.h"
#include "engine/scene_builder.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/specular_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/medium.h"
#include "scene/rotation.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_tonemapping.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>

namespace {

using namespace Quenza;

Ref<WavelengthDependentParam> colour(double r, double g, double b) {
    return new ConstantWavelengthDependentParam(new RGBSpectrum({r, g, b}, 1));
}

Ref<SceneNodeMaterial> matt(SceneBuilder& scene, double r, double g, double b) {
    Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->albedo = colour(r, g, b);
    return scene.add(material);
}

Ref<SceneNodeMaterial> glazed(SceneBuilder& scene, double r, double g, double b) {
    Ref<PhongMaterial> material = new PhongMaterial;
    material->diffuse_albedo = colour(r, g, b);
    material->exponent = new ConstantWavelengthIndependentParam(2000);
    return scene.add(material);
}

Ref<SceneNodeMaterial> brass(SceneBuilder& scene) {
    Ref<PhongMaterial> material = new PhongMaterial;
    material->specular_reflectivity = colour(0.8, 0.6, 0.25);
    material->exponent = new ConstantWavelengthIndependentParam(300);
    return scene.add(material);
}

Ref<SceneNodeMaterial> glass(SceneBuilder& scene) {
    Ref<BasicMedium> medium = new BasicMedium;
    medium->ior = 1.5;
    Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
    scene.root->addChild(node);
    Ref<SpecularMaterial> material = new SpecularMaterial;
    material->internal_medium = node;
    return scene.add(material);
}

void toneMapByReinhard(SceneBuilder& scene) {
    Ref<SceneNodeTonemapping> tonemapping = new SceneNodeTonemapping;
    tonemapping->tonemap_type = SceneNodeTonemapping::REINHARD;
    tonemapping->pre_scale = 3;
    tonemapping->burn = 10;
    scene.root->addChild(tonemapping);
}

/// Balls of several materials on the ground, with the sun at the right behind the camera.
SceneBuilder outdoors() {
    SceneBuilder scene(64, 48);
    toneMapByReinhard(scene);
    scene.camera->keyframes[0].pos = {0, -5, 1.2};
    scene.camera->forwards = {0, 1, -0.1};
    Ref<SunSkyMaterial> sky = new SunSkyMaterial;
    sky->sundir = {1, -1, 1.2};
    scene.setBackground(sky);
    scene.addModel(rectangle({30, 0, 0}, {0, 30, 0}), matt(scene, 0.4, 0.36, 0.3), {0, 0, 0});
    scene.addSphere({-1.3, 0, 0.6}, 0.6, glazed(scene, 0.6, 0.05, 0.04));
    scene.addSphere({0, 0.4, 0.6}, 0.6, matt(scene, 0.1, 0.25, 0.6));
    scene.addSphere({1.3, 0, 0.6}, 0.6, brass(scene));
    return scene;
}

/// A room with a lamp at its ceiling, a red wall at the left, a green one at the right, a ball of glass and
/// one that falls.
SceneBuilder indoors() {
    SceneBuilder scene(64, 64);
    toneMapByReinhard(scene);
    scene.camera->keyframes[0].pos = {0, -3.2, 1};
    const auto white = matt(scene, 0.7, 0.7, 0.7);
    scene.addModel(rectangle({1, 0, 0}, {0, 1, 0}), white, {0, 0, 0});
    scene.addModel(rectangle({1, 0, 0}, {0, -1, 0}), white, {0, 0, 2});
    scene.addModel(rectangle({1, 0, 0}, {0, 0, 1}), white, {0, 1, 1});
    scene.addModel(rectangle({0, 1, 0}, {0, 0, 1}), matt(scene, 0.6, 0.06, 0.05), {-1, 0, 1});
    scene.addModel(rectangle({0, -1, 0}, {0, 0, 1}), matt(scene, 0.08, 0.4, 0.08), {1, 0, 1});
    scene.addModel(rectangle({0.35, 0, 0}, {0, -0.35, 0}), scene.emitter(1), {0, 0, 1.99});
    auto& box = scene.addModel(rectangle({0.3, 0, 0}, {0, 0, 0.3}), white, {-0.4, 0, 0.3});
    box.rotation = new AxisRotation({0, 0, 1}, 0.5);
    scene.addSphere({-0.1, -0.5, 0.25}, 0.25, glass(scene));
    auto& ball = scene.addSphere({0.4, -0.2, 0.9}, 0.25, glazed(scene, 0.5, 0.4, 0.1));
    ball.keyframes.push_back(keyFrame({0.4, -0.2, 0.5}, 1));
    return scene;
}

engine::FloatImage toImage(const std::vector<unsigned char>& rgb, u32 width, u32 height) {
    engine::FloatImage image(width, height);
    std::transform(rgb.begin(), rgb.end(), image.rgb.begin(),
                   [](unsigned char level) { return float(level) / 255; });
    return image;
}

TEST(ReferencePicture, ScenesLookAsTheyDid) {
    const struct {
        const char* name;
        std::function<SceneBuilder()> make;
    } cases[] = {{"outdoors", outdoors}, {"indoors", indoors}};
    const bool replace = std::getenv("QUENZA_REPLACE_PICTURES") != nullptr;
    for (const auto& test : cases) {
        SceneBuilder scene = test.make();
        const std::vector<unsigned char> picture = scene.renderDisplay(replace ? 1024 : 128);
        const u32 width = u32(scene.settings->getInt("width"));
        const u32 height = u32(scene.settings->getInt("height"));
        const std::string path = std::string(QUENZA_SOURCE_DIR "/tests/engine/golden/") + test.name + ".png";
        if (replace) {
            ASSERT_EQ(engine::writePNG(path, width, height, picture), "");
        }
        std::string fault;
        const auto reference = engine::loadImage(path, fault);
        ASSERT_TRUE(reference) << path << ": " << fault;
        EXPECT_EQ(comparePictures(toImage(picture, width, height), *reference), "") << test.name;
    }
}

} // namespace
