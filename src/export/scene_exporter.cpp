// SPDX-License-Identifier: MIT
#include "export/scene_exporter.h"

#include "export/background_export.h"
#include "export/camera_export.h"
#include "export/default_materials.h"
#include "export/frame_file_name.h"
#include "export/layer_export.h"
#include "export/metadata.h"
#include "export/render_settings_export.h"
#include "export/time_text.h"
#include "export/tonemapping_export.h"
#include "export/traversal.h"
#include "export/version.h"

using namespace Quenza;

namespace {

::String savedPath(const Filename& folder, const ::String& file) {
    const std::string& path = folder.GetUtf8();
    const bool isRoot = !path.empty() && (path.back() == '\\' || path.back() == Filename::separator);
    return folder.GetString() + (isRoot ? "" : "\\") + file;
}

} // namespace

void SceneExporter::print(const ::String& line) const {
    if (context->verbose) {
        GePrint(line);
    }
}

Ref<SceneNodeRoot> SceneExporter::exportScene() {
    if (!context || !context->document) {
        return nullptr;
    }
    print(DECORATION);
    print("Starting export...");
    uint32_t start = GeGetMilliSeconds();
    instanceCount = 0;
    meshMap.clear();
    instancedMeshes.clear();
    layerSettings = {};
    lightGeometry.reset(AtomArray::Alloc());
    random.Init(GeGetMilliSeconds());
    sceneFileName = frameFileName(context->sceneBaseName, context->frame, context->isAnimation, ".qzs");
    root = new SceneNodeRoot;
    root->setUID(SceneNodeUID(0));
    exportSettingsNodes();
    exportDefaultMaterials(*this);
    traverse(*this, 0);
    exportObjects();
    exportLayers(*this);
    includingPlanes.clear();
    excludingPlanes.clear();
    print(::String("Processing time: ") + longTimeText(secondsSince(start)));
    // The caller writes the file only after these lines: the time between them is that of nothing.
    start = GeGetMilliSeconds();
    print(::String("Saved scene to: ") + savedPath(context->sceneDirectory, sceneFileName));
    print(::String("Saving time: ") + shortTimeText(start));
    print(DECORATION);
    lightGeometry.reset();
    instancedMeshes.clear();
    context->sampledMotion.clear();
    meshExporter.releaseMemory();
    return root;
}

void SceneExporter::exportSettingsNodes() {
    exportMetadata(*root);
    const Ref<SceneNodeRenderSettings> settings = new SceneNodeRenderSettings;
    root->addChild(settings);
    exportRenderSettings(*settings, *context);
    const Ref<SceneNodeCamera> camera = new SceneNodeCamera;
    root->addChild(camera);
    exportCamera(camera, settings, *context);
    exportBackground(*this);
    const Ref<SceneNodeTonemapping> tonemapping = new SceneNodeTonemapping;
    root->addChild(tonemapping);
    exportTonemapping(tonemapping, context->cameraTagData);
}

void SceneExporter::exportObjects() {
    print("Exporting materials, objects and lights...");
    const uint32_t start = GeGetMilliSeconds();
    traverse(*this, 1);
    context->materialMap.clear();
    print(::String("Object export time: ") + shortTimeText(start));
    print(::String("Instances exported: ") + LongToString(instanceCount));
    print(" ");
}

Ref<SceneNodeRoot> SceneExporter::runHierarchy(BaseThread* thread) {
    if (!context || !context->document) {
        return nullptr;
    }
    root = nullptr;
    failure_ = nullptr;
    constexpr int32_t BUILD_FLAGS = 20;
    Run(context->document, true, 1.0f, BUILD_FLAGS, nullptr, thread);
    if (failure_) {
        std::rethrow_exception(failure_);
    }
    return root;
}

bool SceneExporter::Do(void* /*data*/, BaseObject* /*object*/, const Matrix& /*matrix*/,
                       bool /*controlObject*/) {
    try {
        exportScene();
    } catch (...) {
        failure_ = std::current_exception();
    }
    return false;
}
