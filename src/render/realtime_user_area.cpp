// SPDX-License-Identifier: MIT
#include "render/realtime_user_area.h"

#include "export/camera_export.h"
#include "export/scene_exporter.h"
#include "export/tonemapping_export.h"
#include "foundation/mutex.h"
#include "host/document.h"
#include "host/general.h"
#include "host/object.h"
#include "render/changed_mark.h"
#include "render/render_job.h"
#include "render/runtime/quenza_context.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_tonemapping.h"
#include "shared/export_context.h"
#include "shared/text.h"
#include "shared/user_folder.h"

#include <exception>

using namespace Quenza;

namespace {

constexpr int32_t FIRST_SIZE = 150;
constexpr int32_t BITMAP_DEPTH = 24;
constexpr int32_t TIMER_MILLISECONDS = 100;
/// Tone mapping takes its time: an image comes at most as often as this.
constexpr uint32_t IMAGE_MILLISECONDS = 1000;
constexpr float GAMMA = 2.2f;
constexpr u32 BYTES_PER_PIXEL = 3;

/// What the export adds to or leaves alone is as in a new node, so that nothing stays of the motion blur or
/// the obstacle map that the camera had before.
void forgetCamera(SceneNodeCamera& node) {
    const Ref<SceneNodeCamera> fresh = new SceneNodeCamera;
    node.obstacle_map_path = fresh->obstacle_map_path;
    node.aperture_shape = fresh->aperture_shape;
    node.keyframes = fresh->keyframes;
    node.up = fresh->up;
    node.forwards = fresh->forwards;
}

} // namespace

RealtimeUserArea::~RealtimeUserArea() {
    stop();
    BaseBitmap::Free(bitmap_);
}

bool RealtimeUserArea::allocateBitmap(int32_t width, int32_t height) {
    if (!bitmap_) {
        bitmap_ = BaseBitmap::Alloc();
    }
    return bitmap_ && bitmap_->Init(width, height, BITMAP_DEPTH) == IMAGERESULT_OK;
}

bool RealtimeUserArea::Init() {
    tonemapPending_ = false;
    lastImageTime_ = 0;
    if (!running_) {
        return allocateBitmap(FIRST_SIZE, FIRST_SIZE);
    }
    // The window was closed over a render, which has gone on, and opens again.
    SetTimer(TIMER_MILLISECONDS);
    return true;
}

bool RealtimeUserArea::GetMinSize(int32_t& width, int32_t& height) {
    width = bitmap_ ? bitmap_->GetBw() : FIRST_SIZE;
    height = bitmap_ ? bitmap_->GetBh() : FIRST_SIZE;
    return true;
}

void RealtimeUserArea::DrawMsg(int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                               const BaseContainer& /*message*/) {
    if (bitmap_) {
        DrawBitmap(bitmap_, 0, 0, 0, 0, bitmap_->GetBw(), bitmap_->GetBh());
        return;
    }
    DrawSetPen(::Vector(0.5f, 0.5f, 0.5f));
    DrawRectangle(x1, y1, x2, y2);
}

void RealtimeUserArea::Timer(const BaseContainer& /*message*/) {
    if (!running_) {
        return;
    }
    if (tonemapPending_) {
        if (renderer_ && root_ && toneMapper_ && !toneMapper_->isFinished()) {
            return;
        }
        drawImage();
        tonemapPending_ = false;
        lastImageTime_ = GeGetMilliSeconds();
    } else if (GeGetMilliSeconds() - lastImageTime_ > IMAGE_MILLISECONDS) {
        update();
        tonemapPending_ = true;
    }
}

void RealtimeUserArea::start() {
    BaseDocument* const document = GetActiveDocument();
    if (!isLibraryLoaded() || !document) {
        return;
    }
    try {
        if (!setUp(document)) {
            return;
        }
        renderer_->startRendering();
    } catch (const std::exception& exception) {
        GePrint(exception.what());
        stop();
        return;
    }
    SetTimer(TIMER_MILLISECONDS);
    running_ = true;
    lastImageTime_ = GeGetMilliSeconds();
}

/// False when the library has refused the scene: what was made until then stays for stop.
bool RealtimeUserArea::setUp(BaseDocument* document) {
    const int32_t width = GetWidth();
    const int32_t height = GetHeight();
    const Filename folder = getUserFolder() + "quickrender";
    // Baked textures go below it.
    if (!GeFExist(folder, true)) {
        GeFCreateDir(folder);
    }
    const Filename path = folder + "quickrender.qzs";
    ExportContext context(document, path, nullptr, currentFrame(document), width, height, false, true, false,
                          false);
    SceneExporter exporter;
    exporter.context = &context;
    root_ = exporter.exportScene();
    if (!root_) {
        return false;
    }
    root_->finalise(toSceneString(path));
    renderer_ = new Renderer(quenzaContext());
    renderBuffer_ = new RenderBuffer(*root_);
    imageBuffer_ = new UInt8Buffer(renderBuffer_->getWidth(), renderBuffer_->getHeight(), BYTES_PER_PIXEL);
    allocateBitmap(width, height);
    toneMapper_ = new ToneMapper(quenzaContext(), renderBuffer_, GAMMA, imageBuffer_, new FloatBuffer);
    // Where the camera stands now is what its first change is told by.
    hasCameraChanged(context.cameraObject);
    const int32_t code = renderer_->initialiseWithScene(root_, renderBuffer_, {"Dummy_scene_path"});
    if (code != 0) {
        GePrint(::String("Renderer failed to initialise(), error code: ") + LongToString(code));
    }
    return code == 0;
}

void RealtimeUserArea::stop() {
    if (renderer_) {
        renderer_->stop();
    }
    renderer_ = nullptr;
    toneMapper_ = nullptr;
    renderBuffer_ = nullptr;
    imageBuffer_ = nullptr;
    root_ = nullptr;
    if (running_) {
        SetTimer(0);
    }
    running_ = false;
    tonemapPending_ = false;
    checksums_.clear();
}

void RealtimeUserArea::update() {
    if (!renderer_ || !toneMapper_ || !root_ || !toneMapper_->isFinished()) {
        return;
    }
    if (!toneMapper_->update(*root_)) {
        GePrint(toHostString(toneMapper_->getError()));
        return;
    }
    toneMapper_->start();
}

void RealtimeUserArea::drawImage() {
    GePrint("drawing image");
    if (!toneMapper_ || !bitmap_) {
        return;
    }
    const bool isDrawn = toneMapper_->withImage([this](const UInt8Buffer& image) {
        const int32_t width = bitmap_->GetBw();
        const int32_t height = bitmap_->GetBh();
        if (u32(width) != image.getWidth() || u32(height) != image.getHeight()) {
            return false;
        }
        for (int32_t y = 0; y < height; ++y) {
            const unsigned char* pixel = image.row(u32(y));
            for (int32_t x = 0; x < width; ++x, pixel += image.bytesPerPixel()) {
                bitmap_->SetPixel(x, y, pixel[0], pixel[1], pixel[2]);
            }
        }
        return true;
    });
    if (isDrawn) {
        Redraw();
    }
}

/// A camera that is seen for the first time counts as unchanged.
bool RealtimeUserArea::hasCameraChanged(BaseObject* camera) {
    if (!camera) {
        return false;
    }
    const uint32_t checksum = camera->GetDirty();
    const auto [known, isNew] = checksums_.emplace(camera, checksum);
    const bool isChanged = !isNew && known->second != checksum;
    known->second = checksum;
    return isChanged;
}

void RealtimeUserArea::onDocumentChanged() {
    if (!renderer_ || !root_) {
        return;
    }
    GePrint("Scanning scene");
    BaseDocument* const document = GetActiveDocument();
    if (!document) {
        return;
    }
    try {
        exportCameraAgain(document);
    } catch (const std::exception& exception) {
        GePrint(exception.what());
    }
}

void RealtimeUserArea::exportCameraAgain(BaseDocument* document) {
    // Of the running image's size and at the frame that is shown: a shifted lens depends on the one, and the
    // keys of motion blur on the other. Without a scene file nothing goes to disk.
    ExportContext context(document, Filename(), nullptr, currentFrame(document),
                          int32_t(renderBuffer_->getWidth()), int32_t(renderBuffer_->getHeight()), false,
                          true, false, false);
    if (!hasCameraChanged(context.cameraObject)) {
        return;
    }
    const Ref<SceneNode> camera = root_->getCamera();
    const Ref<SceneNode> tonemapping = root_->getToneMapping();
    if (!camera || !tonemapping) {
        return;
    }
    {
        Lock lock(root_->getMutex());
        const Ref<SceneNodeCamera> cameraNode = static_cast<SceneNodeCamera*>(camera.getPointer());
        forgetCamera(*cameraNode);
        exportCamera(cameraNode, nullptr, context);
        markAsChanged(*camera);
        exportTonemapping(static_cast<SceneNodeTonemapping*>(tonemapping.getPointer()),
                          context.cameraTagData);
        markAsChanged(*tonemapping);
    }
    renderer_->updateScene(root_);
}
