// SPDX-License-Identifier: MIT
#include "render/video_post.h"

#include "host/general.h"
#include "render/launch.h"
#include "render/picture_export.h"
#include "render/picture_render.h"
#include "render/runtime/quenza_context.h"
#include "shared/parameter_ids.h"
#include "shared/text.h"

#include <exception>

namespace {

VPBuffer* bufferOf(const VideoPostStruct& vps) {
    return vps.render ? vps.render->GetBuffer() : nullptr;
}

Quenza::Vector<Quenza::String> rendererArguments(const PictureJob& job, const BaseContainer* container) {
    Quenza::Vector<Quenza::String> arguments;
    arguments.push_back(job.scenePath);
    arguments.push_back("-seed");
    arguments.push_back(toSceneString(LongToString(randomSeed())));
    if (!job.isPreview && !job.isInteractive && container && container->GetBool(RS_NETWORK)) {
        arguments.push_back("-n");
        arguments.push_back("wm");
    }
    return arguments;
}

} // namespace

RenderSettingsVideoPost::~RenderSettingsVideoPost() {
    // The host may drop a render between two phases.
    if (!job_.tempFiles.empty()) {
        cleanUp();
    }
}

int32_t RenderSettingsVideoPost::Execute(BaseVideoPost* /*videoPost*/, BaseContainer* container,
                                         VideoPostStruct* vps) {
    if (!vps) {
        GePrint("*vps is null.");
        return RENDERRESULT_OK;
    }
    if (!isLibraryLoaded()) {
        return RENDERRESULT_OK;
    }
    // Nothing may pass through the host's frames.
    try {
        return runPhase(container, *vps);
    } catch (const std::exception& exception) {
        GePrint(exception.what());
    } catch (...) {
        GePrint("The renderer has failed.");
    }
    StatusClear();
    return RENDERRESULT_FAILED;
}

int32_t RenderSettingsVideoPost::runPhase(const BaseContainer* container, const VideoPostStruct& vps) {
    if (vps.vp == VIDEOPOSTCALL_RENDER && vps.open) {
        bufferOf(vps);
    } else if (vps.vp == VIDEOPOSTCALL_TILE && vps.open) {
        return exportScene(vps);
    } else if (vps.vp == VIDEOPOSTCALL_INNER && !vps.open) {
        return render(container, vps);
    } else if (vps.vp == VIDEOPOSTCALL_RENDER) {
        cleanUp();
    }
    return RENDERRESULT_OK;
}

int32_t RenderSettingsVideoPost::exportScene(const VideoPostStruct& vps) {
    cleanUp();
    const int32_t result = exportPicture(job_, vps);
    if (result != RENDERRESULT_OK) {
        StatusClear();
    }
    return result;
}

int32_t RenderSettingsVideoPost::render(const BaseContainer* container, const VideoPostStruct& vps) {
    if (job_.failed) {
        return RENDERRESULT_FAILED;
    }
    if (vps.thread && vps.thread->TestBreak()) {
        StatusClear();
        return RENDERRESULT_USERBREAK;
    }
    StatusSetText("Building scene...");
    VPBuffer* const buffer = bufferOf(vps);
    int32_t result = RENDERRESULT_FAILED;
    if (job_.root && buffer) {
        result = PictureRender(job_, *buffer, vps.thread).run(rendererArguments(job_, container));
    }
    StatusClear();
    return result;
}

void RenderSettingsVideoPost::cleanUp() {
    job_.root = nullptr;
    for (const Quenza::String& file : job_.tempFiles) {
        GeFKill(toFilename(file));
    }
    job_.tempFiles.clear();
}
