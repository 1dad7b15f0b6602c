// SPDX-License-Identifier: MIT
#include "headless/runtime/dialogs.h"

#include "headless/runtime/dialog_gadgets.h"
#include "headless/runtime/guarded_call.h"
#include "headless/runtime/main_loop.h"
#include "headless/runtime/status_bar.h"
#include "headless/runtime/user.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

constexpr std::chrono::milliseconds STATUS_INTERVAL{500};

} // namespace

void Dialogs::attach(GeDialog* dialog) {
    states_.push_back(std::make_shared<DialogState>());
    states_.back()->dialog = dialog;
}

void Dialogs::detach(GeDialog* dialog) {
    if (const StatePointer state = find(dialog)) {
        shut(*state);
        areas_.close(dialog);
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

bool Dialogs::restore(GeDialog* dialog, int32_t pluginId, const WindowPlace* place) {
    return place && place->pluginId == pluginId && openAsync(dialog, place->width, place->height);
}

bool Dialogs::open(const StatePointer& state, int32_t width, int32_t height, bool modal) {
    state->width = width;
    state->height = height;
    state->modal = modal;
    state->clearLayout();
    if (!guardedCall(errors_, "CreateLayout of a dialog", [&] { return state->dialog->CreateLayout(); })) {
        areas_.close(state->dialog);
        return false;
    }
    state->open = true;
    open_.push_back(state);
    startTimer(state);
    if (!guardedCall(errors_, "InitValues of a dialog", [&] { return state->dialog->InitValues(); }) ||
        !areas_.show(*state)) {
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
    areas_.close(state.dialog);
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
    if (guardedCall(errors_, "AskClose of a dialog", [&] { return state->dialog->AskClose(); })) {
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
    Gadget* const pressed = state && state->open ? state->find(gadget) : nullptr;
    if (!pressed || !pressed->isUsable()) {
        return false;
    }
    if (pressed->kind == GADGET_CHECKBOX) {
        pressed->value = GeData(!pressed->value.GetBool());
    }
    use(state, *pressed);
    return true;
}

bool Dialogs::enter(GeDialog* dialog, int32_t gadget, const GeData& value) {
    const StatePointer state = find(dialog);
    Gadget* const used = state && state->open ? state->find(gadget) : nullptr;
    const std::optional<GeData> entry = used && used->isUsable() ? used->entry(value) : std::nullopt;
    if (!entry) {
        return false;
    }
    used->value = *entry;
    use(state, *used);
    return true;
}

bool Dialogs::enterColour(GeDialog* dialog, int32_t gadget, const Vector& colour, float brightness) {
    const StatePointer state = find(dialog);
    Gadget* const field = state && state->open ? state->find(gadget) : nullptr;
    if (!field || field->kind != GADGET_COLORFIELD || !field->enabled || std::isnan(brightness)) {
        return false;
    }
    field->brightness = std::clamp(brightness, 0.0f, field->maximumBrightness);
    return enter(dialog, gadget, GeData(colour));
}

void Dialogs::use(const StatePointer& state, const Gadget& gadget) {
    BaseContainer message(BFM_ACTION);
    message.SetLong(BFM_ACTION_ID, gadget.id);
    message.SetData(gadget.id, gadget.value);
    deliver(state, "Command", message);
}

void Dialogs::deliver(const StatePointer& state, const char* name, const BaseContainer& message) {
    guardedCall(errors_, std::string(name) + " of a dialog", [&] {
        BaseContainer result;
        return state->dialog->Message(message, result) != 0;
    });
}

int32_t Dialogs::handle(GeDialog& dialog, const BaseContainer& message) {
    switch (message.GetId()) {
    case BFM_ACTION:
        return dialog.Command(message.GetLong(BFM_ACTION_ID), message) ? 1 : 0;
    case BFM_TIMERMESSAGE:
        dialog.Timer(message);
        return 1;
    case BFM_CORE_MESSAGE:
        return dialog.CoreMessage(message.GetLong(BFM_CORE_ID), message) ? 1 : 0;
    default:
        return 0;
    }
}

bool Dialogs::addResource(GeDialog* dialog, const resources::DialogResource& resource) {
    const StatePointer state = find(dialog);
    if (!state) {
        return false;
    }
    if (!resource.title.empty()) {
        state->title = String(resource.title);
    }
    return addGadgets(*state, resource);
}

void Dialogs::flushGroup(GeDialog* dialog, int32_t group) {
    const StatePointer state = find(dialog);
    if (!state) {
        return;
    }
    for (const Gadget& removed : state->flushGroup(group).value_or(std::vector<Gadget>())) {
        areas_.close(dialog, removed.id);
    }
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
        deliver(state, "Timer", BaseContainer(BFM_TIMERMESSAGE));
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
    const bool hasName = !action.gadgetName.empty();
    const Gadget* const named = hasName ? state->findNamed(action.gadgetName) : nullptr;
    const int32_t gadget = named ? named->id : hasName ? 0 : action.gadget;
    const bool performed = action.kind == UserAction::Kind::set ? enter(state->dialog, gadget, action.value)
                                                                : press(state->dialog, gadget);
    if (!performed) {
        errors_.print("The dialog \"" + state->title.GetUtf8() + "\" has no gadget " +
                      (hasName ? action.gadgetName : std::to_string(gadget)) + " that can be used");
    }
}

void Dialogs::coreMessage(int32_t id, const BaseContainer& message) {
    BaseContainer packed = message;
    packed.SetId(BFM_CORE_MESSAGE);
    packed.SetLong(BFM_CORE_ID, id);
    const std::vector<StatePointer> receivers = open_;
    for (const StatePointer& state : receivers) {
        // An earlier receiver may have closed it.
        if (state->open) {
            deliver(state, "CoreMessage", packed);
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

GeDialog* Dialogs::openDialogWith(int32_t gadget) const {
    const auto found =
        std::find_if(open_.rbegin(), open_.rend(), [=](const auto& state) { return state->find(gadget); });
    return found == open_.rend() ? nullptr : (*found)->dialog;
}

Dialogs::StatePointer Dialogs::find(const GeDialog* dialog) const {
    const auto found = std::ranges::find(states_, dialog, [](const auto& state) { return state->dialog; });
    return found == states_.end() ? nullptr : *found;
}

} // namespace headless
