// SPDX-License-Identifier: MIT
#include "engine/library/tone_mapper_interface.h"

#include "engine/camera.h"
#include "engine/library/display_image.h"
#include "engine/library/edition.h"
#include "engine/library/failure.h"
#include "engine/library/interface_table.h"
#include "engine/library/published_render.h"
#include "engine/tonemap.h"
#include "foundation/exceptions.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace engine::library {

namespace {

using Quenza::FloatBuffer;
using Quenza::i32;
using Quenza::Ref;
using Quenza::RenderBuffer;
using Quenza::SceneNode;
using Quenza::SceneNodeCamera;
using Quenza::SceneNodeRenderSettings;
using Quenza::SceneNodeTonemapping;
using Quenza::String;
using Quenza::UInt8Buffer;
using Quenza::SDK::InterfaceBase;
namespace Interface = Quenza::SDK::ToneMapperInterface;

constexpr i32 SUCCESS = 0;
constexpr i32 FAILURE = 1;

/// What the nodes said at the last update; copies, which nobody changes.
struct Values {
    Ref<SceneNodeTonemapping> tonemapping;
    Ref<SceneNodeRenderSettings> settings;
    std::optional<Lens> lens;
};

struct ToneMapperObject : InterfaceBase {
    std::string data_folder;
    Ref<RenderBuffer> buffer;
    std::optional<DisplayCurve> curve;
    Ref<UInt8Buffer> bytes;
    Ref<FloatBuffer> floats;

    std::mutex mutex; ///< Guards the two below.
    Values values;
    std::string error;

    std::atomic<bool> finished{true};
    std::thread run;

    ~ToneMapperObject() {
        if (run.joinable()) {
            run.join();
        }
    }
    ToneMapperObject() = default;
    ToneMapperObject(const ToneMapperObject&) = delete;
    ToneMapperObject& operator=(const ToneMapperObject&) = delete;

    void setError(const std::string& text) {
        const std::lock_guard lock(mutex);
        error = text;
    }
};

ToneMapperObject& self(InterfaceBase* object) {
    return *static_cast<ToneMapperObject*>(object);
}

template <class T>
Ref<T> copyOf(const SceneNode* node) {
    const auto* const typed = dynamic_cast<const T*>(node);
    return typed ? Ref<T>(static_cast<T*>(typed->clone().getPointer())) : Ref<T>();
}

i32 setUp(InterfaceBase* object, const String& dll_directory, const String& /*appdata_directory*/,
          const Ref<RenderBuffer>& buffer, float gamma, const Ref<UInt8Buffer>& bytes,
          const Ref<FloatBuffer>& floats, String& error) {
    const std::string failure = failureOf([&] {
        ToneMapperObject& mapper = self(object);
        if (!mapper.finished) {
            throw Quenza::QuenzaException("The tone mapper is at work.");
        }
        if (!buffer || !bytes) {
            throw Quenza::QuenzaException(
                "There is no image to tone map, or no buffer for what comes of it.");
        }
        mapper.curve = DisplayCurve(gamma);
        mapper.data_folder = dll_directory.toStdString();
        mapper.buffer = buffer;
        mapper.bytes = bytes;
        mapper.floats = floats;
    });
    if (failure.empty()) {
        return SUCCESS;
    }
    error = failure;
    return FAILURE;
}

Values valuesOf(const SceneNode* tonemapping, const SceneNode* camera, const SceneNode* settings) {
    Values values;
    values.settings = copyOf<SceneNodeRenderSettings>(settings);
    if (!values.settings) {
        throw Quenza::QuenzaException("Tone mapping needs the settings of the scene.");
    }
    if (isRealtimeEdition()) {
        values.settings->layer_settings.clear();
    }
    values.tonemapping = copyOf<SceneNodeTonemapping>(tonemapping);
    if (const auto* const seen = dynamic_cast<const SceneNodeCamera*>(camera)) {
        values.lens.emplace(*seen);
    }
    return values;
}

i32 update(InterfaceBase* object, SceneNode* tonemapping, SceneNode* camera, SceneNode* settings) {
    const std::string failure = failureOf([&] {
        Values values = valuesOf(tonemapping, camera, settings);
        const std::lock_guard lock(self(object).mutex);
        std::swap(self(object).values, values);
    });
    if (failure.empty()) {
        return SUCCESS;
    }
    self(object).setError(failure);
    return FAILURE;
}

void toneMap(ToneMapperObject& mapper) {
    Values values;
    {
        const std::lock_guard lock(mapper.mutex);
        values = mapper.values;
    }
    if (!mapper.curve || !values.settings) {
        throw Quenza::QuenzaException("The tone mapper hasn't been set up.");
    }
    const Snapshot snapshot = takeSnapshot(*mapper.buffer);
    double exposure = 0;
    if (values.lens) {
        exposure = values.lens->exposure(snapshot.focus_distance >= 0 ? double(snapshot.focus_distance)
                                                                      : values.lens->focus_distance);
    }
    const ToneMapper tone_mapper(values.tonemapping.getPointer(), *values.settings, exposure,
                                 mapper.data_folder);
    if (!tone_mapper.warning().empty()) {
        informUserOf(*mapper.buffer, tone_mapper.warning());
    }
    const FloatImage display = tone_mapper.display(snapshot.layers);
    writeBytes(display, *mapper.curve, *mapper.bytes);
    if (mapper.floats) {
        writeFloats(display, *mapper.floats);
    }
}

void startTonemapping(InterfaceBase* object) {
    ToneMapperObject& mapper = self(object);
    if (!mapper.finished) {
        return;
    }
    const std::string failure = failureOf([&mapper] {
        if (mapper.run.joinable()) {
            mapper.run.join();
        }
        mapper.setError("");
        mapper.finished = false;
        mapper.run = std::thread([&mapper] {
            mapper.setError(failureOf([&mapper] { toneMap(mapper); }));
            mapper.finished = true;
        });
    });
    if (!failure.empty()) {
        mapper.setError(failure);
        mapper.finished = true;
    }
}

bool isFinished(InterfaceBase* object) {
    return self(object).finished;
}

void getError(InterfaceBase* object, String& text) {
    const std::lock_guard lock(self(object).mutex);
    text = self(object).error;
}

auto makeTable() {
    return InterfaceTable<Quenza::SDK::TONE_MAPPER_INTERFACE, Interface::TABLE_SIZE>()
        .set(Interface::setUp, &setUp)
        .set(Interface::update, &update)
        .set(Interface::startTonemapping, &startTonemapping)
        .set(Interface::isFinished, &isFinished)
        .set(Interface::getError, &getError);
}

} // namespace

InterfaceBase* makeToneMapper() {
    static const auto table = makeTable();
    auto* const mapper = new ToneMapperObject;
    mapper->table = table.entries();
    mapper->destroy = &destroyObject<ToneMapperObject>;
    return mapper;
}

} // namespace engine::library
