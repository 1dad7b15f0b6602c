// SPDX-License-Identifier: MIT
#include "engine/scene_builder.h"
#include "scene/emission.h"
#include "scene/materials/diffuse_material.h"
#include "scene/rotation.h"
#include "scene/scene_node_section_plane.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <numbers>
#include <vector>

namespace {

using namespace Quenza;
using std::numbers::pi;

struct Centre {
    double x, y;
};

/// Of the brightness, in pixels from the top left corner.
Centre centreOf(const engine::FloatImage& image) {
    double sum = 0, x_sum = 0, y_sum = 0;
    for (unsigned y = 0; y < image.height; ++y) {
        for (unsigned x = 0; x < image.width; ++x) {
            const double level = luminanceAt(image, x, y);
            sum += level;
            x_sum += level * (x + 0.5);
            y_sum += level * (y + 0.5);
        }
    }
    return {x_sum / sum, y_sum / sum};
}

Ref<Mesh> facingCamera(double half = 0.1) {
    return rectangle({half, 0, 0}, {0, 0, half});
}

/// Where a lamp at `place` is seen in a picture of 32 x 16 pixels.
Centre seenAt(const Vec3d& place, const std::function<void(SceneNodeCamera&)>& change = {},
              double radius = 0.1) {
    SceneBuilder scene(32, 16);
    scene.addSphere(place, radius, scene.emitter(1));
    if (change) {
        change(*scene.camera);
    }
    return centreOf(scene.render(256)[0]);
}

void expectAt(const Centre& centre, double x, double y, const char* what) {
    EXPECT_NEAR(centre.x, x, 0.15) << what;
    EXPECT_NEAR(centre.y, y, 0.15) << what;
}

TEST(CameraView, RightIsRightAndUpIsUp) {
    // At a distance of 4 the picture is 4 wide and 2 high: 8 pixels a metre.
    expectAt(seenAt({0, 4, 0}), 16, 8, "the middle");
    expectAt(seenAt({1, 4, 0}), 24, 8, "right");
    expectAt(seenAt({0, 4, 0.5}), 16, 4, "up");
    expectAt(seenAt({-1, 4, -0.5}), 8, 12, "left and down");
    expectAt(seenAt({-4, 1, 0.5},
                    [](SceneNodeCamera& camera) {
                        camera.forwards = {-1, 0, 0};
                        camera.up = {0.5, 0, 1};
                    }),
             24, 4, "looking along -x");
    expectAt(seenAt({1, 4, 0}, [](SceneNodeCamera& camera) { camera.up = {0, 0, -1}; }), 8, 8, "upside down");
    expectAt(
        seenAt({4, 0, 0.5}, [](SceneNodeCamera& camera) { camera.keyframes[0].rotation_angle = -pi / 2; }),
        16, 4, "turned by its keyframe");
}

TEST(SectionPlane, CutsWhatItLists) {
    const struct {
        const char* what;
        u32 type;
        bool list_first;
        bool enabled;
        bool first_seen, second_seen;
    } cases[] = {
        {"all", SceneNodeSectionPlane::EXCLUDE, false, true, false, false},
        {"all, as none is listed", SceneNodeSectionPlane::INCLUDE, false, true, false, false},
        {"all but the first", SceneNodeSectionPlane::EXCLUDE, true, true, true, false},
        {"the first", SceneNodeSectionPlane::INCLUDE, true, true, false, true},
        {"none", SceneNodeSectionPlane::EXCLUDE, false, false, true, true},
    };
    for (const auto& test : cases) {
        SceneBuilder scene(16, 8);
        const auto& first = scene.addModel(facingCamera(), scene.emitter(1), {-1, 4, 0});
        scene.addModel(facingCamera(), scene.emitter(1), {1, 4, 0});
        Ref<SceneNodeSectionPlane> plane = new SceneNodeSectionPlane;
        plane->point = {0, 5, 0};
        plane->normal = {0, -1, 0};
        plane->enabled = test.enabled;
        plane->object_list_type = test.type;
        if (test.list_first) {
            plane->object_list.push_back(first.getUID());
        }
        scene.root->addChild(plane);
        const engine::FloatImage image = scene.render(64)[0];
        EXPECT_EQ(meanLuminance(image, 0, 0, 8, 8) > 0, test.first_seen) << test.what;
        EXPECT_EQ(meanLuminance(image, 8, 0, 16, 8) > 0, test.second_seen) << test.what;
    }
}

TEST(EmissionScale, GivesTheMeasureItsValue) {
    // The luminance of a lamp of a square metre, for a value of 100.
    const struct {
        u32 measure;
        double luminance;
    } cases[] = {
        {EmissionScale::LUMINANCE, 100},
        {EmissionScale::LUMINOUS_EMITTANCE, 100 / pi},
        {EmissionScale::LUMINOUS_FLUX, 100 / pi},
        {EmissionScale::LUMINOUS_INTENSITY, 100},
        {EmissionScale::NO_MEASURE, 0.3 * unitLuminance()},
    };
    for (const auto& test : cases) {
        SceneBuilder scene(8, 8);
        scene.camera->lens_sensor_dist = 3.6;
        Ref<EmissionScale> scale = new EmissionScale;
        scale->measure = test.measure;
        scale->value = 100;
        auto& lamp = scene.addModel(facingCamera(0.5), scene.emitter(0.3), {0, 4, 0});
        scale->material = lamp.materials[0];
        lamp.emission_scales.push_back(scale);
        EXPECT_NEAR(meanLuminance(scene.render(4)[0]) / test.luminance, 1, 1e-3) << test.measure;
    }
}

TEST(Sampling, SeedAloneDecides) {
    const auto render = [](unsigned seed) {
        SceneBuilder scene(8, 8);
        scene.addModel(rectangle({10, 0, 0}, {0, 0, 10}), scene.diffuse(0.5), {0, 4, 0});
        scene.addSphere({1, 2, 0}, 0.5, scene.emitter(1));
        return scene.render(4, seed)[0].rgb;
    };
    const std::vector<float> once = render(7), again = render(7);
    for (size_t i = 0; i < once.size(); ++i) {
        EXPECT_NEAR(once[i], again[i], 1e-5f * std::abs(once[i]));
    }
    EXPECT_NE(render(8), once);
}

} // namespace
