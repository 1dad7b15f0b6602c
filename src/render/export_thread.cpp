// SPDX-License-Identifier: MIT
#include "render/export_thread.h"

#include "export/frame_file_name.h"
#include "export/scene_exporter.h"
#include "export/status_progress.h"
#include "foundation/exceptions.h"
#include "host/general.h"
#include "render/render_job.h"
#include "render/render_queue.h"
#include "render/renderer_location.h"
#include "shared/export_context.h"
#include "shared/text.h"
#include "shared/user_folder.h"

#include <cmath>

namespace {

constexpr const char* CANCELLED = "Export was cancelled by user";

/// Restores the document's frame rate and time, and what the time moves.
class DocumentTime {
public:
    explicit DocumentTime(BaseDocument* document)
        : document_(document), fps_(document->GetFps()), time_(document->GetTime()) {}

    void goTo(int32_t frame, int32_t fps) { set(BaseTime(frame, fps), fps); }
    void restore() { set(time_, fps_); }

private:
    void set(const BaseTime& time, int32_t fps) {
        document_->SetFps(fps);
        document_->SetTime(time);
        document_->AnimateDocument(nullptr, true);
    }

    BaseDocument* document_;
    int32_t fps_;
    BaseTime time_;
};

/// Ends the writing of a scene when the artist cancels: a scene that isn't written to its end never gets its
/// name.
class CancellableProgress : public StatusProgress {
public:
    explicit CancellableProgress(C4DThread& thread) : thread_(thread) {}

    void progress(float fraction) override {
        if (thread_.TestBreak()) {
            throw Quenza::QuenzaException(CANCELLED);
        }
        StatusProgress::progress(fraction);
    }

private:
    C4DThread& thread_;
};

} // namespace

void ExportThread::fail(const String& text) {
    errorFlag_ = 1;
    error_ = text;
}

void ExportThread::Main() {
    try {
        run();
    } catch (const std::exception& exception) {
        GePrint(exception.what());
        fail(exception.what());
    }
    StatusClear();
}

bool ExportThread::prepareQuickFolder(Filename& folder) {
    folder = getUserFolder() + "quickrender";
    if (GeFExist(folder, true) && !GeFKill(folder, true)) {
        GePrint("Failed to delete quickrender folder!");
    }
    if (!GeFExist(folder, true) && !GeFCreateDir(folder)) {
        GePrint(folder.GetString());
        GePrint("Quickrender dir could not be created.");
        fail(String("\"") + folder.GetString() + "\" could not be created.");
        return false;
    }
    return true;
}

void ExportThread::run() {
    if (!document_) {
        fail("Invalid document.");
        return;
    }
    Filename quickFolder;
    if (!prepareQuickFolder(quickFolder)) {
        return;
    }
    RenderJob job;
    String error;
    if (!readRenderJob(document_, findVideoPost(document_), quickFolder + "quickrender.qzs", job, error)) {
        GePrint(error);
        fail(error);
        return;
    }
    if (!exportFrames(job)) {
        return;
    }
    Filename launched = job.scenePath;
    if (job.isAnimation) {
        launched.SetSuffix("qzq");
    }
    launchQuenza(launched, job.launch);
    errorFlag_ = 0;
}

bool ExportThread::exportFrames(const RenderJob& job) {
    Filename base = job.scenePath.GetFile();
    base.ClearSuffix();
    RenderQueue queue;
    Random random;
    random.Init(GeGetMilliSeconds());
    DocumentTime time(document_);
    for (int64_t next = job.startFrame; next <= job.endFrame; ++next) {
        const auto frame = static_cast<int32_t>(next);
        if (TestBreak()) {
            fail(CANCELLED);
            return false;
        }
        time.goTo(frame, job.fps);
        const Filename scenePath = job.scenePath.GetDirectory() +
                                   Filename(frameFileName(base.GetString(), frame, job.isAnimation, ".qzs"));
        if (job.isAnimation) {
            const double seed = std::floor(static_cast<double>(random.Get01()) * GeGetMilliSeconds());
            queue.addFrame(job, frame, scenePath, static_cast<int32_t>(static_cast<uint32_t>(seed)));
        }
        if (!exportFrame(job, frame, scenePath)) {
            // A cancelled export leaves the document at the time that it had come to.
            if (error_ != CANCELLED) {
                time.restore();
            }
            return false;
        }
    }
    // A break that came during the last frame: nothing more may begin for an artist who has cancelled.
    if (TestBreak()) {
        fail(CANCELLED);
        return false;
    }
    time.restore();
    if (job.isAnimation) {
        Filename queuePath = job.scenePath;
        queuePath.SetSuffix("qzq");
        if (!queue.save(queuePath)) {
            const String text = String("Failed to write '") + queuePath.GetString() + "'";
            GePrint(text);
            fail(text);
            return false;
        }
    }
    return true;
}

bool ExportThread::exportFrame(const RenderJob& job, int32_t frame, const Filename& scenePath) {
    try {
        ExportContext context(document_, job.scenePath, nullptr, frame, job.width, job.height,
                              job.isAnimation, job.mergeVertices, true, false);
        SceneExporter exporter;
        exporter.context = &context;
        const Quenza::Ref<Quenza::SceneNodeRoot> root = exporter.runHierarchy(Get());
        if (root) {
            CancellableProgress progress(*this);
            root->writeToXMLFile(toSceneString(scenePath), false, &progress, true);
        }
        return true;
    } catch (const std::exception& exception) {
        const String text = exception.what();
        if (text != CANCELLED) {
            GePrint(text);
        }
        fail(text);
        return false;
    }
}
