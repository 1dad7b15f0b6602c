// SPDX-License-Identifier: MIT
#include "headless/preview/material_preview.h"

#include "headless/model/handles.h"
#include "headless/runtime/host.h"
#include "host/preview.h"
#include "host/videopost.h"

namespace headless {

namespace {

BaseBitmap* toHost(Image& image) {
    return reinterpret_cast<BaseBitmap*>(&image);
}

class PreviewThread : public C4DThread {
public:
    PreviewThread(Material& material, PreviewScene& scene, Image& image)
        : material_(material), scene_(scene), image_(image) {}
    // What Main works with is still there when its end is waited for.
    ~PreviewThread() override { End(); }
    PreviewThread(const PreviewThread&) = delete;
    PreviewThread& operator=(const PreviewThread&) = delete;

    const char* GetThreadName() override { return "Material preview"; }
    void Main() override {
        setUpScene();
        const std::unique_ptr<Document> stage = clone(*scene_.document);
        if (!prepare(*stage)) {
            fault_ = "The material \"" + material_.name + "\" can't be shown on the preview scene \"" +
                     scene_.name + "\"";
            return;
        }
        MatPreviewGenerateImage record;
        record.previewDocument = headless::toHost(stage.get());
        record.bitmap = toHost(image_);
        record.thread = Get();
        record.abort = TestBreak() ? 1 : 0;
        const bool isAnswered = material_.message(MATPREVIEW_GENERATE_IMAGE, &record);
        result_ = isAnswered ? record.result : RENDERRESULT_NOMACHINE;
    }

    int32_t result() const { return result_; }
    /// "" when the material was on the scene.
    const std::string& fault() const { return fault_; }

private:
    void setUpScene() {
        if (scene_.isSetUp) {
            return;
        }
        MatPreviewModifyCacheScene record;
        record.previewDocument = headless::toHost(scene_.document.get());
        material_.message(MATPREVIEW_MODIFY_CACHE_SCENE, &record);
        scene_.isSetUp = true;
    }

    bool prepare(const Document& stage) {
        MatPreviewPrepareScene record;
        record.material = headless::toHost(&material_);
        record.previewDocument = headless::toHost(&stage);
        record.sourceDocument = headless::toHost(material_.document());
        return material_.message(MATPREVIEW_PREPARE_SCENE, &record) && record.sceneLoaded != 0;
    }

    Material& material_;
    PreviewScene& scene_;
    Image& image_;
    int32_t result_ = RENDERRESULT_FAILED;
    std::string fault_;
};

} // namespace

bool makesPreviews(Material& material) {
    MatPreviewObjectInfo info;
    return material.pluginData() && material.message(MATPREVIEW_GET_OBJECT_INFO, &info) &&
           info.handlesPreview != 0;
}

int32_t renderPreview(Host& host, Material& material, PreviewScene& scene, const PreviewSize& size,
                      Image& image) {
    constexpr int32_t BYTES = 24;
    if (image.init(size.width, size.height, BYTES) != IMAGERESULT_OK) {
        throw HostError("There is no memory for a preview of " + std::to_string(size.width) + " by " +
                        std::to_string(size.height) + " pixels");
    }
    PreviewThread thread(material, scene, image);
    if (!thread.Start()) {
        throw HostError("The thread of the preview could not be started");
    }
    host.loop().runUntil([&] { return !thread.IsRunning() || host.wasInterrupted(); });
    thread.End();
    if (!thread.fault().empty()) {
        throw HostError(thread.fault());
    }
    return host.wasInterrupted() ? int32_t{RENDERRESULT_USERBREAK} : thread.result();
}

} // namespace headless
