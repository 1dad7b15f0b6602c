// SPDX-License-Identifier: MIT
#include "headless/runtime/dialogs.h"

#include "headless/runtime/console.h"
#include "headless/runtime/main_loop.h"
#include "headless/runtime/status_bar.h"
#include "headless/runtime/user.h"

#include <algorithm>

namespace headless {

namespace {

constexpr std::chrono::milliseconds STATUS_INTERVAL{500};

} // namespace

/// The result of `call`, false when it throws.
template <typename Call>
bool Dialogs::guarded(const char* name, Call call) {
    try {
        return call();
    } catch (const std::exception& error) {
        errors_.print(std::string(name) + " of a dialog ended with an exception: " + error.what());
    } catch (...) {
        errors_.print(std::string(name) + " of a dialog ended with an exception");
    }
    return false;
}

void Dialogs::attach(GeDialog* dialog) {
    states_.push_back(std::make_shared<DialogState>());
    states_.back()->dialog = dialog;
}

void Dialogs::detach(GeDialog* dialog) {
    if (const StatePointer state = find(dialog)) {
        shut(*state);
        state->dialog = nullptr;
        std::erase(states_, state);
    }
}

bool Dialogs::openModal(GeDialog* dialog, int32_t width, int32_t height) {
    const StatePointer state = find(dialog);
    if (!state || state->open || !open(state, width, height, true)) {
        return false;
    }
    status_.setWork(state->title.GetUtf8());
    const int clock = loop_.addTimer(STATUS_INTERVAL, [this] { status_.refresh(); });
    loop_.runUntil([&state] { return !state->open; });
    loop_.removeTimer(clock);
    status_.setWork("");
    return true;
}

bool Dialogs::openAsync(GeDialog* dialog, int32_t width, int32_t height) {
    const StatePointer state = find(dialog);
    return state && (state->open || open(state, width, height, false));
}

bool Dialogs::open(const StatePointer& state, int32_t width, int32_t height, bool modal) {
    state->width = width;
    state->height = height;
    state->modal = modal;
    state->gadgets.clear();
    if (!guarded("CreateLayout", [&] { return state->dialog->CreateLayout(); })) {
        return false;
    }
    state->open = true;
    open_.push_back(state);
    startTimer(state);
    if (!guarded("InitValues", [&] { return state->dialog->InitValues(); })) {
        shut(*state);
        return false;
    }
    if (state->open) {
        scheduleActions(state);
    }
    return true;
}

void Dialogs::close(GeDialog* dialog) {
    if (const StatePointer state = find(dialog)) {
        shut(*state);
    }
}

void Dialogs::closeAll() {
    while (!open_.empty()) {
        const StatePointer last = open_.back();
        shut(*last);
    }
}

void Dialogs::shut(DialogState& state) {
    if (!state.open) {
        return;
    }
    state.open = false;
    loop_.removeTimer(state.timer);
    for (const int action : state.actions) {
        loop_.removeTimer(action);
    }
    state.actions.clear();
    state.timer = 0;
    state.timerInterval = 0;
    std::erase_if(open_, [&](const StatePointer& other) { return other.get() == &state; });
}

bool Dialogs::requestClose(GeDialog* dialog) {
    const StatePointer state = find(dialog);
    if (!state || !state->open) {
        return true;
    }
    if (guarded("AskClose", [&] { return state->dialog->AskClose(); })) {
        return false;
    }
    shut(*state);
    return true;
}

bool Dialogs::requestCloseOfTop() {
    return !open_.empty() && requestClose(open_.back()->dialog);
}

bool Dialogs::press(GeDialog* dialog, int32_t gadget) {
    const StatePointer state = find(dialog);
    const Gadget* const pressed = state && state->open ? state->find(gadget) : nullptr;
    return pressed && enter(dialog, gadget, GeData(pressed->value));
}

bool Dialogs::enter(GeDialog* dialog, int32_t gadget, const GeData& value) {
    const StatePointer state = find(dialog);
    Gadget* const used = state && state->open ? state->find(gadget) : nullptr;
    if (!used || !used->enabled) {
        return false;
    }
    used->value = value;
    BaseContainer message(gadget);
    message.SetData(gadget, value);
    guarded("Command", [&] { return state->dialog->Command(gadget, message); });
    return true;
}

void Dialogs::setTitle(GeDialog* dialog, const String& title) {
    if (const StatePointer state = find(dialog)) {
        state->title = title;
    }
}

void Dialogs::setTimer(GeDialog* dialog, int32_t milliseconds) {
    if (const StatePointer state = find(dialog)) {
        loop_.removeTimer(state->timer);
        state->timer = 0;
        state->timerInterval = std::max(milliseconds, int32_t{0});
        startTimer(state);
    }
}

void Dialogs::startTimer(const StatePointer& state) {
    if (!state->open || state->timerInterval == 0) {
        return;
    }
    state->timer = loop_.addTimer(std::chrono::milliseconds(state->timerInterval), [this, state] {
        guarded("Timer", [&] {
            state->dialog->Timer(BaseContainer());
            return true;
        });
    });
}

void Dialogs::scheduleActions(const StatePointer& state) {
    for (UserAction& action : user_.nextDialogActions()) {
        const auto delay = action.after;
        state->actions.push_back(
            loop_.addOneShot(delay, [this, state, action = std::move(action)] { perform(state, action); }));
    }
}

void Dialogs::perform(const StatePointer& state, const UserAction& action) {
    if (action.kind == UserAction::Kind::close) {
        requestClose(state->dialog);
        return;
    }
    if (action.kind == UserAction::Kind::use) {
        action.use(*state->dialog);
        return;
    }
    const bool performed = action.kind == UserAction::Kind::set
                               ? enter(state->dialog, action.gadget, action.value)
                               : press(state->dialog, action.gadget);
    if (!performed) {
        errors_.print("The dialog \"" + state->title.GetUtf8() + "\" has no gadget " +
                      std::to_string(action.gadget) + " that can be used");
    }
}

void Dialogs::coreMessage(int32_t id, const BaseContainer& message) {
    const std::vector<StatePointer> receivers = open_;
    for (const StatePointer& state : receivers) {
        // An earlier receiver may have closed it.
        if (state->open) {
            guarded("CoreMessage", [&] { return state->dialog->CoreMessage(id, message); });
        }
    }
}

DialogState* Dialogs::state(const GeDialog* dialog) {
    return find(dialog).get();
}

std::vector<GeDialog*> Dialogs::openDialogs() const {
    std::vector<GeDialog*> dialogs;
    for (const StatePointer& state : open_) {
        dialogs.push_back(state->dialog);
    }
    return dialogs;
}

Dialogs::StatePointer Dialogs::find(const GeDialog* dialog) const {
    const auto found = std::ranges::find(states_, dialog, [](const auto& state) { return state->dialog; });
    return found == states_.end() ? nullptr : *found;
}

} // namespace headless
