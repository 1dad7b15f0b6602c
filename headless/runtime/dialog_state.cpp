// SPDX-License-Identifier: MIT
#include "headless/runtime/dialog_state.h"

#include "headless/resources/file_lookup.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace headless {

namespace {

GeData firstValue(GadgetKind kind, const String& text) {
    switch (kind) {
    case GADGET_CHECKBOX:
        return GeData(false);
    case GADGET_COMBOBOX:
    case GADGET_RADIOGROUP:
        return GeData(int32_t{0});
    case GADGET_EDITNUMBER:
        return GeData(0.0);
    case GADGET_COLORFIELD:
        return GeData(Vector(1.0f, 1.0f, 1.0f));
    default:
        return GeData(text);
    }
}

} // namespace

bool Gadget::isUsable() const {
    return enabled && !isGroup() && kind != GADGET_GROUP_END && kind != GADGET_STATICTEXT &&
           kind != GADGET_SEPARATOR && kind != GADGET_USERAREA;
}

std::optional<GeData> Gadget::entry(const GeData& wanted) const {
    if (hasChoices()) {
        const bool isThere = std::ranges::any_of(
            choices, [&](const auto& choice) { return choice.first == wanted.GetLong(); });
        return isThere ? std::optional(GeData(wanted.GetLong())) : std::nullopt;
    }
    if (kind == GADGET_COLORFIELD) {
        const auto limited = [](float component) {
            return std::isnan(component) ? 0.0f : std::clamp(component, 0.0f, 1.0f);
        };
        const Vector colour = wanted.GetVector();
        return GeData(Vector(limited(colour.x), limited(colour.y), limited(colour.z)));
    }
    if (kind == GADGET_EDITNUMBER && std::isnan(wanted.GetReal())) {
        return std::nullopt;
    }
    if (kind == GADGET_EDITNUMBER && range &&
        (wanted.GetReal() < range->minimum || wanted.GetReal() > range->maximum)) {
        return GeData(std::clamp(wanted.GetReal(), range->minimum, range->maximum));
    }
    return wanted;
}

const Gadget* DialogState::find(int32_t id) const {
    const auto found = std::ranges::find(gadgets, id, &Gadget::id);
    return id == 0 || found == gadgets.end() ? nullptr : &*found;
}

Gadget* DialogState::find(int32_t id) {
    return const_cast<Gadget*>(std::as_const(*this).find(id));
}

const Gadget* DialogState::findNamed(std::string_view name) const {
    const auto found = std::ranges::find_if(gadgets, [name](const Gadget& gadget) {
        return gadget.id != 0 && (resources::equalIgnoringCase(gadget.symbol, name) ||
                                  resources::equalIgnoringCase(gadget.text.GetUtf8(), name) ||
                                  std::to_string(gadget.id) == name);
    });
    return found == gadgets.end() ? nullptr : &*found;
}

size_t DialogState::endOfGroup(size_t place) const {
    int inner = 0;
    for (; place < gadgets.size(); ++place) {
        if (gadgets[place].isGroup()) {
            ++inner;
        } else if (gadgets[place].kind == GADGET_GROUP_END && inner-- == 0) {
            break;
        }
    }
    return place;
}

bool DialogState::add(GadgetKind kind, int32_t id, int32_t gadgetWidth, int32_t gadgetHeight,
                      const String& text) {
    if (kind == GADGET_GROUP_END) {
        const size_t end = endOfGroup(cursor_);
        if (end == gadgets.size()) {
            return false;
        }
        cursor_ = endOfGroup(end + 1);
        return true;
    }
    if (find(id)) {
        return false;
    }
    Gadget gadget;
    gadget.kind = kind;
    gadget.id = id;
    gadget.width = gadgetWidth;
    gadget.height = gadgetHeight;
    gadget.text = text;
    gadget.value = firstValue(kind, text);
    const bool isGroup = gadget.isGroup();
    const auto place =
        gadgets.insert(std::next(gadgets.begin(), static_cast<ptrdiff_t>(cursor_)), std::move(gadget));
    if (isGroup) {
        Gadget end;
        end.kind = GADGET_GROUP_END;
        gadgets.insert(std::next(place), std::move(end));
    }
    ++cursor_;
    return true;
}

std::optional<std::vector<Gadget>> DialogState::flushGroup(int32_t id) {
    const Gadget* const group = find(id);
    if (!group || !group->isGroup()) {
        return std::nullopt;
    }
    const auto first = std::next(gadgets.begin(), std::distance<const Gadget*>(gadgets.data(), group) + 1);
    cursor_ = static_cast<size_t>(std::distance(gadgets.begin(), first));
    const auto last = std::next(gadgets.begin(), static_cast<ptrdiff_t>(endOfGroup(cursor_)));
    std::vector<Gadget> removed(std::make_move_iterator(first), std::make_move_iterator(last));
    gadgets.erase(first, last);
    return removed;
}

void DialogState::clearLayout() {
    gadgets.clear();
    cursor_ = 0;
}

} // namespace headless
