// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include "headless/runtime/host.h"

namespace headless {

namespace {

Dialogs& dialogs() {
    return Host::current().dialogs();
}

/// Runs `call` on the main thread; the result is `refused` when that can't be.
template <typename Result, typename Call>
Result onMain(const char* what, Result refused, Call call) {
    Result result = refused;
    Host::current().onMainThread(what, [&] { result = call(); });
    return result;
}

void attach(GeDialog* dialog) {
    Host::current().onMainThread("GeDialog", [=] { dialogs().attach(dialog); });
}

void detach(GeDialog* dialog) {
    Host::current().onMainThread("~GeDialog", [=] { dialogs().detach(dialog); });
}

bool openModal(GeDialog* dialog, int32_t width, int32_t height) {
    return onMain("OpenModal", false, [=] { return dialogs().openModal(dialog, width, height); });
}

bool openAsync(GeDialog* dialog, int32_t /*pluginId*/, int32_t width, int32_t height) {
    return onMain("OpenAsync", false, [=] { return dialogs().openAsync(dialog, width, height); });
}

void close(GeDialog* dialog) {
    Host::current().onMainThread("Close", [=] { dialogs().close(dialog); });
}

bool isOpen(const GeDialog* dialog) {
    return onMain("IsOpen", false, [=] {
        const DialogState* const state = dialogs().state(dialog);
        return state && state->open;
    });
}

void setTitle(GeDialog* dialog, const String& title) {
    Host::current().onMainThread("SetTitle", [&] { dialogs().setTitle(dialog, title); });
}

void setTimer(GeDialog* dialog, int32_t milliseconds) {
    Host::current().onMainThread("SetTimer", [=] { dialogs().setTimer(dialog, milliseconds); });
}

bool addGadget(GeDialog* dialog, int32_t kind, int32_t id, int32_t width, int32_t height,
               const String& text) {
    return onMain("AddGadget", false, [&] {
        DialogState* const state = dialogs().state(dialog);
        return state && state->add(static_cast<GadgetKind>(kind), id, width, height, text);
    });
}

bool addChild(GeDialog* dialog, int32_t comboId, int32_t value, const String& text) {
    return onMain("AddChild", false, [&] {
        DialogState* const state = dialogs().state(dialog);
        Gadget* const combo = state ? state->find(comboId) : nullptr;
        if (!combo || combo->kind != GADGET_COMBOBOX) {
            return false;
        }
        combo->choices.emplace_back(value, text);
        return true;
    });
}

bool setValue(GeDialog* dialog, int32_t id, const GeData& value) {
    return onMain("SetValue", false, [&] {
        DialogState* const state = dialogs().state(dialog);
        Gadget* const gadget = state ? state->find(id) : nullptr;
        if (gadget) {
            gadget->value = value;
        }
        return gadget != nullptr;
    });
}

bool getValue(const GeDialog* dialog, int32_t id, GeData& value) {
    return onMain("GetValue", false, [&] {
        const DialogState* const state = dialogs().state(dialog);
        const Gadget* const gadget = state ? state->find(id) : nullptr;
        if (gadget) {
            value = gadget->value;
        }
        return gadget != nullptr;
    });
}

void enable(GeDialog* dialog, int32_t id, bool enabled) {
    Host::current().onMainThread("Enable", [=] {
        DialogState* const state = dialogs().state(dialog);
        if (Gadget* const gadget = state ? state->find(id) : nullptr) {
            gadget->enabled = enabled;
        }
    });
}

void messageDialog(const String& text) {
    Host& host = Host::current();
    host.onMainThread("MessageDialog", [&] {
        host.user().tell(text.GetUtf8());
        host.errors().print("[message] " + text.GetUtf8());
    });
}

bool questionDialog(const String& text) {
    Host& host = Host::current();
    return onMain("QuestionDialog", false, [&] {
        const bool yes = host.user().ask(text.GetUtf8());
        const std::optional<std::string>& answer = host.user().interactions().back().answer;
        host.errors().print("[question] " + text.GetUtf8() + " " + answer.value_or("(cancelled)"));
        return yes;
    });
}

} // namespace

const DialogTable* dialogTable() {
    static constexpr DialogTable table = {
        .Attach = attach,
        .Detach = detach,
        .OpenModal = openModal,
        .OpenAsync = openAsync,
        .Close = close,
        .IsOpen = isOpen,
        .SetTitle = setTitle,
        .SetTimer = setTimer,
        .AddGadget = addGadget,
        .AddChild = addChild,
        .SetValue = setValue,
        .GetValue = getValue,
        .Enable = enable,
        .MessageDialog = messageDialog,
        .QuestionDialog = questionDialog,
    };
    return &table;
}

} // namespace headless
