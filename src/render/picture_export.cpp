// SPDX-License-Identifier: MIT
#include "render/picture_export.h"

#include "export/scene_exporter.h"
#include "foundation/exceptions.h"
#include "host/general.h"
#include "render/region_camera.h"
#include "render/render_job.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_render_settings.h"
#include "shared/export_context.h"
#include "shared/text.h"
#include "shared/user_folder.h"

#include <algorithm>

using Quenza::Ref;
using Quenza::RenderRegion;
using Quenza::SceneNodeRenderSettings;
using Quenza::SceneNodeRoot;

namespace {

/// How long an interactive render goes on.
constexpr double INTERACTIVE_SAMPLES_PER_PIXEL = 16.0;

bool takeBufferSize(PictureJob& job, const VideoPostStruct& vps) {
    const VPBuffer* const buffer = vps.render ? vps.render->GetBuffer() : nullptr;
    if (!buffer) {
        return false;
    }
    job.bufferWidth = job.regionWidth = buffer->GetBw();
    job.bufferHeight = job.regionHeight = buffer->GetBh();
    job.regionX = job.regionY = 0;
    return true;
}

/// What lies outside of the buffer is left out. False when nothing is left.
bool takeRegion(PictureJob& job, const Render& render) {
    int32_t kind = RENDERREGION_NONE;
    int32_t from = 0;
    int32_t to = 0;
    if (!render.GetRegion(kind, from, to)) {
        return true;
    }
    const auto cut = [from, to](int64_t size, int64_t& start, int64_t& length) {
        start = std::clamp<int64_t>(from, 0, size);
        length = std::clamp<int64_t>(to, start, size) - start;
        return length > 0;
    };
    switch (kind) {
    case RENDERREGION_ROWS:
        return cut(job.bufferHeight, job.regionY, job.regionHeight);
    case RENDERREGION_COLUMNS:
        return cut(job.bufferWidth, job.regionX, job.regionWidth);
    default:
        return true;
    }
}

void takeFlags(PictureJob& job, int32_t flags) {
    job.isInteractive = (flags & RENDERFLAGS_IRR) != 0;
    job.isPreview = (flags & (RENDERFLAGS_IRR | RENDERFLAGS_PREVIEWRENDER)) != 0;
    job.isPictureViewer = !job.isPreview && (flags & RENDERFLAGS_EXTERNAL) != 0;
}

Ref<SceneNodeRoot> exportDocument(PictureJob& job, BaseDocument* document, const Filename& scenePath) {
    ExportContext context(document, scenePath, &job.tempFiles, document ? currentFrame(document) : 0,
                          static_cast<int32_t>(job.regionWidth), static_cast<int32_t>(job.regionHeight),
                          false, true, false, job.isPreview);
    SceneExporter exporter;
    exporter.context = &context;
    return exporter.exportScene();
}

void adaptSettings(SceneNodeRenderSettings& settings, const PictureJob& job) {
    const Ref<RenderRegion> region = new RenderRegion;
    region->x2 = static_cast<Quenza::i32>(job.bufferWidth);
    region->y2 = static_cast<Quenza::i32>(job.bufferHeight);
    settings.render_region = region;
    if (job.isPreview) {
        settings.setBool("save_png", false);
    }
    if (job.isInteractive) {
        settings.setBool("bidirectional", false);
        settings.setBool("metropolis", false);
        settings.setInt("super_sample_factor", 1);
        settings.setDouble("halt_time", -1.0);
        settings.setDouble("halt_samples_per_pixel", INTERACTIVE_SAMPLES_PER_PIXEL);
    }
}

/// Gives the settings the number behind all others of the scene.
void numberLast(SceneNodeRoot& root, SceneNodeRenderSettings& settings) {
    root.uid_map.erase(settings.getUID());
    settings.setUID(Quenza::SceneNodeUID(root.allocateUID()));
    root.uid_map.insert(settings.getUID(), &settings);
}

} // namespace

int32_t exportPicture(PictureJob& job, const VideoPostStruct& vps) {
    job.failed = true;
    if (!takeBufferSize(job, vps) || (vps.crop && !takeRegion(job, *vps.render))) {
        return RENDERRESULT_FAILED;
    }
    StatusClear();
    StatusSetText("Exporting scene...");
    takeFlags(job, vps.renderflags);
    const Filename scenePath = getUserFolder() + "quickrender" + "quickrender.qzs";
    job.scenePath = toSceneString(scenePath);
    job.root = exportDocument(job, vps.doc, scenePath);
    if (!job.root) {
        return RENDERRESULT_FAILED;
    }
    job.root->finalise(job.scenePath);
    const Ref<SceneNodeRenderSettings> settings =
        static_cast<SceneNodeRenderSettings*>(job.root->getRenderSettingsPointer());
    if (!settings) {
        throw Quenza::QuenzaException("No renderer settings node in scene.");
    }
    adaptSettings(*settings, job);
    if (auto* const camera = static_cast<Quenza::SceneNodeCamera*>(job.root->getCameraPointer())) {
        aimAtRegion(*camera, job);
    }
    numberLast(*job.root, *settings);
    job.failed = false;
    return RENDERRESULT_OK;
}
