// SPDX-License-Identifier: MIT
#include "engine/library/renderer_interface.h"

#include "engine/library/arguments.h"
#include "engine/library/edition.h"
#include "engine/library/failure.h"
#include "engine/library/interface_table.h"
#include "engine/library/live_render.h"
#include "engine/library/message_log.h"

#include <atomic>
#include <memory>
#include <string>

namespace engine::library {

namespace {

using Quenza::i32;
using Quenza::Ref;
using Quenza::RenderBuffer;
using Quenza::SceneNodeRoot;
using Quenza::String;
using Quenza::Vector;
using Quenza::SDK::InterfaceBase;
namespace Interface = Quenza::SDK::RendererInterface;

constexpr i32 SUCCESS = 0;
constexpr i32 FAILURE = 1;

struct RendererObject : InterfaceBase {
    MessageLog log;
    String dll_directory;
    std::unique_ptr<LiveRender> render;
    /// The same, for threads that poll or pause while the scene is being built.
    std::atomic<LiveRender*> built{nullptr};
};

RendererObject& self(InterfaceBase* object) {
    return *static_cast<RendererObject*>(object);
}

/// Runs the action; an exception becomes an error message.
i32 attempt(RendererObject& renderer, const std::function<void()>& action) {
    const std::string failure = failureOf(action);
    if (failure.empty()) {
        return SUCCESS;
    }
    renderer.log.fail(failure);
    return FAILURE;
}

i32 initialise(InterfaceBase* object, const String& dll_directory, const String& /*appdata_directory*/) {
    return attempt(self(object), [&] { self(object).dll_directory = dll_directory; });
}

void build(RendererObject& renderer, const Ref<SceneNodeRoot>& root, const Ref<RenderBuffer>& buffer,
           const Vector<String>& words) {
    if (renderer.render) {
        throw Quenza::QuenzaException("The renderer has a scene already.");
    }
    if (!root || !buffer) {
        throw Quenza::QuenzaException("There is no scene, or no buffer for its image.");
    }
    const Arguments arguments = parseArguments(words, renderer.log);
    SessionOptions options;
    options.seed = arguments.seed;
    options.data_folder = renderer.dll_directory.toStdString();
    if (isRealtimeEdition()) {
        options.max_layers = 1;
    }
    renderer.render = std::make_unique<LiveRender>(root, buffer, arguments.scene_path, options, renderer.log);
    renderer.built = renderer.render.get();
}

i32 initialiseWithScene(InterfaceBase* object, const Ref<SceneNodeRoot>& root,
                        const Ref<RenderBuffer>& buffer, const Vector<String>& arguments) {
    return attempt(self(object), [&] { build(self(object), root, buffer, arguments); });
}

i32 updateScene(InterfaceBase* object, const Ref<SceneNodeRoot>& root) {
    return attempt(self(object), [&] {
        LiveRender* const render = self(object).built;
        if (!render || render->root() != root.getPointer()) {
            throw Quenza::QuenzaException("Only the scene that the renderer was given can be updated.");
        }
        render->update();
    });
}

template <void (LiveRender::*ACTION)()>
void control(InterfaceBase* object) {
    if (LiveRender* const render = self(object).built) {
        attempt(self(object), [render] { (render->*ACTION)(); });
    }
}

double getSamplesPerPixel(InterfaceBase* object) {
    const LiveRender* const render = self(object).built;
    return render ? render->samplesPerPixel() : 0.0;
}

double getElapsedTime(InterfaceBase* object) {
    const LiveRender* const render = self(object).built;
    return render ? render->seconds() : 0.0;
}

void getMessages(InterfaceBase* object, Vector<InterfaceBase*>& /*list*/) {
    self(object).log.collect();
}

bool messagesEmpty(InterfaceBase* object) {
    return self(object).log.isQueueEmpty();
}

InterfaceBase* nextMessage(InterfaceBase* object) {
    return self(object).log.next();
}

auto makeTable() {
    return InterfaceTable<Quenza::SDK::RENDERER_INTERFACE, Interface::TABLE_SIZE>()
        .set(Interface::initialise, &initialise)
        .set(Interface::getSamplesPerPixel, &getSamplesPerPixel)
        .set(Interface::getElapsedTime, &getElapsedTime)
        .set(Interface::initialiseWithScene, &initialiseWithScene)
        .set(Interface::updateScene, &updateScene)
        .set(Interface::startRendering, &control<&LiveRender::start>)
        .set(Interface::pause, &control<&LiveRender::pause>)
        .set(Interface::resume, &control<&LiveRender::resume>)
        .set(Interface::stop, &control<&LiveRender::stop>)
        .set(Interface::getMessages, &getMessages)
        .set(Interface::messagesEmpty, &messagesEmpty)
        .set(Interface::nextMessage, &nextMessage);
}

} // namespace

InterfaceBase* makeRenderer() {
    static const auto table = makeTable();
    auto* const renderer = new RendererObject;
    renderer->table = table.entries();
    renderer->destroy = &destroyObject<RendererObject>;
    return renderer;
}

} // namespace engine::library
