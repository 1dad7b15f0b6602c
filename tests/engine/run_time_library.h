// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"
#include "foundation/image_buffers.h"
#include "foundation/mutex.h"
#include "scene/scene_node_root.h"
#include "sdk/binding.h"
#include "sdk/render_buffer.h"
#include "support/built_files.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace RenderCall = Quenza::SDK::RendererInterface;
namespace ToneCall = Quenza::SDK::ToneMapperInterface;

/// The built run-time library, bound by names and positions alone, as the plug-in does it.
class RunTimeLibrary {
public:
    explicit RunTimeLibrary(const std::string& path) : library_(path) {
        create = symbol<Quenza::SDK::CreateInstance>(Quenza::SDK::CREATE_INSTANCE);
        init = symbol<Quenza::SDK::GlobalLibraryInit>(Quenza::SDK::GLOBAL_LIBRARY_INIT);
        shutdown = symbol<Quenza::SDK::GlobalLibraryShutdown>(Quenza::SDK::GLOBAL_LIBRARY_SHUTDOWN);
    }
    RunTimeLibrary(const RunTimeLibrary&) = delete;
    RunTimeLibrary& operator=(const RunTimeLibrary&) = delete;

    Quenza::SDK::CreateInstance create = nullptr;
    Quenza::SDK::GlobalLibraryInit init = nullptr;
    Quenza::SDK::GlobalLibraryShutdown shutdown = nullptr;

private:
    template <class T>
    T symbol(const char* name) {
        const T found = library_.find<T>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    const Quenza::LoadedLibrary library_;
};

struct DestroyObject {
    void operator()(Quenza::SDK::InterfaceBase* object) const {
        EXPECT_EQ(object->ref_count, 1);
        object->destroy(object);
    }
};
using LibraryObject = std::unique_ptr<Quenza::SDK::InterfaceBase, DestroyObject>;

/// Waits for what another thread will bring about; gives up when it's long past any doubt.
template <class Condition>
bool waitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

/// A "QuenzaInterface" with the messages that it has told.
class TestRenderer {
public:
    /// Calls an operation of the table: `call(RenderCall::pause)`.
    template <class Signature, class... Arguments>
    auto call(const Quenza::SDK::Operation<Signature>& operation, const Arguments&... arguments) const {
        return operation(object_.get(), arguments...);
    }
    explicit TestRenderer(const RunTimeLibrary& library) {
        Quenza::SDK::InterfaceBase* made = nullptr;
        EXPECT_EQ(library.create(Quenza::SDK::RENDERER_INTERFACE, made), 0);
        object_.reset(made);
        EXPECT_EQ(call(RenderCall::initialise, Quenza::String("/nowhere"), Quenza::String("/nowhere")), 0);
    }

    Quenza::i32 open(const Quenza::Ref<Quenza::SceneNodeRoot>& root,
                     const Quenza::Ref<Quenza::RenderBuffer>& buffer,
                     const Quenza::Vector<Quenza::String>& arguments = {"scene.qzs", "-seed", "5"}) const {
        return RenderCall::initialiseWithScene(object_.get(), root, buffer, arguments);
    }
    double samples() const { return call(RenderCall::getSamplesPerPixel); }
    bool renderTo(double wanted) const {
        return waitUntil([&] { return samples() >= wanted; });
    }
    /// "0 <text>" and "1 <text>" for information and errors.
    std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        Quenza::Vector<Quenza::SDK::InterfaceBase*> unused;
        RenderCall::getMessages(object_.get(), unused);
        while (!call(RenderCall::messagesEmpty)) {
            const LibraryObject message(call(RenderCall::nextMessage));
            Quenza::String text;
            Quenza::SDK::Message::getText(message.get(), text);
            texts.push_back(std::to_string(Quenza::SDK::Message::getType(message.get())) + " " +
                            text.toStdString());
        }
        EXPECT_EQ(call(RenderCall::nextMessage), nullptr);
        return texts;
    }

private:
    LibraryObject object_;
};

/// A "ToneMapperDLLAPI" on the buffer of a render.
class TestToneMapper {
public:
    TestToneMapper(const RunTimeLibrary& library, const Quenza::Ref<Quenza::RenderBuffer>& buffer)
        : bytes(new Quenza::UInt8Buffer), floats(new Quenza::FloatBuffer(1, 1, 3)) {
        Quenza::SDK::InterfaceBase* made = nullptr;
        EXPECT_EQ(library.create(Quenza::SDK::TONE_MAPPER_INTERFACE, made), 0);
        object.reset(made);
        Quenza::String error;
        const Quenza::String folder("/nowhere");
        EXPECT_EQ(ToneCall::setUp(made, folder, folder, buffer, 2.2f, bytes, floats, error), 0)
            << error.toStdString();
    }
    Quenza::i32 update(Quenza::SceneNodeRoot& root) const {
        const Quenza::Lock lock(root.getMutex());
        return ToneCall::update(object.get(), root.getToneMappingPointer(), root.getCameraPointer(),
                                root.getRenderSettingsPointer());
    }
    /// The image, from 0 to 1 as it's encoded for the display.
    engine::FloatImage run(Quenza::SceneNodeRoot& root) const {
        EXPECT_EQ(update(root), 0);
        ToneCall::startTonemapping(object.get());
        EXPECT_TRUE(waitUntil([this] { return ToneCall::isFinished(object.get()); }));
        EXPECT_EQ(error(), "");
        engine::FloatImage image(bytes->getWidth(), bytes->getHeight());
        std::transform(bytes->bytes().begin(), bytes->bytes().end(), image.rgb.begin(),
                       [](unsigned char byte) { return float(byte) / 255.0f; });
        return image;
    }
    std::string error() const {
        Quenza::String text;
        ToneCall::getError(object.get(), text);
        return text.toStdString();
    }

    Quenza::Ref<Quenza::UInt8Buffer> bytes;
    Quenza::Ref<Quenza::FloatBuffer> floats;
    LibraryObject object; ///< Goes first.
};
