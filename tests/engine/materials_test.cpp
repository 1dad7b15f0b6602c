// SPDX-License-Identifier: MIT
// What the materials of a scene become: measured metals, coats, shadow catchers, chains without an end.
#include "engine/fresnel.h"
#include "engine/nk_table.h"
#include "engine/scene_builder.h"
#include "engine/session.h"
#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/coating_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/double_sided_thin_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/specular_material.h"
#include "scene/materials/sum_material.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "support/temp_dir.h"

#include <atomic>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace Quenza;

Ref<WavelengthDependentParam> grey(double value) {
    return new ConstantWavelengthDependentParam(new UniformSpectrum(value));
}

Ref<WavelengthIndependentParam> number(double value) {
    return new ConstantWavelengthIndependentParam(value);
}

TEST(NKTable, ReadsTheUnitsByWhatTheyCover) {
    for (const char* const text :
         {"; a metal\n0.35 1 2\n0.55 2 4\n0.85 3 6\n", "350 1 2\n550, 2, 4\r\n850\t3 6",
          "# falling\n8500 3 6\n5500 2 4\n3500 1 2\n\n"}) {
        std::string fault;
        const auto table = engine::NKTable::parse(text, fault);
        ASSERT_TRUE(table) << fault;
        EXPECT_NEAR(table->at(450).n, 1.5, 1e-9);
        EXPECT_NEAR(table->at(450).k, 3, 1e-9);
        EXPECT_NEAR(table->at(700).n, 2.5, 1e-9);
        EXPECT_EQ(table->at(100).n, 1);
        EXPECT_EQ(table->at(2000).k, 6);
    }
}

TEST(NKTable, TellsWhatIsWrong) {
    const struct {
        const char* text;
        const char* fault;
    } cases[] = {{"", "it has less than two lines of numbers"},
                 {"500 1 2\n", "it has less than two lines of numbers"},
                 {"400 1 2\n500 1\n", "line 2 lacks a number"},
                 {"400 1 2\n500 gold 2\n", "line 2 lacks a number"},
                 {"400 1 -2\n500 1 2\n", "line 1 has a number out of range"},
                 {"400 1 2\n400 1 2\n700 1 2\n", "its wavelengths neither rise nor fall"},
                 {"900 1 2\n1500 1 2\n", "it leaves out most of visible light"},
                 {"400 1 2\n450 1 2\n", "it leaves out most of visible light"}};
    for (const auto& test : cases) {
        std::string fault;
        EXPECT_FALSE(engine::NKTable::parse(test.text, fault)) << test.text;
        EXPECT_EQ(fault, test.fault);
    }
}

class MeasuredMetal : public ::testing::Test {
protected:
    /// A wall that is seen from straight ahead in an even white world.
    double reflected(const char* nk_data) {
        SceneBuilder scene(4, 4);
        scene.camera->lens_sensor_dist = 3.6;
        scene.setUniformBackground(1);
        Ref<PhongMaterial> material = new PhongMaterial;
        material->nk_data = nk_data;
        material->exponent = number(100000);
        scene.addModel(rectangle({9, 0, 0}, {0, 0, 9}), scene.add(material), {0, 4, 0});
        engine::SessionOptions options;
        options.halt_samples = 64;
        options.data_folder = (folder_ / "data").toStdString();
        engine::RenderSession session(scene.root, "", options);
        notices_ = session.scene().notices().texts();
        session.run(std::atomic<bool>{false}, [](const engine::Progress&) {});
        return meanLuminance(session.layerImages()[0]) / unitLuminance();
    }

    void write(const char* name, const std::string& text) {
        for (const char* const folder : {"data", "data/nkdata"}) {
            if (!FileUtils::directoryExists(folder_ / folder)) {
                FileUtils::createDir(folder_ / folder);
            }
        }
        FileUtils::writeEntireFile(folder_ / name, text);
    }

    TempDir folder_;
    std::vector<std::string> notices_;
};

TEST_F(MeasuredMetal, IsTheIndexOfRefractionWhereTheTableIsMissing) {
    write("data/nkdata/Bad.nk", "gold");
    write("Au.nk", "0.3 0.5 3\n0.9 0.5 3\n");
    const auto told = [](const std::string& name, const std::string& fault) {
        return "The optical constants '" + name + "' can't be used (" + fault +
               "); the index of refraction takes their place.";
    };
    EXPECT_NEAR(reflected("nkdata/Bad.nk"), 0.04, 0.01);
    EXPECT_EQ(notices_, std::vector<std::string>{told("nkdata/Bad.nk", "line 1 lacks a number")});
    for (const char* const name :
         {"nkdata/../../Au.nk", "../Au.nk", "Au.nk", "/nkdata/Au.nk", "nkdata\\Au.nk"}) {
        EXPECT_NEAR(reflected(name), 0.04, 0.01);
        EXPECT_EQ(notices_, std::vector<std::string>{told(name, "it is not in the folder nkdata")});
    }
    EXPECT_NEAR(reflected("nkdata/Cu.nk"), 0.04, 0.01);
    ASSERT_EQ(notices_.size(), 1u);
    EXPECT_EQ(notices_[0].rfind("The optical constants 'nkdata/Cu.nk' can't be used (", 0), 0u);
}

/// What a wall gives back straight ahead, in an even white world, under a coat of that thickness.
double reflectedByCoated(const Ref<Material>& substrate, double thickness, bool interference) {
    SceneBuilder scene(4, 4);
    scene.camera->lens_sensor_dist = 3.6;
    scene.setUniformBackground(1);
    Ref<CoatingMaterial> coating = new CoatingMaterial;
    coating->substrate_material = scene.add(substrate);
    coating->absorption = grey(400);
    coating->interference = interference;
    coating->thickness = number(thickness);
    coating->roughness = number(0.01);
    scene.addModel(rectangle({9, 0, 0}, {0, 0, 9}), scene.add(coating), {0, 4, 0});
    return meanLuminance(scene.render(256)[0]) / unitLuminance();
}

TEST(Coating, AbsorbsByItsThicknessInMicrometres) {
    Ref<SpecularMaterial> mirror = new SpecularMaterial;
    mirror->transparent = false;
    for (const double thickness : {0.0, 500.0, 2000.0}) {
        const double expected = 0.04 + 0.96 * 0.96 * std::exp(-2 * 400 * thickness * 1e-6);
        EXPECT_NEAR(reflectedByCoated(mirror, thickness, false), expected, 0.015) << thickness;
    }
}

/// A film too thick for colours, also one beyond any number, is a clear layer.
TEST(Coating, FilmsOfAnyThicknessAreFinite) {
    Ref<DiffuseMaterial> black = new DiffuseMaterial;
    black->albedo = grey(0);
    for (const double thickness : {1e3, 1e300}) {
        EXPECT_NEAR(reflectedByCoated(black, thickness, true), 2 * 0.04 / 1.04, 0.01) << thickness;
    }
}

/// Ground that catches shadows is gone but for what darkens it.
TEST(ShadowCatcher, ShowsShadowsAlone) {
    for (const bool ball : {false, true}) {
        SceneBuilder scene(32, 32);
        scene.setUniformBackground(1);
        Ref<DiffuseMaterial> catcher = new DiffuseMaterial;
        catcher->albedo = grey(0.2);
        catcher->shadow_catcher = true;
        scene.addModel(rectangle({20, 0, 0}, {0, 20, 0}), scene.add(catcher), {0, 10, -1});
        if (ball) {
            scene.addSphere({0, 4, -0.5}, 0.5, scene.diffuse(0));
        }
        const engine::FloatImage image = scene.render(64)[0];
        const double beside = meanLuminance(image, 0, 28, 4, 32) / unitLuminance();
        const double below = meanLuminance(image, 14, 24, 18, 26) / unitLuminance();
        EXPECT_NEAR(beside, 1, ball ? 0.12 : 1e-3);
        EXPECT_NEAR(meanLuminance(image, 0, 0, 32, 8) / unitLuminance(), 1, 1e-3) << "above the horizon";
        if (ball) {
            EXPECT_LT(below, 0.7);
        } else {
            EXPECT_NEAR(below, 1, 1e-3);
        }
    }
}

/// The scene of a hostile author: each has to end, and soon.
TEST(Materials, ChainsWithoutAnEndAreDrawnInGrey) {
    const auto notices = [](SceneBuilder& scene, const Ref<SceneNodeMaterial>& material) {
        scene.setUniformBackground(1);
        scene.addSphere({0, 4, 0}, 1.5, material);
        scene.render(1);
        return scene.notices;
    };
    SceneBuilder circle(4, 4);
    Ref<CoatingMaterial> coating = new CoatingMaterial;
    Ref<DoubleSidedThinMaterial> thin = new DoubleSidedThinMaterial;
    const auto node = circle.add(coating);
    coating->substrate_material = circle.add(thin);
    thin->front_material = thin->back_material = node;
    EXPECT_EQ(notices(circle, node),
              std::vector<std::string>{
                  "Materials that refer to themselves, or in a chain of more than 100, are drawn in grey."});
    thin->front_material = thin->back_material = nullptr;

    for (const bool empty : {false, true}) {
        SceneBuilder scene(4, 4);
        Ref<SceneNodeMaterial> doubled = empty ? scene.add(new SumMaterial) : scene.diffuse(0.5);
        for (int i = 0; i < 60; ++i) {
            Ref<BlendMaterial> blend = new BlendMaterial;
            Ref<SumMaterial> sum = new SumMaterial;
            blend->a_mat = blend->b_mat = doubled;
            sum->materials = {doubled, doubled};
            sum->weights = {number(0.5), number(0.5)};
            doubled = empty ? scene.add(sum) : scene.add(blend);
        }
        EXPECT_EQ(notices(scene, doubled),
                  std::vector<std::string>{"Materials made of more than 24 lobes are drawn in grey."})
            << (empty ? "2^60 sums of nothing" : "2^60 lobes");
    }
}

} // namespace
