// SPDX-License-Identifier: MIT
// Surfaces that are cut, rounded and moved before they are drawn.
#include "engine/scene_builder.h"
#include "engine/subdivision.h"
#include "scene/displacement_param.h"
#include "scene/materials/diffuse_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/shader_info.h"
#include "scene/spectrum.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <utility>

namespace {

using namespace Quenza;

/// A cube of half side 1. `shared` is one vertex a corner, else each face has its own.
Ref<Mesh> cube(bool shared) {
    Ref<Mesh> mesh = new Mesh;
    mesh->setMaxNumTexcoordSets(1);
    mesh->addUVs({{0, 0}});
    std::map<std::array<float, 3>, u32> known;
    const auto vertex = [&](const std::array<float, 3>& p) {
        const auto found = known.find(p);
        if (shared && found != known.end()) {
            return found->second;
        }
        mesh->addVertex({p[0], p[1], p[2]});
        return known[p] = u32(mesh->vert_positions.size() - 1);
    };
    for (size_t axis = 0; axis < 3; ++axis) {
        for (const float side : {-1.0f, 1.0f}) {
            u32 corners[4];
            const float square[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
            for (size_t i = 0; i < 4; ++i) {
                std::array<float, 3> p{};
                p[axis] = side;
                p[(axis + 1) % 3] = square[i][0] * side;
                p[(axis + 2) % 3] = square[i][1];
                corners[i] = vertex(p);
            }
            const u32 uvs[4] = {};
            mesh->addQuad(corners, uvs, 0);
        }
    }
    mesh->endOfModel();
    return mesh;
}

/// Edges that don't have a triangle on both sides.
size_t openEdges(const Mesh& mesh) {
    std::map<std::pair<u32, u32>, int> uses;
    for (const MeshTriangle& t : mesh.triangles) {
        for (size_t i = 0; i < 3; ++i) {
            const u32 a = t.vertex_indices[i], b = t.vertex_indices[(i + 1) % 3];
            uses[{std::min(a, b), std::max(a, b)}] += a < b ? 1 : -1;
        }
    }
    size_t open = 0;
    for (const auto& [edge, balance] : uses) {
        open += balance != 0 ? 1u : 0u;
    }
    return open;
}

TEST(Subdivision, RoundsAClosedBodyWithoutTearingIt) {
    for (const bool shared : {true, false}) {
        const Ref<Mesh> body = engine::subdivided(*cube(shared), 4, true);
        EXPECT_EQ(body->triangles.size(), 12u * 256);
        EXPECT_EQ(openEdges(*body), 0u);
        float least = 9, most = 0;
        for (const MeshTriangle& t : body->triangles) {
            const Vec3f p = body->vert_positions[t.vertex_indices[0]];
            const float radius = std::hypot(p.x, p.y, p.z);
            least = std::min(least, radius);
            most = std::max(most, radius);
        }
        EXPECT_LT(most, 1.2f) << "corners were at 1.73";
        EXPECT_GT(least, 0.6f);
    }
}

Ref<DiffuseMaterial> shining(double height) {
    Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->base_emission = new ConstantWavelengthDependentParam(new UniformSpectrum(1));
    material->displacement = new ConstantDisplacementParam(height);
    return material;
}

/// A square that shines, of half side 1, seen from 4 m: it covers a quarter of the view's side.
double sizeInView(SceneBuilder& scene, double scale = 1) {
    const double seen = meanLuminance(scene.render(64)[0]) / unitLuminance();
    return std::sqrt(seen) / scale;
}

TEST(Displacement, MovesTheSurfaceByMetres) {
    struct Case {
        const char* name;
        double height, scale, expected;
    };
    // Half the size over the distance is the share of the view's side.
    const Case cases[] = {{"nothing", 0, 1, 2 / 4.0},
                          {"towards the camera", 1, 1, 2 / 3.0},
                          {"away", -1, 1, 2 / 5.0},
                          {"metres, whatever the object's scale", 1, 0.5, 1 / 3.0}};
    for (const Case& test : cases) {
        SceneBuilder scene(32, 32);
        auto& model =
            scene.addModel(rectangle({1, 0, 0}, {0, 0, 1}), scene.add(shining(test.height)), {0, 4, 0});
        model.scale = test.scale;
        EXPECT_NEAR(sizeInView(scene), test.expected, 0.01) << test.name;
    }
}

Ref<ShaderInfo> program(const char* text) {
    Ref<ShaderInfo> info = new ShaderInfo;
    info->shader = text;
    return info;
}

/// A white wall that faces the camera, u to the right, and a lamp far away whose light comes at 3:4 from the
/// right. A slope of 3:4 turns the wall towards it, or away from it.
TEST(Bumps, TurnTheSurfaceTowardsTheLightOrAway) {
    const struct {
        const char* name;
        const char* normal;
        const char* height;
        double cosine; ///< Between the turned normal and the light.
    } cases[] = {
        {"plain", nullptr, nullptr, 0.8},
        {"normal to the right", "def eval(vec3 pos) vec3: vec3(0.6, 0.0, 0.8)", nullptr, 1.0},
        {"normal to the left", "def eval(vec3 pos) vec3: vec3(-0.6, 0.0, 0.8)", nullptr, 0.28},
        {"normal upwards", "def eval(vec3 pos) vec3: vec3(0.0, 0.6, 0.8)", nullptr, 0.64},
        {"rising to the right", nullptr, "def eval() real: doti(getTexCoords(0)) * 1.5", 0.28},
        {"falling to the right", nullptr, "def eval() real: doti(getTexCoords(0)) * -1.5", 1.0},
        {"rising upwards", nullptr, "def eval() real: dotj(getTexCoords(0)) * 1.5", 0.64},
    };
    double plain = 0;
    for (const auto& test : cases) {
        SceneBuilder scene(4, 4);
        scene.camera->lens_sensor_dist = 3.6;
        scene.addSphere({120, 4 - 160, 0}, 5, scene.emitter(1));
        Ref<DiffuseMaterial> material = new DiffuseMaterial;
        material->albedo = new ConstantWavelengthDependentParam(new UniformSpectrum(1));
        if (test.normal) {
            material->normal_map = new ShaderVec3Param(program(test.normal));
        }
        if (test.height) {
            material->bump = new ShaderDisplacementParam(program(test.height));
        }
        scene.addModel(rectangle({1, 0, 0}, {0, 0, 1}), scene.add(material), {0, 4, 0});
        const double seen = meanLuminance(scene.render(256)[0]);
        EXPECT_EQ(scene.notices, std::vector<std::string>{}) << test.name;
        plain = plain > 0 ? plain : seen;
        EXPECT_NEAR(seen / plain * 0.8, test.cosine, 0.02) << test.name;
    }
}

} // namespace
