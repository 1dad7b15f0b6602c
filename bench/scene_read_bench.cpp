// SPDX-License-Identifier: MIT
// Reading of scenes of many models beside what TinyXML alone takes to parse them. Twice the models must take
// twice the time.

#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "reading/scene_parser.h"
#include "reading/xml_document.h"
#include "reading/xml_precheck.h"
#include "scene/materials/null_material.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_root.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <random>
#include <string>
#include <tinyxml.h>

namespace {

using namespace Quenza;

constexpr i64 NUM_MODELS = 100000;

/// One material, one mesh whose file need not be there, and models of it.
Ref<SceneNodeRoot> makeScene(i64 models) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> number(-10, 10);
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    const Ref<SceneNodeMaterial> material = new SceneNodeMaterial;
    material->material = new NullMaterial;
    const Ref<SceneNodeMesh> mesh = new SceneNodeMesh;
    mesh->setName("mesh");
    mesh->path = "scene_meshes/mesh.qzmesh";
    root->addChild(material.getPointer());
    root->addChild(mesh.getPointer());
    for (i64 i = 0; i < models; ++i) {
        const Ref<SceneNodeModel> model = new SceneNodeModel;
        const Ref<MatrixRotation> rotation = new MatrixRotation;
        for (double& e : rotation->matrix.e)
            e = number(random);
        model->rotation = rotation;
        model->keyframes.push_back(
            KeyFrame{{number(random), number(random), number(random)}, 0, {0, 0, 1}, 0});
        model->geometry_uid = mesh->getUID();
        model->materials.push_back(material);
        root->addChild(model.getPointer());
    }
    return root;
}

/// A scene file that goes with the benchmark.
class SceneFile {
public:
    explicit SceneFile(i64 models) { makeScene(models)->writeToXMLFile(path, false, nullptr); }
    ~SceneFile() { std::remove(path.toStdString().c_str()); }
    SceneFile(const SceneFile&) = delete;
    SceneFile& operator=(const SceneFile&) = delete;

    const String path = PlatformUtils::getTempDirectory() + "/scene_read_bench.qzs";
};

/// The numbers of models that all are measured with.
void setUp(benchmark::internal::Benchmark* bench) {
    bench->Arg(NUM_MODELS)->Arg(2 * NUM_MODELS)->Unit(benchmark::kMillisecond)->UseRealTime();
}

/// From memory: the file's reading isn't TinyXML's.
void parseWithTinyXML(benchmark::State& state) {
    const SceneFile file(state.range(0));
    const std::string text = FileUtils::readEntireFile(file.path);
    for (auto _ : state) {
        TiXmlDocument document;
        document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
        if (document.Error())
            state.SkipWithError(document.ErrorDesc());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(parseWithTinyXML)->Apply(setUp);

void precheck(benchmark::State& state) {
    const SceneFile file(state.range(0));
    std::string text = FileUtils::readEntireFile(file.path);
    for (auto _ : state)
        if (precheckXML(text))
            state.SkipWithError("the scene's text is refused");
    state.SetBytesProcessed(state.iterations() * i64(text.size()));
}
BENCHMARK(precheck)->Apply(setUp);

void loadDocument(benchmark::State& state) {
    const SceneFile file(state.range(0));
    for (auto _ : state) {
        XMLDocument document;
        document.loadDocument(file.path);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(loadDocument)->Apply(setUp);

void parseScene(benchmark::State& state) {
    const SceneFile file(state.range(0));
    for (auto _ : state) {
        Ref<SceneNodeRoot> root;
        QuenzaModelParser().parseScene(root, file.path, QuenzaModelParser::Context(), "");
        benchmark::DoNotOptimize(root.getPointer());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(parseScene)->Apply(setUp);

} // namespace
