// SPDX-License-Identifier: MIT
#include "engine/scene_builder.h"
#include "foundation/file_utils.h"
#include "scene/emission.h"
#include "scene/rotation.h"
#include "support/temp_dir.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace {

using namespace Quenza;
using std::numbers::pi;

struct Ball {
    Vec3d centre;
    double radius, radiance;
};

/// A camera that looks at a small piece of a wall of albedo 0.5, four metres off, under shining balls that it
/// doesn't see.
engine::FloatImage litByBalls(const std::vector<Ball>& balls, double samples) {
    SceneBuilder scene(8, 8);
    scene.camera->lens_sensor_dist = 3.6; // A hundredth of the view.
    scene.addModel(rectangle({10, 0, 0}, {0, 0, 10}), scene.diffuse(0.5), {0, 4, 0});
    for (const Ball& ball : balls) {
        scene.addSphere(ball.centre, ball.radius, scene.emitter(ball.radiance));
    }
    return scene.render(samples)[0];
}

/// The luminance of that piece.
double expectedFor(const std::vector<Ball>& balls) {
    double sum = 0;
    for (const Ball& ball : balls) {
        const Vec3d& c = ball.centre;
        const double distance2 = c.x * c.x + (4 - c.y) * (4 - c.y) + c.z * c.z;
        sum += ball.radiance * ball.radius * ball.radius / distance2 * (4 - c.y) / std::sqrt(distance2);
    }
    return 0.5 * sum * unitLuminance();
}

TEST(Lamps, GiveTheirLightHoweverManyThereAre) {
    for (const int count : {1, 5, int(engine::Lights::MAX_WEIGHED), 200}) {
        std::vector<Ball> balls;
        for (int i = 0; i < count; ++i) {
            const double angle = 2 * pi * i / count;
            balls.push_back({{1.5 * std::cos(angle), 2.5, 1.5 * std::sin(angle)}, 0.01, 1.0 + i % 3});
        }
        EXPECT_NEAR(meanLuminance(litByBalls(balls, 128)) / expectedFor(balls), 1, 0.02) << count;
    }
}

/// The luminance of that wall under a lamp, two metres before it, that has the distribution of `candelas` and
/// as many lumens. Its own down is towards the wall.
double litByDistribution(const std::string& candelas, double lumens, double turn = 0) {
    const TempDir folder;
    const String path = folder / "lamp.ies";
    FileUtils::writeEntireFile(path,
                               "IESNA:LM-63-1995\nTILT=NONE\n1 1000 1 4 1 1 2 0 0 0\n1 1 0\n" + candelas);
    SceneBuilder scene(8, 8);
    scene.camera->lens_sensor_dist = 3.6;
    scene.addModel(rectangle({10, 0, 0}, {0, 0, 10}), scene.diffuse(0.5), {0, 4, 0});
    auto& lamp = scene.addModel(rectangle({0.01, 0, 0}, {0, -0.01, 0}), scene.emitter(1), {0, 2, 0});
    static_cast<MatrixRotation&>(*lamp.rotation).matrix = {{1, 0, 0, 0, 0, -1, 0, 1, 0}};
    lamp.keyframes.push_back({{0, 2, 0}, 1, {0, 0, 1}, turn});
    lamp.invisible_to_camera = true;
    Ref<IESProfile> profile = new IESProfile;
    profile->path = path;
    profile->material = lamp.materials[0];
    lamp.ies_profiles.push_back(profile);
    Ref<EmissionScale> scale = new EmissionScale;
    scale->measure = EmissionScale::LUMINOUS_FLUX;
    scale->value = lumens;
    scale->material = lamp.materials[0];
    lamp.emission_scales.push_back(scale);
    return meanLuminance(scene.render(256)[0]);
}

TEST(Lamps, GiveTheCandelasOfTheirDistribution) {
    // 100 candelas to all sides of the lower half; and within 45 degrees of the axis.
    const std::string half = "0 89.999 90 180\n0\n100 100 0 0\n";
    const std::string cone = "0 45 45.001 180\n0\n100 100 0 0\n";
    const double cone_lumens = 200 * pi * (1 - std::sqrt(0.5));
    const double expected = 0.5 / pi * 100 / 4;
    EXPECT_NEAR(litByDistribution(half, 200 * pi) / expected, 1, 0.03);
    EXPECT_NEAR(litByDistribution(cone, cone_lumens) / expected, 1, 0.03) << "a cone";
    // By a quarter turn while the shutter is open, the cone leaves the wall at half time.
    EXPECT_NEAR(litByDistribution(cone, cone_lumens, pi / 2) / expected, 0.5, 0.03) << "a turning cone";
}

/// A small flat lamp has the flux that its model says, however it is sheared, scaled and mirrored, and
/// whatever a damaged file of its mesh holds beside the good faces.
TEST(Lamps, HaveTheirFluxWhateverTheyAreMadeOf) {
    const auto broken = [](Mesh& mesh) {
        const float nan = std::numeric_limits<float>::quiet_NaN(),
                    far = std::numeric_limits<float>::infinity();
        for (const Vec3f& v : {Vec3f{nan, 0, 0}, Vec3f{0, far, 0}, Vec3f{1, 1, nan}}) {
            mesh.vert_positions.push_back(v);
        }
        const u32 last = u32(mesh.vert_positions.size()) - 1;
        mesh.triangles.push_back({{last, last - 1, last - 2}, {0, 0, 0}, 0});
        mesh.triangles.push_back({{0, 1, last}, {0, 0, 0}, 0});
    };
    const struct {
        const char* name;
        Matrix3d matrix;
        std::function<void(Mesh&)> damage;
    } cases[] = {
        {"plain", Matrix3d::identity(), {}},
        {"mirrored", {{-1, 0, 0, 0, 1, 0, 0, 0, 1}}, {}},
        {"scaled", {{3, 0, 0, 0, 1, 0, 0, 0, 0.5}}, {}},
        {"sheared", {{1, 0, 0.8, 0, 1, 0, 0, 0, 1}}, {}},
        {"points that aren't finite", Matrix3d::identity(), broken},
        {"a material that no model has", Matrix3d::identity(),
         [](Mesh& mesh) { mesh.quads[0].mat_index = 0xFFFFFFFFu; }},
    };
    for (const auto& test : cases) {
        SceneBuilder scene(8, 8);
        scene.camera->lens_sensor_dist = 3.6;
        scene.addModel(rectangle({10, 0, 0}, {0, 0, 10}), scene.diffuse(0.5), {0, 4, 0});
        const Ref<Mesh> mesh = rectangle({0.02, 0, 0}, {0, 0, -0.02});
        if (test.damage) {
            test.damage(*mesh);
        }
        auto& lamp = scene.addModel(mesh, scene.emitter(1), {0, 3, 0});
        static_cast<MatrixRotation&>(*lamp.rotation).matrix = test.matrix;
        lamp.invisible_to_camera = true;
        Ref<EmissionScale> scale = new EmissionScale;
        scale->value = 100;
        scale->material = lamp.materials[0];
        lamp.emission_scales.push_back(scale);
        // A small flat lamp of flux F has F / pi candelas straight ahead.
        const double expected = 100 / pi * 0.5 / pi;
        EXPECT_NEAR(meanLuminance(scene.render(256)[0]) / expected, 1, 0.015) << test.name;
    }
}

} // namespace
