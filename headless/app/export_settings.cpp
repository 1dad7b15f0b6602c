// SPDX-License-Identifier: MIT
#include "headless/app/export_settings.h"

#include <charconv>

#include "foundation/native_path.h"
#include "headless/app/arguments.h"
#include "headless/app/parameter_setting.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/files.h"
#include "headless/runtime/host.h"

namespace headless {

namespace {

enum RenderSettingsParameter : int32_t {
    RS_EXPORT_FILE = 1393,
    RS_EXPORT_NEXT_TO_DOC = 1394,
    RS_EXPORT_TO_FILE = 1408,
    RS_ANIMATION = 1420,
};

/// Reads a number at the front of `text` and takes it off.
std::optional<int32_t> takeNumber(std::string_view& text) {
    int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return number;
}

} // namespace

VideoPost& requireRenderSettings(Document& document) {
    if (!document.activeRenderData()) {
        document.setActiveRenderData(document.insertRenderData(std::make_unique<RenderDataNode>(), nullptr));
    }
    RenderDataNode& renderData = *document.activeRenderData();
    VideoPost* disabled = nullptr;
    for (VideoPost* videoPost = renderData.videoPosts().first(); videoPost; videoPost = videoPost->next) {
        if (videoPost->type() != RENDER_SETTINGS) {
            continue;
        }
        if ((videoPost->info & BIT_VPDISABLED) == 0) {
            return *videoPost;
        }
        disabled = disabled ? disabled : videoPost;
    }
    if (disabled) {
        disabled->info &= ~BIT_VPDISABLED;
        return *disabled;
    }
    std::unique_ptr<VideoPost> made = createVideoPost(RENDER_SETTINGS);
    if (!made) {
        throw HostError("The plug-in has no render settings");
    }
    return renderData.appendVideoPost(std::move(made));
}

void applyRenderSettings(Host& host, const std::vector<std::string>& settings) {
    for (const std::string& setting : settings) {
        VideoPost& videoPost = requireRenderSettings(*host.document());
        const resources::Description* const description = host.descriptionOf(RENDER_SETTINGS);
        if (!description) {
            throw HostError("The parameters of the render settings can't be looked up");
        }
        applySetting(*toHost(&videoPost), *description, setting);
    }
}

OutputFolder exportTo(VideoPost& settings, const std::string& file) {
    std::filesystem::path path = std::filesystem::absolute(Quenza::nativePath(file)).lexically_normal();
    if (!path.has_filename() || files::exists(Filename(String(Quenza::utf8Path(path))), true)) {
        throw UsageError("--to needs a file, not the folder " + file);
    }
    if (!path.has_extension()) {
        path += ".qzs";
    }
    if (path.extension() != ".qzs") {
        throw UsageError("--to writes a scene: " + file + " should end with .qzs");
    }
    OutputFolder folder(path.parent_path());
    settings.setParameter(RS_EXPORT_TO_FILE, GeData(true));
    settings.setParameter(RS_EXPORT_NEXT_TO_DOC, GeData(false));
    settings.setParameter(RS_EXPORT_FILE, GeData(Filename(String(Quenza::utf8Path(path)))));
    return folder;
}

void exportFrames(Document& document, VideoPost& settings, std::pair<int32_t, int32_t> frames) {
    BaseContainer& range = document.activeRenderData()->data;
    range.SetLong(RDATA_FRAMESEQUENCE, RDATA_FRAMESEQUENCE_MANUAL);
    range.SetTime(RDATA_FRAMEFROM, BaseTime(frames.first, document.fps()));
    range.SetTime(RDATA_FRAMETO, BaseTime(frames.second, document.fps()));
    settings.setParameter(RS_ANIMATION, GeData(true));
}

void exportFrame(Document& document, int32_t frame) {
    // Render settings aren't made for this: they would bring their defaults along.
    const RenderDataNode* const renderData = document.activeRenderData();
    VideoPost* videoPost = renderData ? renderData->videoPosts().first() : nullptr;
    for (; videoPost; videoPost = videoPost->next) {
        if (videoPost->type() == RENDER_SETTINGS) {
            videoPost->setParameter(RS_ANIMATION, GeData(false));
        }
    }
    document.time = BaseTime(frame, document.fps());
    toHost(&document)->AnimateDocument(nullptr, true);
}

int32_t parseFrame(const std::string& text) {
    std::string_view rest = text;
    const std::optional<int32_t> frame = takeNumber(rest);
    if (!frame || !rest.empty()) {
        throw UsageError("\"" + text + "\" is no frame number");
    }
    return *frame;
}

std::pair<int32_t, int32_t> parseFrameRange(const std::string& text) {
    std::string_view rest = text;
    const std::optional<int32_t> first = takeNumber(rest);
    const bool hasDash = !rest.empty() && rest.front() == '-';
    rest.remove_prefix(hasDash ? 1 : 0);
    const std::optional<int32_t> last = hasDash ? takeNumber(rest) : std::nullopt;
    if (!first || !last || !rest.empty()) {
        throw UsageError("\"" + text + "\" is no range of frames: it reads 10-20");
    }
    if (*last < *first) {
        throw UsageError("The frames " + text + " end before they begin");
    }
    return {*first, *last};
}

} // namespace headless
