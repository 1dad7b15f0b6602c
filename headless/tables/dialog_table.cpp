// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include "headless/runtime/host.h"
#include "headless/tables/user_area_functions.h"

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
        if (!combo || !combo->hasChoices()) {
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

bool loadDialogResource(GeDialog* dialog, int32_t resourceId) {
    return onMain("LoadDialogResource", false, [=] {
        Host& host = Host::current();
        if (!host.resources()) {
            return false;
        }
        const auto resource = host.resources()->loadDialog(resourceId);
        if (!resource) {
            host.errors().print(resource.error);
        }
        return resource && dialogs().addResource(dialog, *resource);
    });
}

/// Calls `change` on a gadget; false when there is none, or `change` says so.
template <typename Change>
bool changeGadget(const char* what, const GeDialog* dialog, int32_t id, Change change) {
    return onMain(what, false, [&] {
        DialogState* const state = dialogs().state(dialog);
        Gadget* const gadget = state ? state->find(id) : nullptr;
        return gadget && change(*gadget);
    });
}

bool setGroupColumns(GeDialog* dialog, int32_t id, int32_t columns) {
    // A group without a number is the one that was begun last.
    return onMain("GroupBegin", false, [=] {
        DialogState* const state = dialogs().state(dialog);
        Gadget* const group = state ? (id == 0 ? &state->lastAdded() : state->find(id)) : nullptr;
        if (!group || !group->isGroup()) {
            return false;
        }
        group->columns = columns;
        return true;
    });
}

bool setRange(GeDialog* dialog, int32_t id, float minimum, float maximum, float step) {
    return changeGadget("SetReal", dialog, id, [=](Gadget& gadget) {
        if (gadget.kind != GADGET_EDITNUMBER || !(minimum <= maximum)) {
            return false;
        }
        gadget.range = NumberRange{minimum, maximum, step};
        return true;
    });
}

bool setColorField(GeDialog* dialog, int32_t id, const Vector& colour, float brightness,
                   float maximumBrightness) {
    return changeGadget("SetColorField", dialog, id, [&](Gadget& gadget) {
        if (gadget.kind != GADGET_COLORFIELD || !(maximumBrightness >= 0.0f)) {
            return false;
        }
        gadget.value = GeData(colour);
        gadget.brightness = brightness;
        gadget.maximumBrightness = maximumBrightness;
        return true;
    });
}

bool getColorField(const GeDialog* dialog, int32_t id, Vector& colour, float& brightness) {
    return changeGadget("GetColorField", dialog, id, [&](const Gadget& gadget) {
        if (gadget.kind != GADGET_COLORFIELD) {
            return false;
        }
        colour = gadget.value.GetVector();
        brightness = gadget.brightness;
        return true;
    });
}

void layoutFlushGroup(GeDialog* dialog, int32_t id) {
    Host::current().onMainThread("LayoutFlushGroup", [=] { dialogs().flushGroup(dialog, id); });
}

void layoutChanged(GeDialog* /*dialog*/, int32_t /*id*/) {
    // No window has to be arranged anew: gadgets are there as soon as they were added.
}

int32_t handleMessage(GeDialog* dialog, const BaseContainer& message, BaseContainer& /*result*/) {
    return Dialogs::handle(*dialog, message);
}

bool restoreLayout(GeDialog* dialog, int32_t pluginId, void* secret) {
    return onMain("RestoreLayout", false, [=] {
        return dialogs().restore(dialog, pluginId, static_cast<const WindowPlace*>(secret));
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
        .LoadDialogResource = loadDialogResource,
        .SetGroupColumns = setGroupColumns,
        .SetRange = setRange,
        .SetColorField = setColorField,
        .GetColorField = getColorField,
        .LayoutFlushGroup = layoutFlushGroup,
        .LayoutChanged = layoutChanged,
        .HandleMessage = handleMessage,
        .RestoreLayout = restoreLayout,
        .AttachUserArea = attachUserArea,
        .DetachUserArea = detachUserArea,
        .GetAreaWidth = getAreaWidth,
        .GetAreaHeight = getAreaHeight,
        .SetAreaTimer = setAreaTimer,
        .RedrawArea = redrawArea,
        .SetAreaPen = setAreaPen,
        .DrawAreaRectangle = drawAreaRectangle,
        .DrawAreaBitmap = drawAreaBitmap,
        .MessageDialog = messageDialog,
        .QuestionDialog = questionDialog,
    };
    return &table;
}

} // namespace headless
