// SPDX-License-Identifier: MIT
#include "render/runtime/tone_mapper.h"

#include "foundation/exceptions.h"

namespace Binding = Quenza::SDK::ToneMapperInterface;

ToneMapper::ToneMapper(const Quenza::Ref<QuenzaContext>& context,
                       const Quenza::Ref<Quenza::RenderBuffer>& buffer, float gamma,
                       const Quenza::Ref<Quenza::UInt8Buffer>& bytes,
                       const Quenza::Ref<Quenza::FloatBuffer>& floats)
    : context_(context), object_(context->makeInstance(Quenza::SDK::TONE_MAPPER_INTERFACE)), buffer_(buffer),
      bytes_(bytes), floats_(floats) {
    if (!object_) {
        throw Quenza::QuenzaException("Failed to create Instance of 'ToneMapperDLLAPI'");
    }
    if (Binding::setUp(object_.get(), context->dllDirectory, context->appdataDirectory, buffer_, gamma,
                       bytes_, floats_, error_) != 0) {
        throw Quenza::QuenzaException(error_.empty() ? "Failed to initialise 'ToneMapperDLLAPI'" : error_);
    }
}

bool ToneMapper::update(Quenza::SceneNodeRoot& root) {
    Quenza::Lock rootLock(root.getMutex());
    Quenza::Lock lock(mutex_);
    error_.clear();
    if (!root.getRenderSettingsPointer()) {
        error_ = "No renderer settings node in scene.";
        return false;
    }
    if (Binding::update(object_.get(), root.getToneMappingPointer(), root.getCameraPointer(),
                        root.getRenderSettingsPointer()) == 0) {
        return true;
    }
    Binding::getError(object_.get(), error_);
    if (error_.empty()) {
        error_ = "Failed to update 'ToneMapperDLLAPI'";
    }
    return false;
}

void ToneMapper::start() {
    Quenza::Lock lock(mutex_);
    if (Binding::isFinished(object_.get())) {
        error_.clear();
        Binding::startTonemapping(object_.get());
    }
}

bool ToneMapper::isFinished() const {
    Quenza::Lock lock(mutex_);
    return Binding::isFinished(object_.get());
}

Quenza::String ToneMapper::getError() const {
    Quenza::Lock lock(mutex_);
    Quenza::String error = error_;
    if (error.empty()) {
        Binding::getError(object_.get(), error);
    }
    return error;
}
