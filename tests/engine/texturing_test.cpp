// SPDX-License-Identifier: MIT
#include "engine/output.h"
#include "engine/scene_builder.h"
#include "engine/texturing.h"
#include "scene/displacement_param.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/phong_material.h"
#include "scene/param_forms.h"
#include "scene/rotation.h"
#include "scene/spectrum.h"
#include "scene/tex_coord_generator.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "support/temp_dir.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

using namespace Quenza;
using engine::ColourInput;
using engine::RGB;
using engine::SurfacePoint;

const std::string PRELUDE = "def eval(vec3 pos) vec3 : ";

class Texturing : public ::testing::Test {
protected:
    Texturing() {
        material_->name = "Wood";
        // Red and green in the upper row, blue and white in the lower one.
        EXPECT_EQ(engine::writePNG((folder_ / "four.png").toStdString(), 2, 2,
                                   {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}),
                  "");
    }

    Texture& addTexture(const String& path) {
        Texture texture;
        texture.path = path;
        texture.exponent = 1;
        material_->textures.push_back(texture);
        return material_->textures.back();
    }

    engine::InputBuilder builder() { return engine::InputBuilder(*material_, images_, notices_); }
    RGB colourAt(const SurfacePoint& point, const Ref<WavelengthDependentParam>& param) {
        return builder().colour(param, "albedo", 0).at(point);
    }
    RGB firstTextureAt(const SurfacePoint& point) {
        return colourAt(point, new TextureWavelengthDependentParam(0));
    }

    /// A point whose texture coordinates are these: those of a direction in a panorama.
    static SurfacePoint pointAt(double u, double v) {
        SurfacePoint point;
        const double longitude = (u - 0.5) * 2 * std::numbers::pi, latitude = (v - 0.5) * std::numbers::pi;
        point.position = {float(std::sin(longitude) * std::cos(latitude)),
                          float(std::cos(longitude) * std::cos(latitude)), float(std::sin(latitude))};
        return point;
    }

    static Ref<ShaderInfo> shader(const std::string& text) { return new ShaderInfo(String(text)); }

    TempDir folder_;
    engine::Notices notices_;
    engine::ImageCache images_{folder_.path().toStdString(), notices_};
    Ref<DiffuseMaterial> material_ = new DiffuseMaterial;
};

void expectColour(const RGB& colour, const RGB& wanted, const std::string& what) {
    EXPECT_NEAR(colour.r, wanted.r, 1e-3f) << what;
    EXPECT_NEAR(colour.g, wanted.g, 1e-3f) << what;
    EXPECT_NEAR(colour.b, wanted.b, 1e-3f) << what;
}

TEST_F(Texturing, ImagesStandUprightAndRepeat) {
    addTexture("four.png");
    expectColour(firstTextureAt(pointAt(0.25, 0.75)), {1, 0, 0}, "upper left");
    expectColour(firstTextureAt(pointAt(0.75, 0.75)), {0, 1, 0}, "upper right");
    expectColour(firstTextureAt(pointAt(0.25, 0.25)), {0, 0, 1}, "lower left");
    expectColour(firstTextureAt(pointAt(0.5, 0.75)), {0.5f, 0.5f, 0}, "between two texels");
    expectColour(firstTextureAt(pointAt(0.5, 0.5)), {0.5f, 0.5f, 0.5f}, "in the middle of all");
    Ref<UVTexCoordGenerator> moved = new UVTexCoordGenerator;
    moved->translation = {-3, 2};
    material_->textures[0].tex_coord_generation = moved;
    expectColour(firstTextureAt(pointAt(0.25, 0.75)), {1, 0, 0}, "whole pictures away");
    moved->translation = {0, 0};
    moved->matrix = {{0, 1, -1, 0}};
    expectColour(firstTextureAt(pointAt(0.25, 0.25)), {1, 0, 0}, "turned: u' = v, v' = -u");
}

TEST_F(Texturing, ValuesGoThroughThePowerAndThePolynomial) {
    ASSERT_EQ(engine::writePNG((folder_ / "grey.png").toStdString(), 1, 1, {51, 51, 51}), "");
    engine::FloatImage deep(1, 1);
    deep.rgb = {0.2f, 0.2f, 0.2f};
    ASSERT_EQ(engine::writeEXR((folder_ / "grey.exr").toStdString(), deep), "");
    for (const char* name : {"grey.png", "grey.exr"}) {
        material_->textures.clear();
        addTexture(name) = {String(name), 2, -3, 0.5, 0, 2, nullptr, false};
        // t = 0.2^2; 2 t^2 - 3 t + 0.5
        expectColour(firstTextureAt(pointAt(0.5, 0.5)), RGB{0.3832f}, name);
        Texture& texture = material_->textures[0];
        texture.a = 1e300;
        expectColour(firstTextureAt(pointAt(0.5, 0.5)), RGB{0.0f}, "what isn't finite is black");
    }
}

TEST_F(Texturing, ProgramsSeeTheTexturesOfTheMaterialAndTheirOwn) {
    addTexture("four.png");
    Ref<ShaderInfo> info = shader(PRELUDE + "sample2DTextureVec3(0, getTexCoords(0)) * param_half() + "
                                            "sample2DTextureVec3(1, vec2(0.75, 0.75)) * shared(0.5)");
    info->textures.push_back(material_->textures[0]);
    Ref<RealShaderParam> half = new RealShaderParam;
    half->name = "_half";
    half->value = 0.5;
    info->params.push_back(half);
    material_->shared_shader_info = shader("def shared(real x) real : x * 0.5");
    expectColour(colourAt(pointAt(0.25, 0.75), new ShaderWavelengthDependentParam(info)), {0.5f, 0.25f, 0},
                 "half the red, a quarter of green");
    EXPECT_EQ(notices_.texts(), std::vector<std::string>());
}

TEST_F(Texturing, SlopesOfImagesAndProgramsAgree) {
    std::vector<unsigned char> ramp;
    for (int i = 0; i < 64; ++i) {
        ramp.insert(ramp.end(), 3, static_cast<unsigned char>(i * 4));
    }
    ASSERT_EQ(engine::writePNG((folder_ / "ramp.png").toStdString(), 64, 1, ramp), "");
    Ref<UVTexCoordGenerator> mirrored = new UVTexCoordGenerator;
    mirrored->matrix = {{-1, 0, 0, 1}};
    addTexture("ramp.png").tex_coord_generation = mirrored;
    const engine::InputBuilder inputs = builder();
    const auto image = inputs.displacement(new TextureDisplacementParam(0), "bump", 0);
    const auto program =
        inputs.displacement(new ShaderDisplacementParam(shader(
                                "def eval() real : dotj(getTexCoords(0)) * 3.0 - doti(getTexCoords(0))")),
                            "bump", 0);
    // 4 steps of 255 a texel, 64 texels, mirrored.
    EXPECT_NEAR(image.slopeAt(pointAt(0.3, 0.4)).along_u, -4 / 255.0f * 64, 1e-2f);
    EXPECT_NEAR(image.slopeAt(pointAt(0.3, 0.4)).along_v, 0, 1e-2f);
    EXPECT_NEAR(program.slopeAt(pointAt(0.3, 0.4)).along_u, -1, 1e-2f);
    EXPECT_NEAR(program.slopeAt(pointAt(0.3, 0.4)).along_v, 3, 1e-2f);
    EXPECT_EQ(
        inputs.displacement(new ConstantDisplacementParam(2), "bump", 0).slopeAt(pointAt(0.3, 0.4)).along_u,
        0);
}

TEST_F(Texturing, FaultsAreToldOnceByMaterialAndChannel) {
    addTexture("gone.png");
    addTexture("");
    const engine::InputBuilder inputs = builder();
    for (int i = 0; i < 2; ++i) {
        const ColourInput grey = inputs.colour(new TextureWavelengthDependentParam(0), "albedo", 0);
        expectColour(grey.at(pointAt(0.5, 0.5)), RGB{0.5f}, "a missing image is grey");
        EXPECT_EQ(inputs.scalar(new TextureWavelengthIndependentParam(1), "sigma", 0.3f).at({}), 0.3f);
        EXPECT_EQ(inputs.displacement(new TextureDisplacementParam(2), "bump", 0.25f).at({}), 0.25f);
        EXPECT_FALSE(inputs.vector(new TextureVec3Param(-1), "normal_map").isSet());
        expectColour(inputs
                         .colour(new ShaderWavelengthDependentParam(
                                     shader(PRELUDE + "sample2DTextureVec3(0, getTexCoords(0))")),
                                 "transmittance", 0)
                         .at(pointAt(0.5, 0.5)),
                     RGB{0.5f}, "so it is for a program");
        EXPECT_FALSE(inputs.failed());
    }
    Ref<ShaderInfo> including = shader(PRELUDE + "vec3(tone())");
    including->includes.push_back("tone.qsl");
    const auto albedo = [&](const Ref<ShaderInfo>& info) {
        return inputs.colour(new ShaderWavelengthDependentParam(info), "albedo", 0);
    };
    expectColour(albedo(including).at({}), engine::WARNING_COLOUR,
                 "a program that doesn't compile is magenta");
    EXPECT_TRUE(inputs.failed());
    writeBytes(folder_ / "tone.qsl", "def tone() real :\n 0.5 +");
    albedo(including);
    writeBytes(folder_ / "tone.qsl", "def tone() real : 0.25");
    expectColour(albedo(including).at({}), RGB{0.25f}, "included");
    inputs.displacement(new ShaderDisplacementParam(shader("def eval() real : noise(pos)")), "bump", 0);
    const std::string wood = "of the material 'Wood'", image = "The image 'gone.png' in '";
    const std::string open = "could not open '" + (folder_ / "gone.png").toStdString() + "' for reading.";
    EXPECT_EQ(
        notices_.texts(),
        (std::vector<std::string>{
            image + "albedo' " + wood + " can't be read (" + open + "); it is drawn in grey.",
            "The image '' in 'sigma' " + wood + " can't be read (its path is empty); it is drawn in grey.",
            "There is no texture 2 for 'bump' " + wood + "; it is drawn in grey.",
            "There is no texture -1 for 'normal_map' " + wood + "; it is drawn in grey.",
            image + "transmittance' " + wood + " can't be read (" + open + "); it is drawn in grey.",
            "The shader in 'albedo' " + wood + " doesn't compile (could not open '" +
                (folder_ / "tone.qsl").toStdString() + "' for reading.); the material is drawn in magenta.",
            "The shader in 'albedo' " + wood +
                " doesn't compile (file 'tone.qsl', line 2, column 7: An expression is expected, not the "
                "end); the "
                "material is drawn in magenta.",
            "The shader in 'bump' " + wood +
                " doesn't compile (line 1, column 25: 'pos' is not known here); the material is drawn in "
                "magenta.",
        }));
}

TEST_F(Texturing, WhatDoesNotCompileIsMagentaAllOver) {
    Ref<ShaderInfo> broken = shader("no shader");
    Ref<PhongMaterial> phong = new PhongMaterial;
    phong->exponent = new ShaderWavelengthIndependentParam(broken);
    Ref<BlendMaterial> blend = new BlendMaterial;
    blend->blend = new ShaderDisplacementParam(broken);
    for (const Ref<Material>& material : {Ref<Material>(phong), Ref<Material>(blend)}) {
        SceneBuilder scene(4, 4);
        scene.setUniformBackground(1);
        scene.addModel(rectangle({9, 0, 0}, {0, 0, 9}), scene.add(material), {0, 4, 0});
        const engine::FloatImage image = scene.render(16)[0];
        const float* const pixel = image.pixel(2, 2);
        EXPECT_GT(pixel[0], 0.0f);
        EXPECT_LT(pixel[1], pixel[0] * 0.1f);
        EXPECT_GT(pixel[2], pixel[0] * 0.6f);
        EXPECT_EQ(scene.notices.size(), 1u);
    }
}

} // namespace
