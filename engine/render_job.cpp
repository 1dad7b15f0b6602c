// SPDX-License-Identifier: MIT
#include "engine/render_job.h"

#include "engine/image_writer.h"
#include "engine/report.h"
#include "engine/scene_loader.h"
#include "engine/session.h"
#include "foundation/file_utils.h"
#include "reading/queue_report.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace engine {

namespace {

using Quenza::u64;

/// The first image is written soon, so that a mistake shows; later ones ever more seldom, up to the scene's
/// own period.
constexpr double FIRST_SAVE = 1.0;

std::string withoutSuffix(const std::string& path) {
    return Quenza::FileUtils::removeExtension(path).toStdString();
}

std::string valueOf(const Options& options, const char* name) {
    std::string value;
    for (const auto& [key, text] : options.switches) {
        if (key == name) {
            value = text;
        }
    }
    return value;
}

Outputs outputsOf(const Options& options) {
    return {valueOf(options, "-o"), valueOf(options, "-qzio"), valueOf(options, "-uexro"),
            valueOf(options, "-texro")};
}

bool anyOf(const Outputs& outputs) {
    return !outputs.png.empty() || !outputs.qzi.empty() || !outputs.untonemapped_exr.empty() ||
           !outputs.tonemapped_exr.empty();
}

/// The kinds of files of `kinds` under another stem; the image alone when there are none.
Outputs underStem(const std::string& stem, const Outputs& kinds) {
    const auto path = [&stem](bool wanted, const char* tail) { return wanted ? stem + tail : std::string(); };
    return {path(!kinds.png.empty() || !anyOf(kinds), ".png"), path(!kinds.qzi.empty(), ".qzi"),
            path(!kinds.untonemapped_exr.empty(), "_untonemapped.exr"),
            path(!kinds.tonemapped_exr.empty(), "_tonemapped.exr")};
}

/// A launch without output switches leaves the choice to the settings; there is always an image.
Outputs besideScene(const std::string& scene_path, const Quenza::SceneNodeRenderSettings& settings) {
    const std::string stem = withoutSuffix(scene_path);
    Outputs outputs;
    outputs.png = stem + ".png";
    outputs.qzi = settings.getBool("save_qzi") ? stem + ".qzi" : "";
    outputs.untonemapped_exr = settings.getBool("save_untonemapped_exr") ? stem + "_untonemapped.exr" : "";
    outputs.tonemapped_exr = settings.getBool("save_tonemapped_exr") ? stem + "_tonemapped.exr" : "";
    return outputs;
}

SessionOptions sessionOptions(const RenderJob& job, const Quenza::SceneNodeRenderSettings& settings,
                              const std::string& data_folder) {
    SessionOptions options;
    options.seed = job.seed;
    options.data_folder = data_folder;
    options.halt_time = job.halt_time >= 0 ? job.halt_time : settings.getDouble("halt_time");
    options.halt_samples =
        job.halt_samples >= 0 ? job.halt_samples : settings.getDouble("halt_samples_per_pixel");
    if (options.halt_time < 0 && options.halt_samples < 0) {
        options.halt_time = DEFAULT_HALT_TIME;
        options.halt_samples = DEFAULT_HALT_SAMPLES;
    }
    return options;
}

void showProgress(const Progress& progress) {
    std::printf("%.1f s, %.2f samples per pixel", progress.seconds, progress.samples_per_pixel);
    if (progress.done) {
        std::printf(", done\n");
    } else if (progress.seconds_left >= 0) {
        std::printf(", %.0f s left\n", progress.seconds_left);
    } else {
        std::printf("\n");
    }
    std::fflush(stdout);
}

/// When the image is to be shown and written while it grows.
class Schedule {
public:
    explicit Schedule(double longest) : longest_(std::max(FIRST_SAVE, longest)) {}

    bool isDue(double seconds) {
        if (seconds < next_) {
            return false;
        }
        period_ = std::min(period_ * 2, longest_);
        next_ = seconds + period_;
        return true;
    }

private:
    double longest_;
    double period_ = FIRST_SAVE;
    double next_ = FIRST_SAVE;
};

bool run(RenderSession& session, const Outputs& outputs, const std::atomic<bool>& stop) {
    Schedule saves(session.scene().settings().getDouble("image_save_period"));
    Schedule lines(10);
    std::string fault;
    session.run(stop, [&](const Progress& progress) {
        if (progress.done || lines.isDue(progress.seconds)) {
            showProgress(progress);
        }
        // A save that fails on the way may be made good by the next: another program may hold a file.
        if (progress.done || saves.isDue(progress.seconds)) {
            fault = writeImages(session, outputs);
            if (!fault.empty()) {
                std::fprintf(stderr, "%s\n", fault.c_str());
            }
        }
    });
    return fault.empty();
}

void tell(const RenderSession& session) {
    for (const std::string& notice : session.scene().notices().texts()) {
        std::printf("Note: %s\n", notice.c_str());
    }
    const std::string warning = session.toneMapper().warning();
    if (!warning.empty()) {
        std::printf("Note: %s\n", warning.c_str());
    }
}

} // namespace

std::vector<RenderJob> makeJobs(const Options& options) {
    const u64 seed = parseSeed(valueOf(options, "-seed")).value_or(1);
    const Outputs outputs = outputsOf(options);
    if (!isQueue(options.input)) {
        RenderJob job;
        job.scene_path = options.input;
        job.outputs = outputs;
        job.seed = seed;
        return {job};
    }
    std::vector<RenderJob> jobs;
    for (const Quenza::QueueItem& item : Quenza::summariseQueue(options.input).items) {
        RenderJob job;
        job.scene_path = item.scene_path;
        job.halt_time = item.halt_time;
        job.halt_samples = item.halt_spp;
        job.seed = parseSeed(item.seed).value_or(seed);
        if (!item.output_path.empty()) {
            job.outputs = underStem(item.output_path, outputs);
        } else if (anyOf(outputs)) {
            job.outputs = underStem(withoutSuffix(item.scene_path), outputs);
        }
        jobs.push_back(job);
    }
    return jobs;
}

bool render(const RenderJob& job, const Options& options, const std::string& data_folder,
            const std::atomic<bool>& stop) {
    try {
        const auto root = loadScene(job.scene_path, data_folder, valueOf(options, "--settings"));
        const auto* const settings =
            dynamic_cast<const Quenza::SceneNodeRenderSettings*>(root->getRenderSettingsPointer());
        const Quenza::SceneNodeRenderSettings defaults;
        const Quenza::SceneNodeRenderSettings& chosen = settings ? *settings : defaults;
        RenderSession session(root, Quenza::FileUtils::getDirectory(job.scene_path).toStdString(),
                              sessionOptions(job, chosen, data_folder));
        tell(session);
        const Outputs outputs = anyOf(job.outputs) ? job.outputs : besideScene(job.scene_path, chosen);
        if (!run(session, outputs, stop)) {
            return false;
        }
        for (const std::string& path :
             {outputs.png, outputs.qzi, outputs.untonemapped_exr, outputs.tonemapped_exr}) {
            if (!path.empty()) {
                std::printf("Image: %s\n", path.c_str());
            }
        }
        return true;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "can't render '%s': %s\n", job.scene_path.c_str(), exception.what());
        return false;
    }
}

} // namespace engine
