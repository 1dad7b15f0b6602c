// SPDX-License-Identifier: MIT
#include "capturing_library/library_object.h"
#include "capturing_library/scene_watch.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace capture {

namespace {

using Quenza::i32;
using Quenza::Ref;
using Quenza::RenderBuffer;
using Quenza::SceneNodeRoot;
using Quenza::String;
using Quenza::Vector;
using Quenza::SDK::InterfaceBase;
namespace Binding = Quenza::SDK::RendererInterface;

/// The library's thread holds the root's mutex that long, and leaves it free that long.
constexpr std::chrono::milliseconds HOLD{4};
constexpr std::chrono::milliseconds RELEASE{1};

class LogLine : public LibraryObject<LogLine> {
public:
    static constexpr const char* INTERFACE = "Message";
    static const Quenza::SDK::Procedure* operations();

    explicit LogLine(CaptureState::Message said) : message(std::move(said)) {}

    const CaptureState::Message message;
};

i32 getType(InterfaceBase* object) {
    const Entry<LogLine> line(object, "getType");
    return line->message.type;
}

void getText(InterfaceBase* object, String& text) {
    const Entry<LogLine> line(object, "getText");
    text = line->message.text;
}

const Quenza::SDK::Procedure* LogLine::operations() {
    static const auto table = [] {
        std::array<Quenza::SDK::Procedure, Quenza::SDK::Message::TABLE_SIZE> made{};
        put(made.data(), Quenza::SDK::Message::getType, getType);
        put(made.data(), Quenza::SDK::Message::getText, getText);
        return made;
    }();
    return table.data();
}

class Renderer : public LibraryObject<Renderer> {
public:
    static constexpr const char* INTERFACE = Quenza::SDK::RENDERER_INTERFACE;
    static const Quenza::SDK::Procedure* operations();

    ~Renderer() { stop(); }

    void takeScene(const Ref<SceneNodeRoot>& root, const Ref<RenderBuffer>& renderBuffer);
    void lookAtScene();
    void start();
    void stop();

    bool hasScene() const { return watch_ != nullptr; }

    bool started = false;
    std::deque<CaptureState::Message> queue;

private:
    void run();
    void watchScene();
    bool stopsWithin(std::chrono::milliseconds time);

    Ref<RenderBuffer> buffer_;
    std::unique_ptr<SceneWatch> watch_;
    /// Guards what follows; taken after the root's mutex.
    std::mutex mutex_;
    std::condition_variable stopAsked_;
    bool stops_ = false;
    std::thread thread_;
};

void Renderer::takeScene(const Ref<SceneNodeRoot>& root, const Ref<RenderBuffer>& renderBuffer) {
    buffer_ = renderBuffer;
    watch_ = std::make_unique<SceneWatch>(root);
    lookAtScene();
}

void Renderer::lookAtScene() {
    const Quenza::Lock lock(watch_->root().getMutex());
    watch_->look(false);
}

void Renderer::start() {
    {
        const LayerColour colour = captureState().layerColour();
        const Quenza::Lock lock(buffer_->mutex);
        for (uint32_t layer = 0; layer < buffer_->layers.size(); ++layer) {
            for (uint32_t y = 0; y < buffer_->getHeight(); ++y) {
                for (uint32_t x = 0; x < buffer_->getWidth(); ++x) {
                    const std::array<float, 3> value = colour(layer, x, y);
                    std::copy(value.begin(), value.end(), buffer_->layers[layer].pixel(x, y));
                }
            }
        }
    }
    started = true;
    captureState().threadStarted();
    thread_ = std::thread([this] { run(); });
}

void Renderer::stop() {
    {
        const std::lock_guard lock(mutex_);
        stops_ = true;
        stopAsked_.notify_all();
    }
    if (thread_.joinable()) {
        thread_.join();
    }
}

void Renderer::run() {
    try {
        watchScene();
    } catch (const std::exception& exception) {
        captureState().log(Quenza::SDK::Message::TYPE_ERROR, exception.what());
    }
    captureState().threadEnded();
}

/// A renderer's thread that reads the scene under the mutex most of the time, so that a change without it is
/// seen.
void Renderer::watchScene() {
    while (!stopsWithin(RELEASE)) {
        if (const auto death = captureState().takeDeath()) {
            throw std::runtime_error(*death);
        }
        // It never waits for the mutex: the caller of `stop` may hold it.
        Quenza::Mutex& sceneMutex = watch_->root().getMutex();
        if (!sceneMutex.tryLock()) {
            continue;
        }
        watch_->look(false);
        bool stops = false;
        do {
            stops = stopsWithin(HOLD);
        } while (!stops && captureState().keepsScene());
        watch_->look(true);
        sceneMutex.unlock();
    }
}

bool Renderer::stopsWithin(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return stopAsked_.wait_for(lock, time, [this] { return stops_; });
}

i32 initialise(InterfaceBase* object, const String& /*dll_directory*/, const String& /*appdata_directory*/) {
    const Entry<Renderer> renderer(object, "initialise");
    return captureState().outcome(renderer.name);
}

double getSamplesPerPixel(InterfaceBase* object) {
    const Entry<Renderer> renderer(object, "getSamplesPerPixel");
    return renderer->started ? captureState().progress().samplesPerPixel : 0;
}

double getElapsedTime(InterfaceBase* object) {
    const Entry<Renderer> renderer(object, "getElapsedTime");
    return renderer->started ? captureState().progress().elapsedSeconds : 0;
}

i32 initialiseWithScene(InterfaceBase* object, const Ref<SceneNodeRoot>& root,
                        const Ref<RenderBuffer>& buffer, const Vector<String>& arguments) {
    const Entry<Renderer> renderer(object, "initialiseWithScene");
    std::vector<std::string> words;
    for (const String& argument : arguments) {
        words.push_back(argument.toStdString());
    }
    captureState().gotArguments(std::move(words));
    if (renderer->hasScene()) {
        captureState().violation("a second scene for one render");
        return -1;
    }
    std::string reason;
    const i32 code = captureState().outcome(renderer.name, &reason);
    if (code == 0) {
        renderer->takeScene(root, buffer);
    } else if (!reason.empty()) {
        captureState().log(Quenza::SDK::Message::TYPE_ERROR, reason);
    }
    return code;
}

i32 updateScene(InterfaceBase* object, const Ref<SceneNodeRoot>& /*root*/) {
    const Entry<Renderer> renderer(object, "updateScene");
    if (!renderer->hasScene()) {
        captureState().violation("an update without a scene");
        return -1;
    }
    renderer->lookAtScene();
    return captureState().outcome(renderer.name);
}

void startRendering(InterfaceBase* object) {
    const Entry<Renderer> renderer(object, "startRendering");
    if (!renderer->hasScene() || renderer->started) {
        captureState().violation(renderer->started ? "a second start of one render"
                                                   : "a render without a scene");
        return;
    }
    renderer->start();
}

// Any thread may call these, also while another is in an operation.

void pauseRendering(InterfaceBase* /*object*/) {
    captureState().record("QuenzaInterface.pause");
}

void resumeRendering(InterfaceBase* /*object*/) {
    captureState().record("QuenzaInterface.resume");
}

void stopRendering(InterfaceBase* object) {
    captureState().record("QuenzaInterface.stop");
    if (!captureState().ignoresStop()) {
        Renderer::of(object).stop();
    }
}

void getMessages(InterfaceBase* object, Vector<InterfaceBase*>& /*list*/) {
    const Entry<Renderer> renderer(object, "getMessages");
    for (CaptureState::Message& message : captureState().takeLog()) {
        renderer->queue.push_back(std::move(message));
    }
}

bool messagesEmpty(InterfaceBase* object) {
    const Entry<Renderer> renderer(object, "messagesEmpty");
    return renderer->queue.empty();
}

InterfaceBase* nextMessage(InterfaceBase* object) {
    const Entry<Renderer> renderer(object, "nextMessage");
    if (renderer->queue.empty()) {
        return nullptr;
    }
    auto* const line = new LogLine(std::move(renderer->queue.front()));
    renderer->queue.pop_front();
    return line;
}

const Quenza::SDK::Procedure* Renderer::operations() {
    static const auto table = [] {
        std::array<Quenza::SDK::Procedure, Binding::TABLE_SIZE> made{};
        put(made.data(), Binding::initialise, initialise);
        put(made.data(), Binding::getSamplesPerPixel, getSamplesPerPixel);
        put(made.data(), Binding::getElapsedTime, getElapsedTime);
        put(made.data(), Binding::initialiseWithScene, initialiseWithScene);
        put(made.data(), Binding::updateScene, updateScene);
        put(made.data(), Binding::startRendering, startRendering);
        put(made.data(), Binding::pause, pauseRendering);
        put(made.data(), Binding::resume, resumeRendering);
        put(made.data(), Binding::stop, stopRendering);
        put(made.data(), Binding::getMessages, getMessages);
        put(made.data(), Binding::messagesEmpty, messagesEmpty);
        put(made.data(), Binding::nextMessage, nextMessage);
        return made;
    }();
    return table.data();
}

} // namespace

InterfaceBase* makeRenderer() {
    return new Renderer;
}

} // namespace capture
