// SPDX-License-Identifier: MIT
#include "export/mesh_hash.h"
#include "export/scene_exporter.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/host.h"
#include "host/ids.h"
#include "materials/quenza_material.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/text.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <filesystem>
#include <fstream>

// Whole exports: from a document in the stand-in host to the files on disk.

namespace {

namespace fs = std::filesystem;
using namespace headless;

/// A host, and a folder that goes with it.
struct Workshop {
    Workshop() : folder(fs::temp_directory_path() / "quenza-export-bench") {
        fs::remove_all(folder);
        fs::create_directories(folder);
        HostOptions options;
        options.consoleSink = options.errorSink = options.statusSink = [](const std::string&) {};
        host = std::make_unique<Host>(options);
    }
    ~Workshop() {
        host.reset();
        fs::remove_all(folder);
    }

    /// Exports the host's document once, as one frame of the Render command does.
    void exportDocument() const {
        BaseDocument* const document = GetActiveDocument();
        ExportContext context(document, Filename(String((folder / "scene.qzs").string())), nullptr, 0, 640,
                              480, false, true, false, false);
        SceneExporter exporter;
        exporter.context = &context;
        const Quenza::Ref<Quenza::SceneNodeRoot> root = exporter.runHierarchy(nullptr);
        root->writeToXMLFile((folder / "scene.qzs").string(), false, nullptr, true);
    }

    fs::path folder;
    std::unique_ptr<Host> host;
};

std::unique_ptr<PolygonNode> grid(int32_t side) {
    const auto points = static_cast<size_t>(side + 1);
    auto mesh = createPolygons(points * points, static_cast<size_t>(side) * static_cast<size_t>(side));
    auto uvw = std::make_unique<UVWTagNode>(mesh->polygons.size());
    const float step = 1.0f / static_cast<float>(side);
    for (size_t i = 0; i < mesh->points.size(); ++i) {
        const auto x = static_cast<float>(i % points), z = static_cast<float>(i / points);
        mesh->points[i] = Vector(x, std::sin(x * 0.1f) * std::cos(z * 0.07f), z);
    }
    for (int32_t z = 0; z < side; ++z) {
        for (int32_t x = 0; x < side; ++x) {
            const auto i = static_cast<size_t>(z) * static_cast<size_t>(side) + static_cast<size_t>(x);
            const int32_t a = z * (side + 1) + x;
            mesh->polygons[i] = CPolygon(a, a + side + 1, a + side + 2, a + 1);
            const float u = static_cast<float>(x) * step, v = static_cast<float>(z) * step;
            uvw->records[i] = {{u, v, 0}, {u, v + step, 0}, {u + step, v + step, 0}, {u + step, v, 0}};
        }
    }
    mesh->appendTag(std::move(uvw));
    mesh->appendTag(createTag(Tphong));
    return mesh;
}

void addMaterialType() {
    NodeTypeInfo type;
    type.id = PLUGINID_MATERIAL;
    type.kind = NodeKind::material;
    type.name = "Quenza Material";
    type.allocator = []() -> NodeData* { return new QuenzaMaterial; };
    NodeTypes::instance().add(type);
}

/// Glass with a relief: several nodes, and a texture that has to be looked for.
BaseMaterial* addGlass(BaseDocument* document) {
    BaseMaterial* const material = BaseMaterial::Alloc(PLUGINID_MATERIAL);
    document->InsertMaterial(material);
    material->GetDataInstance()->SetLong(MAT_KIND, MAT_KIND_SPECULAR);
    material->GetDataInstance()->SetBool(MAT_BUMP_ENABLED, true);
    BaseShader* const bump = BaseShader::Alloc(Xbitmap);
    material->InsertShader(bump);
    material->GetDataInstance()->SetLink(MAT_BUMP_SHADER, bump);
    bump->GetDataInstance()->SetFilename(BITMAPSHADER_FILENAME, Filename("bump.png"));
    return material;
}

/// Objects over ten meshes, all at the top, with a number of materials in turns.
void exportObjects(benchmark::State& state) {
    addMaterialType();
    const Workshop workshop;
    workshop.host->open(std::make_unique<Document>());
    Document& document = *workshop.host->document();
    std::vector<BaseMaterial*> materials;
    for (int64_t i = 0; i < state.range(1); ++i) {
        materials.push_back(addGlass(GetActiveDocument()));
    }
    for (int64_t i = 0; i < state.range(0); ++i) {
        std::unique_ptr<Object> object = grid(4 + static_cast<int32_t>(i % 10));
        object->matrix.off = Vector(static_cast<float>(i), 0, 0);
        Object& added = document.appendObject(std::move(object));
        if (!materials.empty()) {
            auto* const tag = static_cast<TextureTag*>(toHost(&added)->MakeTag(Ttexture));
            tag->SetMaterial(materials[static_cast<size_t>(i) % materials.size()]);
        }
    }
    for (auto _ : state) {
        workshop.exportDocument();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(exportObjects)
    ->ArgNames({"objects", "materials"})
    ->Args({1000, 0})
    ->Args({20000, 0})
    ->Args({5000, 5000})
    ->Args({20000, 5000})
    ->Args({20000, 20000})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// `count` render instances of one mesh.
void exportInstances(benchmark::State& state) {
    const Workshop workshop;
    auto document = std::make_unique<Document>();
    Object& mesh = document->appendObject(grid(20));
    for (int64_t i = 0; i < state.range(0); ++i) {
        std::unique_ptr<Object> instance = createObject(Oinstance);
        instance->data.SetLink(INSTANCEOBJECT_LINK, toHost(static_cast<const Node*>(&mesh)));
        instance->data.SetBool(INSTANCEOBJECT_RENDERINSTANCE, true);
        instance->matrix.off = Vector(static_cast<float>(i), 0, 0);
        document->appendObject(std::move(instance));
    }
    workshop.host->open(std::move(document));
    for (auto _ : state) {
        workshop.exportDocument();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(exportInstances)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// One mesh of side x side quads with UVs and smooth normals.
void exportGrid(benchmark::State& state) {
    const Workshop workshop;
    auto document = std::make_unique<Document>();
    document->appendObject(grid(static_cast<int32_t>(state.range(0))));
    workshop.host->open(std::move(document));
    for (auto _ : state) {
        workshop.exportDocument();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(0));
}
BENCHMARK(exportGrid)->Arg(1414)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
