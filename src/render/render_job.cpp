// SPDX-License-Identifier: MIT
#include "render/render_job.h"

#include "host/general.h"
#include "host/ids.h"
#include "shared/parameter_ids.h"

#include <algorithm>
#include <cmath>

namespace {

bool readScenePath(const BaseDocument* document, const BaseContainer& settings, RenderJob& job,
                   String& error) {
    if (!settings.GetBool(RS_EXPORT_TO_FILE)) {
        return true;
    }
    if (settings.GetBool(RS_EXPORT_NEXT_TO_DOC)) {
        const Filename folder = document->GetDocumentPath();
        if (!folder.Content()) {
            error = "Document is not saved, cannot obtain document path.";
            return false;
        }
        Filename name = document->GetDocumentName();
        name.SetSuffix("qzs");
        job.scenePath = folder + name;
        return true;
    }
    Filename path = settings.GetFilename(RS_EXPORT_FILE);
    const bool usable = path.Content() && GeFExist(path.GetDirectory(), true);
    if (!usable) {
        error = "Export filename is empty or directory does not exist.";
        return false;
    }
    path.SetSuffix("qzs");
    job.scenePath = path;
    return true;
}

bool readOutputPath(const BaseContainer& settings, RenderJob& job, String& error) {
    if (!settings.GetBool(RS_SET_OUTPUT)) {
        return true;
    }
    if (!settings.GetBool(RS_EXPORT_TO_FILE) || !settings.GetBool(RS_OUTPUT_IN_RENDERS)) {
        job.launch.outputFile = settings.GetFilename(RS_OUTPUT_FILE);
        return true;
    }
    Filename stem = job.scenePath.GetFile();
    stem.ClearSuffix();
    const Filename folder = job.scenePath.GetDirectory() + Filename(stem.GetString() + ".renders");
    if (!GeFExist(folder, true) && !GeFCreateDir(folder)) {
        error = "Cannot create render directory.";
        return false;
    }
    job.launch.outputFile = folder + stem;
    return true;
}

void readFrameRange(const BaseDocument* document, const BaseContainer& renderData, RenderJob& job) {
    const int32_t documentFps = document->GetFps();
    switch (renderData.GetLong(RDATA_FRAMESEQUENCE)) {
    case RDATA_FRAMESEQUENCE_MANUAL:
        job.startFrame = frameOfTime(renderData.GetTime(RDATA_FRAMEFROM), documentFps);
        job.endFrame = frameOfTime(renderData.GetTime(RDATA_FRAMETO), documentFps);
        break;
    case RDATA_FRAMESEQUENCE_ALLFRAMES:
    case RDATA_FRAMESEQUENCE_PREVIEWRANGE:
        job.startFrame = std::max(frameOfTime(document->GetMinTime(), documentFps), 0);
        job.endFrame = std::max(frameOfTime(document->GetMaxTime(), documentFps), 0);
        break;
    default:
        break;
    }
    job.fps = static_cast<int32_t>(renderData.GetReal(RDATA_FRAMERATE, static_cast<float>(documentFps)));
    if (job.fps != documentFps) {
        job.startFrame = frameOfTime(BaseTime(job.startFrame, documentFps), job.fps);
        job.endFrame = frameOfTime(BaseTime(job.endFrame, documentFps), job.fps);
    }
}

} // namespace

int32_t frameOfTime(const BaseTime& time, int32_t fps) {
    const double denominator = std::floor(time.GetDenominator());
    const double frame = std::floor(fps * time.GetNumerator()) / (denominator != 0.0 ? denominator : 1.0);
    constexpr double LIMIT = 2147483647.0;
    return std::isnan(frame) ? 0 : static_cast<int32_t>(std::clamp(frame, -LIMIT, LIMIT));
}

int32_t currentFrame(const BaseDocument* document) {
    return frameOfTime(document->GetTime(), document->GetFps());
}

bool readRenderJob(BaseDocument* document, const BaseContainer* settings, const Filename& quickScene,
                   RenderJob& job, String& error) {
    job.scenePath = quickScene;
    job.startFrame = job.endFrame = currentFrame(document);
    job.fps = document->GetFps();
    const RenderData* const renderData = document->GetActiveRenderData();
    if (renderData) {
        job.width = renderData->GetDataInstance()->GetLong(RDATA_XRES, job.width);
        job.height = renderData->GetDataInstance()->GetLong(RDATA_YRES, job.height);
    }
    if (!settings) {
        return true;
    }
    if (!readScenePath(document, *settings, job, error) || !readOutputPath(*settings, job, error)) {
        return false;
    }
    const bool wantsAnimation = settings->GetBool(RS_ANIMATION);
    if (wantsAnimation && renderData) {
        readFrameRange(document, *renderData->GetDataInstance(), job);
    }
    job.isAnimation = wantsAnimation && job.startFrame != job.endFrame;
    job.mergeVertices = settings->GetBool(RS_MERGE_VERTICES, true);
    job.haltSamplesPerPixel = settings->GetReal(RS_HALT_SPP, -1.0f);
    job.haltTime = settings->GetReal(RS_HALT_TIME, -1.0f);
    job.launch.lowPriority = settings->GetBool(RS_LOW_PRIORITY, true);
    job.launch.console = settings->GetBool(RS_CONSOLE);
    job.launch.network = settings->GetBool(RS_NETWORK);
    job.launch.port = settings->GetLong(RS_NETWORK_PORT, 7777);
    return true;
}
