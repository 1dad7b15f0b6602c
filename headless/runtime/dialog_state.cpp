// SPDX-License-Identifier: MIT
#include "headless/runtime/dialog_state.h"

#include <algorithm>

namespace headless {

namespace {

GeData firstValue(GadgetKind kind, const String& text) {
    switch (kind) {
    case GADGET_CHECKBOX:
        return GeData(false);
    case GADGET_COMBOBOX:
        return GeData(int32_t{0});
    case GADGET_EDITNUMBER:
        return GeData(0.0);
    default:
        return GeData(text);
    }
}

} // namespace

const Gadget* DialogState::find(int32_t id) const {
    const auto found = std::ranges::find(gadgets, id, &Gadget::id);
    return id == 0 || found == gadgets.end() ? nullptr : &*found;
}

Gadget* DialogState::find(int32_t id) {
    return const_cast<Gadget*>(std::as_const(*this).find(id));
}

bool DialogState::add(GadgetKind kind, int32_t id, int32_t gadgetWidth, int32_t gadgetHeight,
                      const String& text) {
    if (find(id)) {
        return false;
    }
    Gadget gadget;
    gadget.kind = kind;
    gadget.id = id;
    gadget.width = gadgetWidth;
    gadget.height = gadgetHeight;
    gadget.value = firstValue(kind, text);
    gadgets.push_back(std::move(gadget));
    return true;
}

} // namespace headless
