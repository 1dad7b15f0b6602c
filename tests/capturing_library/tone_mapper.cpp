// SPDX-License-Identifier: MIT
#include "capturing_library/library_object.h"
#include "capturing_library/scene_watch.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"

#include <algorithm>
#include <cmath>

namespace capture {

namespace {

using Quenza::FloatBuffer;
using Quenza::i32;
using Quenza::Ref;
using Quenza::RenderBuffer;
using Quenza::SceneNode;
using Quenza::SceneNodeRenderSettings;
using Quenza::SceneNodeTonemapping;
using Quenza::String;
using Quenza::UInt8Buffer;
using Quenza::SDK::InterfaceBase;
namespace Binding = Quenza::SDK::ToneMapperInterface;

class ToneMapper : public LibraryObject<ToneMapper> {
public:
    static constexpr const char* INTERFACE = Quenza::SDK::TONE_MAPPER_INTERFACE;
    static const Quenza::SDK::Procedure* operations();

    ~ToneMapper() {
        captureState().wakeRuns(closing_);
        if (thread_.joinable()) {
            thread_.join();
        }
    }

    void start();

    Ref<RenderBuffer> buffer;
    Ref<UInt8Buffer> bytes;
    Ref<FloatBuffer> floats;
    TakenState state;
    std::string updateError;
    std::atomic<bool> finished = true;
    /// The run's until it has finished.
    std::string error;

private:
    void run(const TakenState& taken);
    void writePixel(const TakenState& taken, uint32_t x, uint32_t y);

    std::thread thread_;
    bool closing_ = false;
};

void ToneMapper::start() {
    if (thread_.joinable()) {
        thread_.join();
    }
    finished = false;
    captureState().threadStarted();
    thread_ = std::thread([this, taken = state] {
        captureState().waitWhileHeld(closing_);
        error = captureState().toneMappingError();
        if (error.empty()) {
            run(taken);
        }
        captureState().threadEnded();
        finished = true;
    });
}

void ToneMapper::run(const TakenState& taken) {
    const Quenza::Lock lock(buffer->mutex);
    const uint32_t size = bytes->bytesPerPixel() == 4 ? 4 : 3;
    if (bytes->getWidth() != buffer->getWidth() || bytes->getHeight() != buffer->getHeight() ||
        bytes->bytesPerPixel() != size) {
        bytes->resize(buffer->getWidth(), buffer->getHeight(), size);
    }
    for (uint32_t y = 0; y < buffer->getHeight(); ++y) {
        for (uint32_t x = 0; x < buffer->getWidth(); ++x) {
            writePixel(taken, x, y);
        }
    }
}

double exposure(const TakenState& taken) {
    switch (taken.method) {
    case SceneNodeTonemapping::LINEAR:
        return taken.scale;
    case SceneNodeTonemapping::REINHARD:
        return taken.postScale;
    case SceneNodeTonemapping::CAMERA:
        return std::exp2(taken.evAdjust);
    default:
        return 1;
    }
}

void ToneMapper::writePixel(const TakenState& taken, uint32_t x, uint32_t y) {
    unsigned char* const pixel = bytes->row(y) + uint64_t(x) * bytes->bytesPerPixel();
    for (uint32_t channel = 0; channel < 3; ++channel) {
        double sum = 0;
        for (uint32_t layer = 0; layer < buffer->layers.size(); ++layer) {
            const double gain = layer < taken.gains.size() ? taken.gains[layer][channel] : 1;
            sum += gain * double(buffer->layers[layer].pixel(x, y)[channel]);
        }
        const double value = std::clamp(sum * exposure(taken), 0.0, 1.0);
        pixel[channel] = static_cast<unsigned char>(std::lround(255 * value));
        if (floats && !floats->values().empty()) {
            floats->pixel(x, y)[channel] = float(value);
        }
    }
    if (bytes->bytesPerPixel() == 4) {
        pixel[3] = 255;
    }
}

TakenState stateOf(const SceneNodeTonemapping* tonemapping, const SceneNodeRenderSettings& settings) {
    TakenState state;
    if (tonemapping) {
        state.method = tonemapping->tonemap_type;
        state.scale = tonemapping->scale;
        state.preScale = tonemapping->pre_scale;
        state.postScale = tonemapping->post_scale;
        state.burn = tonemapping->burn;
        state.filmIso = tonemapping->film_iso;
        state.evAdjust = tonemapping->ev_adjust;
        state.responseFunctionPath = tonemapping->response_function_path.toStdString();
    }
    if (settings.white_point) {
        state.whiteX = settings.white_point->x;
        state.whiteY = settings.white_point->y;
    }
    for (const Ref<Quenza::LayerSetting>& layer : settings.layer_settings) {
        const Quenza::LayerSetting values = layer ? Quenza::LayerSetting(*layer) : Quenza::LayerSetting();
        state.gains.push_back(
            {values.gain * values.xyz.x, values.gain * values.xyz.y, values.gain * values.xyz.z});
    }
    return state;
}

i32 setUp(InterfaceBase* object, const String& dll_directory, const String& appdata_directory,
          const Ref<RenderBuffer>& buffer, float gamma, const Ref<UInt8Buffer>& bytes,
          const Ref<FloatBuffer>& floats, String& error) {
    const Entry<ToneMapper> mapper(object, "setUp");
    captureState().wasSetUp({gamma, buffer->getWidth(), buffer->getHeight(),
                             static_cast<uint32_t>(buffer->layers.size()), bytes->bytesPerPixel(),
                             dll_directory.toStdString(), appdata_directory.toStdString()});
    std::string reason;
    if (const i32 code = captureState().outcome(mapper.name, &reason); code != 0) {
        error = reason;
        return code;
    }
    mapper->buffer = buffer;
    mapper->bytes = bytes;
    mapper->floats = floats;
    return 0;
}

i32 update(InterfaceBase* object, SceneNode* tonemapping, SceneNode* camera, SceneNode* settings) {
    const Entry<ToneMapper> mapper(object, "update");
    const auto* const renderSettings = dynamic_cast<const SceneNodeRenderSettings*>(settings);
    if (!renderSettings) {
        mapper->updateError = "No renderer settings node in scene.";
        return -1;
    }
    if (isMutexFree(settings->getRoot())) {
        captureState().violation(mapper.name + " without the root's mutex");
    }
    mapper->updateError.clear();
    if (const i32 code = captureState().outcome(mapper.name, &mapper->updateError); code != 0) {
        return code;
    }
    mapper->state = stateOf(dynamic_cast<const SceneNodeTonemapping*>(tonemapping), *renderSettings);
    mapper->state.camera = camera ? camera->toXMLString().toStdString() : "";
    captureState().took(mapper->state);
    return 0;
}

void startTonemapping(InterfaceBase* object) {
    const Entry<ToneMapper> mapper(object, "startTonemapping");
    if (!mapper->finished || !mapper->buffer) {
        captureState().violation(mapper->buffer ? "a tone mapping run during another"
                                                : "a tone mapping run without a set-up");
        return;
    }
    mapper->updateError.clear();
    mapper->start();
}

bool isFinished(InterfaceBase* object) {
    const Entry<ToneMapper> mapper(object, "isFinished");
    return mapper->finished;
}

void getError(InterfaceBase* object, String& text) {
    const Entry<ToneMapper> mapper(object, "getError");
    text = !mapper->updateError.empty() || !mapper->finished ? mapper->updateError : mapper->error;
}

const Quenza::SDK::Procedure* ToneMapper::operations() {
    static const auto table = [] {
        std::array<Quenza::SDK::Procedure, Binding::TABLE_SIZE> made{};
        put(made.data(), Binding::setUp, setUp);
        put(made.data(), Binding::update, update);
        put(made.data(), Binding::startTonemapping, startTonemapping);
        put(made.data(), Binding::isFinished, isFinished);
        put(made.data(), Binding::getError, getError);
        return made;
    }();
    return table.data();
}

} // namespace

InterfaceBase* makeToneMapper() {
    return new ToneMapper;
}

} // namespace capture
