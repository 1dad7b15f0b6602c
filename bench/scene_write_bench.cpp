// SPDX-License-Identifier: MIT
// Writing of 100,000 models beside pugixml making and saving a document of the same elements, and of a mesh
// file of 100 MB beside one fwrite of as many bytes.

#include "foundation/number_format.h"
#include "foundation/platform.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_root.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <pugixml.hpp>
#include <random>
#include <string>

namespace {

using namespace Quenza;

constexpr u32 NUM_MODELS = 100000;

String benchFile() {
    return PlatformUtils::getTempDirectory() + "/scene_write_bench";
}

Ref<SceneNodeRoot> makeScene() {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> number(-10, 10);
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    const Ref<SceneNodeMaterial> material = new SceneNodeMaterial;
    for (u32 i = 0; i < NUM_MODELS; ++i) {
        const Ref<SceneNodeModel> model = new SceneNodeModel;
        const Ref<MatrixRotation> rotation = new MatrixRotation;
        for (double& e : rotation->matrix.e)
            e = number(random);
        model->rotation = rotation;
        model->keyframes.push_back(
            KeyFrame{{number(random), number(random), number(random)}, 0, {0, 0, 1}, 0});
        model->materials.push_back(material);
        root->addChild(model.getPointer());
    }
    return root;
}

SceneNodeRoot& scene() {
    static const Ref<SceneNodeRoot> root = makeScene();
    return *root;
}

void setCounters(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * NUM_MODELS);
    std::remove(benchFile().toStdString().c_str());
}

void writeScene(benchmark::State& state) {
    SceneNodeRoot& root = scene();
    for (auto _ : state)
        root.writeToXMLFile(benchFile(), false, nullptr);
    setCounters(state);
}
BENCHMARK(writeScene)->Unit(benchmark::kMillisecond)->UseRealTime();

void addText(pugi::xml_node parent, const char* name, const std::string& text) {
    parent.append_child(name).append_child(pugi::node_pcdata).set_value(text.c_str());
}

std::string numbersText(const double* values, u32 count) {
    char text[16 * NumberFormat::MAX_CHARS];
    char* end = text;
    for (u32 i = 0; i < count; ++i) {
        if (i > 0)
            *end++ = ' ';
        end = NumberFormat::writeDouble(end, values[i]);
    }
    return std::string(text, end);
}

void addModel(pugi::xml_node parent, const SceneNodeModel& model) {
    pugi::xml_node element = parent.append_child("model2");
    addText(element, "uid", std::to_string(model.getUID().value()));
    addText(element, "name", model.getName().toStdString());
    addText(element, "geometry_uid", std::to_string(model.geometry_uid.value()));
    addText(element, "scale", numbersText(&model.scale, 1));
    const Matrix3d matrix = model.rotation->getMatrix();
    addText(element.append_child("rotation"), "matrix", numbersText(matrix.e, 9));
    for (const KeyFrame& key : model.keyframes) {
        pugi::xml_node keyframe = element.append_child("keyframe");
        addText(keyframe, "time", numbersText(&key.time, 1));
        addText(keyframe, "pos", numbersText(&key.pos.x, 3));
        pugi::xml_node rotation = keyframe.append_child("rotation_quaternion");
        addText(rotation, "axis", numbersText(&key.rotation_axis.x, 3));
        addText(rotation, "angle", numbersText(&key.rotation_angle, 1));
    }
    pugi::xml_node materials = element.append_child("materials");
    for (const Ref<SceneNodeMaterial>& material : model.materials)
        addText(materials, "material_uid", std::to_string(material->getUID().value()));
}

void makeDocument(pugi::xml_document& document) {
    pugi::xml_node element = document.append_child("scene");
    for (const Ref<SceneNode>& child : scene().getChildren())
        addModel(element, static_cast<const SceneNodeModel&>(*child));
}

void saveWithPugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        makeDocument(document);
        document.save_file(benchFile().toStdString().c_str());
    }
    setCounters(state);
}
BENCHMARK(saveWithPugixml)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Saving alone, of texts that were made before.
void saveMadeWithPugixml(benchmark::State& state) {
    pugi::xml_document document;
    makeDocument(document);
    for (auto _ : state)
        document.save_file(benchFile().toStdString().c_str());
    setCounters(state);
}
BENCHMARK(saveMadeWithPugixml)->Unit(benchmark::kMillisecond)->UseRealTime();

Ref<Mesh> makeMesh() {
    const Ref<Mesh> mesh = new Mesh;
    mesh->vert_positions.resize(2000000, Vec3f{1, 2, 3});
    mesh->vert_normals.resize(2000000, Vec3f{0, 0, 1});
    mesh->quads.resize(1500000, MeshQuad{{0, 1, 2, 3}, {0, 0, 0, 0}, 0});
    return mesh;
}

void writeMesh(benchmark::State& state) {
    const Ref<Mesh> mesh = makeMesh();
    for (auto _ : state)
        Mesh::writeToFile(benchFile(), *mesh);
    std::remove(benchFile().toStdString().c_str());
}
BENCHMARK(writeMesh)->Unit(benchmark::kMillisecond)->UseRealTime();

void fwriteMeshBytes(benchmark::State& state) {
    const std::size_t size = 2 * 2000000 * sizeof(Vec3f) + 1500000 * sizeof(MeshQuad);
    const std::string bytes(size, 'x');
    const std::string path = benchFile().toStdString();
    for (auto _ : state) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        std::fwrite(bytes.data(), 1, size, file);
        std::fclose(file);
    }
    std::remove(path.c_str());
}
BENCHMARK(fwriteMeshBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void hashMesh(benchmark::State& state) {
    const Ref<Mesh> mesh = makeMesh();
    u64 num_bytes = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(mesh->checksum(num_bytes));
    state.SetBytesProcessed(state.iterations() * i64(num_bytes));
}
BENCHMARK(hashMesh)->Unit(benchmark::kMillisecond);

} // namespace
