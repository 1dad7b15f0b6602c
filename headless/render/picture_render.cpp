// SPDX-License-Identifier: MIT
#include "headless/render/picture_render.h"

#include <utility>

#include "headless/runtime/host.h"

namespace headless {

namespace {

std::unique_ptr<Document> copyOfOpenDocument(const Host& host) {
    if (!host.document() || !host.document()->activeRenderData()) {
        throw HostError("There is no document to render");
    }
    return clone(*host.document());
}

VideoPost& engineOf(const Document& document) {
    const int32_t engine = document.activeRenderData()->data.GetLong(RDATA_RENDERENGINE);
    VideoPost* const videoPost = renderingVideoPost(document, engine);
    if (!videoPost) {
        throw HostError("The document can't be rendered");
    }
    return *videoPost;
}

} // namespace

class PictureRender::RenderThread : public C4DThread {
public:
    RenderThread(Document& document, RenderImage& image, const PictureSettings& settings)
        : document_(document), videoPost_(engineOf(document)), image_(image), settings_(settings) {}

    void Main() override {
        const int32_t flags = settings_.isInteractive ? RENDERFLAGS_IRR : RENDERFLAGS_EXTERNAL;
        result = renderDocument(document_, videoPost_, image_, settings_.region, flags, Get());
    }
    const char* GetThreadName() override { return "Picture Viewer"; }

    /// A thread that ends before its time leaves the failure.
    int32_t result = RENDERRESULT_FAILED;

private:
    Document& document_;
    VideoPost& videoPost_;
    RenderImage& image_;
    const PictureSettings settings_;
};

PictureRender::PictureRender(Host& host, const PictureSettings& settings, std::function<void()> onChanged)
    : host_(host), document_(copyOfOpenDocument(host)),
      image_(document_->activeRenderData()->data.GetLong(RDATA_XRES),
             document_->activeRenderData()->data.GetLong(RDATA_YRES), std::move(onChanged)),
      thread_(std::make_unique<RenderThread>(*document_, image_, settings)) {
    host_.beforeClose(this, [this] { close(); });
}

PictureRender::~PictureRender() {
    host_.forgetClose(this);
    thread_->End(true);
}

void PictureRender::start() {
    if (!document_ || !thread_->Start()) {
        throw HostError("The render could not be started");
    }
}

void PictureRender::stop() {
    thread_->End(false);
}

bool PictureRender::isRunning() const {
    return thread_->IsRunning();
}

int32_t PictureRender::result() const {
    return thread_->result;
}

void PictureRender::close() {
    wasClosed_ = isRunning();
    thread_->End(true);
    document_.reset();
}

} // namespace headless
