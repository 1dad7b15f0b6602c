// SPDX-License-Identifier: MIT
// Making a scene graph ready for the tracer, beside bare Embree that commits the same faces with as many
// threads and the same build quality: as one large mesh of triangles or quads, as many small meshes, and as
// instances of one mesh.

#include "engine/render_scene.h"
#include "scene/materials/diffuse_material.h"
#include "scene/mesh.h"
#include "scene/rotation.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_root.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <embree3/rtcore.h>
#include <vector>

namespace {

using namespace Quenza;

/// What a scene consists of.
struct Contents {
    bool quads;
    u32 side;      ///< Quads along each edge of a mesh, or pairs of triangles.
    u32 meshes;    ///< Different ones.
    u32 instances; ///< Of each.
    bool smooth = false;
    bool emits = false;

    u64 numTriangles() const { return u64(side) * side * 2 * meshes; }
};

Ref<Mesh> makeMesh(const Contents& contents) {
    const Ref<Mesh> mesh = new Mesh;
    const u32 side = contents.side;
    const f32 step = 1.0f / f32(side);
    for (u32 y = 0; y <= side; ++y)
        for (u32 x = 0; x <= side; ++x) {
            const f32 u = f32(x) * step;
            const f32 v = f32(y) * step;
            mesh->addVertex({u, v, 0.1f * std::sin(u * 40) * std::cos(v * 30)});
        }
    for (u32 y = 0; y < side; ++y)
        for (u32 x = 0; x < side; ++x) {
            const u32 a = y * (side + 1) + x;
            const u32 corners[4] = {a, a + 1, a + side + 2, a + side + 1};
            const u32 second[3] = {a, a + side + 2, a + side + 1};
            if (contents.quads) {
                mesh->addQuad(corners, corners, 0);
            } else {
                mesh->addTriangle(corners, corners, 0);
                mesh->addTriangle(second, second, 0);
            }
        }
    mesh->endOfModel();
    return mesh;
}

KeyFrame place(u32 index) {
    const u32 row = index / 100;
    return {{double(index % 100), double(row), 0}, 0, {0, 0, 1}, 0};
}

Ref<SceneNodeMaterial> makeMaterial(bool emits) {
    const Ref<DiffuseMaterial> diffuse = new DiffuseMaterial;
    if (emits)
        diffuse->base_emission = new ConstantWavelengthDependentParam(new UniformSpectrum(1.0));
    return new SceneNodeMaterial(diffuse);
}

Ref<SceneNodeRoot> makeScene(const Contents& contents) {
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    const Ref<SceneNodeMaterial> material = makeMaterial(contents.emits);
    const Ref<SceneNodeCamera> camera = new SceneNodeCamera;
    camera->keyframes.push_back(place(0));
    camera->autofocus = false;
    root->addChild(new SceneNodeRenderSettings);
    root->addChild(camera.getPointer());
    root->addChild(material.getPointer());
    for (u32 i = 0; i < contents.meshes; ++i) {
        const Ref<SceneNodeMesh> geometry = new SceneNodeMesh;
        geometry->mesh = makeMesh(contents);
        geometry->normal_smoothing = contents.smooth;
        root->addChild(geometry.getPointer());
        for (u32 j = 0; j < contents.instances; ++j) {
            const Ref<SceneNodeModel> model = new SceneNodeModel;
            model->geometry = geometry;
            model->rotation = new MatrixRotation;
            model->materials.push_back(material);
            model->keyframes.push_back(place(i * contents.instances + j));
            root->addChild(model.getPointer());
        }
    }
    return root;
}

void addFaces(RTCDevice device, RTCScene scene, const Mesh& mesh) {
    const bool quads = !mesh.quads.empty();
    RTCGeometry geometry =
        rtcNewGeometry(device, quads ? RTC_GEOMETRY_TYPE_QUAD : RTC_GEOMETRY_TYPE_TRIANGLE);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                               mesh.vert_positions.data(), 0, sizeof(Vec3f), mesh.vert_positions.size());
    if (quads)
        rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT4, mesh.quads.data(), 0,
                                   sizeof(MeshQuad), mesh.quads.size());
    else
        rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                   mesh.triangles.data(), 0, sizeof(MeshTriangle), mesh.triangles.size());
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(scene, geometry);
    rtcReleaseGeometry(geometry);
}

void addInstance(RTCDevice device, RTCScene top, RTCScene scene, const KeyFrame& keyframe) {
    const float columns[12] = {1, 0, 0, 0, 1, 0, 0, 0, 1, float(keyframe.pos.x), float(keyframe.pos.y), 0};
    RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_INSTANCE);
    rtcSetGeometryInstancedScene(geometry, scene);
    rtcSetGeometryTransform(geometry, 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns);
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(top, geometry);
    rtcReleaseGeometry(geometry);
}

/// The same scenes as the engine has: one a mesh, and one of instances above them.
void bareEmbree(benchmark::State& state, const Contents& contents) {
    std::vector<Ref<Mesh>> meshes(contents.meshes);
    for (Ref<Mesh>& mesh : meshes) {
        mesh = makeMesh(contents);
        mesh->vert_positions.reserve(mesh->vert_positions.size() + 1); // Embree reads 16 bytes a vertex
    }
    for (auto _ : state) {
        RTCDevice device = rtcNewDevice(nullptr);
        RTCScene top = rtcNewScene(device);
        rtcSetSceneFlags(top, RTC_SCENE_FLAG_ROBUST);
        for (u32 i = 0; i < contents.meshes; ++i) {
            RTCScene scene = rtcNewScene(device);
            rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
            addFaces(device, scene, *meshes[i]);
            rtcCommitScene(scene);
            for (u32 j = 0; j < contents.instances; ++j)
                addInstance(device, top, scene, place(i * contents.instances + j));
            rtcReleaseScene(scene);
        }
        rtcCommitScene(top);
        if (rtcGetDeviceError(device) != RTC_ERROR_NONE)
            state.SkipWithError("Embree refuses the scene");
        rtcReleaseScene(top);
        rtcReleaseDevice(device);
    }
    state.SetItemsProcessed(state.iterations() * i64(contents.numTriangles()));
}

void engineScene(benchmark::State& state, const Contents& contents) {
    const Ref<SceneNodeRoot> root = makeScene(contents);
    root->finalise("");
    for (auto _ : state) {
        const engine::RenderScene scene(*root, "", "", engine::RenderScene::MAX_LAYERS);
        if (scene.geometry().instances().size() != u64(contents.meshes) * contents.instances)
            state.SkipWithError("wrong number of instances");
    }
    state.SetItemsProcessed(state.iterations() * i64(contents.numTriangles()));
}

/// Embree's threads share the work.
void setUp(benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
}

#define QUENZA_BENCH_PAIR(name, ...)                                                                         \
    BENCHMARK_CAPTURE(bareEmbree, name, Contents __VA_ARGS__)->Apply(setUp);                                 \
    BENCHMARK_CAPTURE(engineScene, name, Contents __VA_ARGS__)->Apply(setUp)

QUENZA_BENCH_PAIR(triangles, {false, 1000, 1, 1});
QUENZA_BENCH_PAIR(quads, {true, 1000, 1, 1});
QUENZA_BENCH_PAIR(quads_without_normals, {true, 1000, 1, 1, true});
QUENZA_BENCH_PAIR(emitting_quads, {true, 1000, 1, 1, false, true});
QUENZA_BENCH_PAIR(small_meshes, {false, 20, 2000, 1});
QUENZA_BENCH_PAIR(instances, {false, 500, 1, 100000});

} // namespace
