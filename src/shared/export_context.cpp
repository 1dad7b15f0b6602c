// SPDX-License-Identifier: MIT
#include "shared/export_context.h"

#include "foundation/platform.h"
#include "host/basedraw.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/object.h"
#include "host/tag.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_unit.h"
#include "shared/text.h"

namespace {

constexpr float DEFAULT_EXPOSURE = 0.05f;

void readCamera(ExportContext& context) {
    BaseDraw* const view = context.document ? context.document->GetActiveBaseDraw() : nullptr;
    context.cameraObject = view ? view->GetSceneCamera(context.document) : nullptr;
    if (!context.cameraObject) {
        return;
    }
    context.cameraData = *context.cameraObject->GetDataInstance();
    if (const BaseTag* const tag = context.cameraObject->GetTag(PLUGINID_CAMERA_TAG)) {
        context.cameraTagData = *tag->GetDataInstance();
        context.hasCameraTag = true;
    }
}

Filename makeTextureDirectory(const ExportContext& context) {
    if (context.extraFiles) {
        return toFilename(Quenza::PlatformUtils::getTempDirectory());
    }
    const Filename folder = context.sceneDirectory + Filename(String("textures.") + context.sceneBaseName);
    // A context without a scene file, to look at materials with, leaves nothing on disk.
    if (context.sceneBaseName.Content()) {
        GeFCreateDir(folder);
    }
    return folder;
}

} // namespace

ExportContext::ExportContext(BaseDocument* exportedDocument, const Filename& scenePath,
                             Quenza::Vector<Quenza::String>* extraFileList, int32_t frameNumber,
                             int32_t width, int32_t height, bool animation, bool merge, bool printProgress,
                             bool materialPreview)
    : document(exportedDocument), sceneDirectory(scenePath.GetDirectory()), frame(frameNumber),
      imageWidth(width), imageHeight(height), isAnimation(animation), mergeVertices(merge),
      verbose(printProgress), isMaterialPreview(materialPreview), extraFiles(extraFileList) {
    Filename base = scenePath.GetFile();
    base.ClearSuffix();
    sceneBaseName = base.GetString();
    readCamera(*this);
    textureDirectory = makeTextureDirectory(*this);
    exposureDuration =
        hasCameraTag ? 1.0f / cameraTagData.GetReal(CAM_SHUTTER_SPEED, 500.0f) : DEFAULT_EXPOSURE;
    renderSettings = document ? findVideoPost(document) : nullptr;
    sceneScale = unitToMetres(renderSettings);
}

const BaseContainer* findVideoPost(BaseDocument* document) {
    const RenderData* const renderData = document->GetActiveRenderData();
    BaseVideoPost* videoPost = renderData ? renderData->GetFirstVideoPost() : nullptr;
    for (; videoPost; videoPost = videoPost->GetNext()) {
        if (videoPost->GetType() == PLUGINID_RENDER_SETTINGS && !videoPost->GetBit(BIT_VPDISABLED)) {
            return videoPost->GetDataInstance();
        }
    }
    return nullptr;
}
