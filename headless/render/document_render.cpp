// SPDX-License-Identifier: MIT
#include "headless/render/document_render.h"

#include "headless/build/caches.h"
#include "headless/model/handles.h"
#include "headless/runtime/host.h"
#include "host/plugin_data.h"

namespace headless {

namespace {

/// Values of RDATA_RENDERENGINE that name no video post.
enum Engine : int32_t { ENGINE_ANY = 0, ENGINE_STANDARD = 1 };

/// From the outermost to the innermost.
constexpr VideoPostCall PHASES[] = {VIDEOPOSTCALL_RENDER, VIDEOPOSTCALL_INNER, VIDEOPOSTCALL_TILE};

/// For calls in the name of no thread: it never starts, and nothing asks it to end.
class NoThread : public C4DThread {
public:
    void Main() override {}
    const char* GetThreadName() override { return "No thread"; }
};

VideoPostData* renderingOf(const VideoPost& videoPost) {
    return static_cast<VideoPostData*>(videoPost.pluginData());
}

class PhaseWalk {
public:
    PhaseWalk(VideoPost& videoPost, VideoPostStruct& state) : videoPost_(videoPost), state_(state) {}

    int32_t walk() {
        int32_t result = RENDERRESULT_OK;
        size_t opened = 0;
        while (opened < std::size(PHASES) && result == RENDERRESULT_OK) {
            result = execute(PHASES[opened++], true);
        }
        while (opened > 0) {
            const int32_t closing = execute(PHASES[--opened], false);
            result = result == RENDERRESULT_OK ? closing : result;
        }
        return result;
    }

private:
    int32_t execute(VideoPostCall phase, bool opens) {
        state_.vp = phase;
        state_.open = opens;
        try {
            return renderingOf(videoPost_)->Execute(toHost(&videoPost_), &videoPost_.data, &state_);
        } catch (const std::exception& error) {
            Host::current().errors().print("The render ended with an exception: " +
                                           std::string(error.what()));
        } catch (...) {
            Host::current().errors().print("The render ended with an exception");
        }
        return RENDERRESULT_FAILED;
    }

    VideoPost& videoPost_;
    VideoPostStruct& state_;
};

void announceRender(Document& document, VideoPost& videoPost) {
    for (Material* material = document.materials().first(); material; material = material->next) {
        material->message(MSG_RENDER_PREPARE, nullptr);
    }
    videoPost.message(MSG_RENDER_PREPARE, nullptr);
}

} // namespace

VideoPost* renderingVideoPost(const Document& document, int32_t engine) {
    if (engine == ENGINE_STANDARD) {
        Host::current().errors().print(
            "The host's standard renderer isn't there: render with a video post's");
        return nullptr;
    }
    const RenderDataNode* const renderData = document.activeRenderData();
    VideoPost* videoPost = renderData ? renderData->videoPosts().first() : nullptr;
    for (; videoPost; videoPost = videoPost->next) {
        const bool isMeant = engine == ENGINE_ANY || videoPost->type() == engine;
        if (isMeant && (videoPost->info & BIT_VPDISABLED) == 0 && renderingOf(*videoPost)) {
            return videoPost;
        }
    }
    Host::current().errors().print("The document has no enabled video post that renders" +
                                   (engine == ENGINE_ANY ? "" : " of type " + std::to_string(engine)));
    return nullptr;
}

int32_t renderDocument(Document& document, VideoPost& videoPost, RenderImage& image,
                       const std::optional<RenderRegion>& region, int32_t flags, BaseThread* thread) {
    NoThread noThread;
    RenderCall call{&image, region};
    VideoPostStruct state;
    state.doc = toHost(&document);
    state.render = toHost(&call);
    state.crop = region.has_value();
    state.renderflags = flags;
    state.thread = thread ? thread : noThread.Get();
    if (!buildCaches(document, state.thread)) {
        return RENDERRESULT_USERBREAK;
    }
    announceRender(document, videoPost);
    return PhaseWalk(videoPost, state).walk();
}

} // namespace headless
