// SPDX-License-Identifier: MIT
#include "headless/runtime/dialog_gadgets.h"

#include <algorithm>

namespace headless {

namespace {

using resources::DialogElement;
using Kind = resources::DialogElementKind;

GadgetKind gadgetKind(Kind kind) {
    switch (kind) {
    case Kind::group:
        return GADGET_GROUP_BEGIN;
    case Kind::scrollGroup:
        return GADGET_SCROLLGROUP_BEGIN;
    case Kind::groupEnd:
        return GADGET_GROUP_END;
    case Kind::staticText:
        return GADGET_STATICTEXT;
    case Kind::button:
        return GADGET_BUTTON;
    case Kind::checkbox:
        return GADGET_CHECKBOX;
    case Kind::editText:
        return GADGET_EDITTEXT;
    case Kind::editNumber:
        return GADGET_EDITNUMBER;
    case Kind::comboBox:
        return GADGET_COMBOBOX;
    case Kind::radioGroup:
        return GADGET_RADIOGROUP;
    case Kind::colourField:
        return GADGET_COLORFIELD;
    case Kind::userArea:
        return GADGET_USERAREA;
    case Kind::separator:
        return GADGET_SEPARATOR;
    }
    return GADGET_STATICTEXT;
}

void fill(Gadget& gadget, const DialogElement& element) {
    gadget.symbol = element.symbol;
    gadget.columns = element.columns;
    gadget.enabled = !element.isDisabled;
    if (element.range) {
        gadget.range =
            NumberRange{static_cast<float>(element.range->minimum),
                        static_cast<float>(element.range->maximum), static_cast<float>(element.range->step)};
        gadget.value = GeData(std::clamp(0.0f, gadget.range->minimum, gadget.range->maximum));
    }
    for (const resources::DialogChoice& choice : element.choices) {
        gadget.choices.emplace_back(choice.value, String(choice.text));
    }
}

} // namespace

bool addGadgets(DialogState& dialog, const resources::DialogResource& resource) {
    for (const DialogElement& element : resource.elements) {
        if (!dialog.add(gadgetKind(element.kind), element.id, element.width, element.height,
                        String(element.text))) {
            return false;
        }
        if (element.kind != Kind::groupEnd) {
            fill(dialog.lastAdded(), element);
        }
    }
    return true;
}

} // namespace headless
