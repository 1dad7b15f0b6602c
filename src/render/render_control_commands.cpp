// SPDX-License-Identifier: MIT
#include "render/render_control_commands.h"

#include "render/render_state.h"

using Quenza::Lock;

namespace {

int32_t enabledWhen(bool enabled) {
    return enabled ? CMD_ENABLED : 0;
}

} // namespace

bool PauseCommand::Execute(BaseDocument* /*document*/) {
    Lock lock(renderStateMutex());
    RenderState& state = renderState();
    if (state.activeRenderer) {
        state.activeRenderer->pause();
        state.paused = 1;
    }
    return true;
}

int32_t PauseCommand::GetState(BaseDocument* /*document*/) {
    Lock lock(renderStateMutex());
    return enabledWhen(renderState().activeRenderer && renderState().paused == 0);
}

bool ResumeCommand::Execute(BaseDocument* /*document*/) {
    Lock lock(renderStateMutex());
    RenderState& state = renderState();
    if (state.activeRenderer) {
        state.activeRenderer->resume();
        state.paused = 0;
    }
    return true;
}

int32_t ResumeCommand::GetState(BaseDocument* /*document*/) {
    Lock lock(renderStateMutex());
    return enabledWhen(renderState().activeRenderer && renderState().paused != 0);
}

bool UpdateImageCommand::Execute(BaseDocument* /*document*/) {
    Lock lock(renderStateMutex());
    if (renderState().activeRenderer) {
        renderState().updateRequested = 1;
    }
    return true;
}

int32_t UpdateImageCommand::GetState(BaseDocument* /*document*/) {
    Lock lock(renderStateMutex());
    return enabledWhen(renderState().activeRenderer.nonNull());
}
