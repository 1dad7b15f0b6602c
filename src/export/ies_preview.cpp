// SPDX-License-Identifier: MIT
#include "export/ies_preview.h"

#include "export/emission_export.h"
#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "host/document.h"
#include "host/general.h"
#include "scene/materials/diffuse_material.h"
#include "scene/scene_node_background_settings.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"
#include "shared/add_material.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_state.h"
#include "shared/spectra.h"
#include "shared/text.h"

#include <exception>

using namespace Quenza;

namespace {

constexpr const char* SCENE_NAME = "ies_preview.qzs";

/// Corners counter-clockwise as seen from the side that the quad faces; metres.
using Quad = Vec3f[4];

constexpr Quad WALL = {{-2, 0, 0}, {2, 0, 0}, {2, 0, 3}, {-2, 0, 3}};
constexpr Quad FLOOR = {{-2, -3, 0}, {2, -3, 0}, {2, 0, 0}, {-2, 0, 0}};
/// A centimetre wide, facing down: a third of a metre before the wall, near its top.
constexpr Quad LAMP = {
    {-0.005f, -0.335f, 2.7f}, {-0.005f, -0.325f, 2.7f}, {0.005f, -0.325f, 2.7f}, {0.005f, -0.335f, 2.7f}};

SceneNodeUID addMesh(SceneNodeRoot& root, std::initializer_list<const Quad*> quads) {
    const Ref<Mesh> mesh = new Mesh;
    mesh->setMaxNumTexcoordSets(1);
    mesh->addMaterialUsed("default0");
    for (const Quad* const quad : quads) {
        const auto first = static_cast<u32>(mesh->vert_positions.size());
        const u32 indices[] = {first, first + 1, first + 2, first + 3};
        for (const Vec3f& corner : *quad) {
            mesh->addVertex(corner);
            Quenza::Vector<Vec2f> uv;
            uv.push_back({corner.x, corner.z});
            mesh->addUVs(uv);
        }
        mesh->addQuad(indices, indices, 0);
    }
    const Ref<SceneNodeMesh> node = new SceneNodeMesh;
    node->mesh = mesh;
    root.addChild(node);
    return node->getUID();
}

Ref<SceneNodeModel> addModel(SceneNodeRoot& root, const char* name, SceneNodeUID mesh,
                             SceneNodeUID material) {
    const Ref<SceneNodeModel> model = new SceneNodeModel;
    model->setName(name);
    model->geometry_uid = mesh;
    model->materials.push_back(root.getMaterial(material));
    model->keyframes.push_back({{0, 0, 0}, 0, {0, 0, 1}, 0});
    model->rotation = new MatrixRotation;
    root.addChild(model);
    return model;
}

void addRoom(SceneNodeRoot& root) {
    const Ref<DiffuseMaterial> plaster = new DiffuseMaterial;
    plaster->albedo = constantParam(makeUniformSpectrum(0.7f));
    addModel(root, "Room", addMesh(root, {&WALL, &FLOOR}), addMaterial(root, plaster, "Plaster"));
}

void addLamp(SceneNodeRoot& root, const Filename& iesFile) {
    const Ref<DiffuseMaterial> shining = new DiffuseMaterial;
    shining->base_emission = constantParam(makeUniformSpectrum(1.0f));
    const SceneNodeUID material = addMaterial(root, shining, "Lamp");
    const Ref<SceneNodeModel> lamp = addModel(root, "Lamp", addMesh(root, {&LAMP}), material);
    addIESProfile(*lamp, material, iesFile);
    const Ref<EmissionScale> scale = new EmissionScale;
    scale->measure = EmissionScale::LUMINOUS_FLUX;
    scale->value = 1000.0;
    scale->material_uid = material;
    lamp->emission_scales.push_back(scale);
}

void addViewAndSettings(SceneNodeRoot& root) {
    const Ref<SceneNodeRenderSettings> settings = new SceneNodeRenderSettings;
    settings->setInt("width", 480);
    settings->setInt("height", 360);
    settings->setDouble("halt_samples_per_pixel", 200.0);
    root.addChild(settings);
    const Ref<SceneNodeCamera> camera = new SceneNodeCamera;
    camera->keyframes.push_back({{0, -4.5, 1.5}, 0, {0, 0, 1}, 0});
    camera->focus_distance = 4.5;
    camera->aperture_radius = 0.0001;
    camera->autofocus = false;
    root.addChild(camera);
    root.addChild(new SceneNodeBackgroundSettings);
    // Profiles of candles and of stadium lamps come out equally bright.
    const Ref<SceneNodeTonemapping> tonemapping = new SceneNodeTonemapping;
    tonemapping->tonemap_type = SceneNodeTonemapping::REINHARD;
    root.addChild(tonemapping);
}

Filename chosenFile(const BaseList2D& lightTag) {
    const Filename file = lightTag.GetDataInstance()->GetFilename(LIGHT_IES_FILE);
    if (!file.Content()) {
        return defaultIESFile();
    }
    const BaseDocument* const document = lightTag.GetDocument();
    const Filename folder = document ? document->GetDocumentPath() : Filename();
    return toFilename(FileUtils::join(toSceneString(folder), toSceneString(file)));
}

Filename writeScene(SceneNodeRoot& root) {
    const Quenza::String folder = FileUtils::join(PlatformUtils::getTempDirectory(), "quenza_ies_preview");
    if (!FileUtils::directoryExists(folder)) {
        FileUtils::createDir(folder);
    }
    const Quenza::String path = FileUtils::join(folder, SCENE_NAME);
    root.writeToXMLFile(path, false, nullptr);
    return toFilename(path);
}

} // namespace

Ref<SceneNodeRoot> makeIESPreviewScene(const Filename& iesFile) {
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    root->setUID(SceneNodeUID(0));
    addViewAndSettings(*root);
    addRoom(*root);
    addLamp(*root, iesFile);
    return root;
}

void showIESPreview(const BaseList2D& lightTag) {
    try {
        const Filename iesFile = chosenFile(lightTag);
        if (!GeFExist(iesFile)) {
            GePrint(::String("There is no IES file \"") + iesFile.GetString() + "\".");
            return;
        }
        const Filename scene = writeScene(*makeIESPreviewScene(iesFile));
        if (!pluginState().openScene || !pluginState().openScene(scene)) {
            GePrint("The preview of the IES file couldn't be opened in the renderer.");
        }
    } catch (const std::exception& exception) {
        GePrint(exception.what());
    }
}
