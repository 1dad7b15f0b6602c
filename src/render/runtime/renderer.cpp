// SPDX-License-Identifier: MIT
#include "render/runtime/renderer.h"

#include "foundation/exceptions.h"

namespace Binding = Quenza::SDK::RendererInterface;

/// The library's object and what it was given, let go in an order that the library survives: its own last,
/// and the library itself after that.
class RendererImpl {
public:
    explicit RendererImpl(const Quenza::Ref<QuenzaContext>& quenza)
        : context(quenza), object(quenza->makeInstance(Quenza::SDK::RENDERER_INTERFACE)) {}
    RendererImpl(const RendererImpl&) = delete;
    RendererImpl& operator=(const RendererImpl&) = delete;

    virtual ~RendererImpl() = default;
    virtual int32_t initialiseWithScene(const Quenza::Ref<Quenza::SceneNodeRoot>& scene,
                                        const Quenza::Ref<Quenza::RenderBuffer>& renderBuffer,
                                        const Quenza::Vector<Quenza::String>& arguments) {
        root = scene;
        buffer = renderBuffer;
        return Binding::initialiseWithScene(object.get(), root, buffer, arguments);
    }
    virtual int32_t updateScene(const Quenza::Ref<Quenza::SceneNodeRoot>& scene) {
        return Binding::updateScene(object.get(), scene);
    }
    virtual void startRendering() { Binding::startRendering(object.get()); }
    virtual void pause() { Binding::pause(object.get()); }
    virtual void resume() { Binding::resume(object.get()); }
    virtual void stop() { Binding::stop(object.get()); }
    virtual double getSamplesPerPixel() { return Binding::getSamplesPerPixel(object.get()); }
    virtual double getElapsedTime() { return Binding::getElapsedTime(object.get()); }

    Quenza::Ref<QuenzaContext> context;
    LibraryRef<> object;
    Quenza::Ref<Quenza::SceneNodeRoot> root;
    Quenza::Ref<Quenza::RenderBuffer> buffer;
};

Renderer::Renderer(const Quenza::Ref<QuenzaContext>& context)
    : impl_(std::make_unique<RendererImpl>(context)) {
    if (!impl_->object) {
        throw Quenza::QuenzaException("Failed to create Instance of 'QuenzaInterface'");
    }
    if (Binding::initialise(impl_->object.get(), context->dllDirectory, context->appdataDirectory) != 0) {
        throw Quenza::QuenzaException("Failed to initialise 'QuenzaInterface'");
    }
}

Renderer::~Renderer() = default;

int32_t Renderer::initialiseWithScene(const Quenza::Ref<Quenza::SceneNodeRoot>& root,
                                      const Quenza::Ref<Quenza::RenderBuffer>& buffer,
                                      const Quenza::Vector<Quenza::String>& arguments) {
    return impl_->initialiseWithScene(root, buffer, arguments);
}

int32_t Renderer::updateScene(const Quenza::Ref<Quenza::SceneNodeRoot>& root) {
    return impl_->updateScene(root);
}

void Renderer::startRendering() {
    impl_->startRendering();
}

void Renderer::pause() {
    impl_->pause();
}

void Renderer::resume() {
    impl_->resume();
}

void Renderer::stop() {
    impl_->stop();
}

double Renderer::getSamplesPerPixel() const {
    return impl_->getSamplesPerPixel();
}

double Renderer::getElapsedTime() const {
    return impl_->getElapsedTime();
}

void Renderer::getLogMessages(Quenza::Vector<LogMessage>& list, bool& hadError) {
    Quenza::SDK::InterfaceBase* const object = impl_->object.get();
    list.clear();
    hadError = false;
    Quenza::Vector<Quenza::SDK::InterfaceBase*> moved;
    Binding::getMessages(object, moved);
    while (!Binding::messagesEmpty(object)) {
        const auto message = LibraryRef<>::adopt(Binding::nextMessage(object));
        if (!message) {
            break;
        }
        LogMessage line;
        line.type = Quenza::SDK::Message::getType(message.get());
        Quenza::SDK::Message::getText(message.get(), line.text);
        hadError = hadError || line.type == Quenza::SDK::Message::TYPE_ERROR;
        list.push_back(line);
    }
}
