// SPDX-License-Identifier: MIT
#include "headless/runtime/user_areas.h"

#include "headless/runtime/dialog_layout.h"
#include "headless/runtime/guarded_call.h"
#include "headless/runtime/main_loop.h"

#include <algorithm>

namespace headless {

bool UserAreas::attach(const DialogState& dialog, GeUserArea* area, int32_t gadget) {
    const Gadget* const place = dialog.find(gadget);
    if (!area || !place || place->kind != GADGET_USERAREA || find(area) || find(dialog.dialog, gadget)) {
        return false;
    }
    const auto state = std::make_shared<UserAreaState>();
    state->area = area;
    state->dialog = dialog.dialog;
    state->gadget = gadget;
    states_.push_back(state);
    return !dialog.open || begin(state, dialog);
}

void UserAreas::detach(const GeUserArea* area) {
    remove([area](const UserAreaState& state) { return state.area == area; });
}

bool UserAreas::show(const DialogState& dialog) {
    const std::vector<StatePointer> states = states_;
    return std::ranges::all_of(states, [&](const StatePointer& state) {
        return state->dialog != dialog.dialog || state->isShown || begin(state, dialog);
    });
}

void UserAreas::close(const GeDialog* dialog) {
    remove([dialog](const UserAreaState& state) { return state.dialog == dialog; });
}

void UserAreas::close(const GeDialog* dialog, int32_t gadget) {
    remove([=](const UserAreaState& state) { return state.dialog == dialog && state.gadget == gadget; });
}

void UserAreas::remove(const std::function<bool(const UserAreaState&)>& isMeant) {
    std::erase_if(states_, [&](const StatePointer& state) {
        if (!isMeant(*state)) {
            return false;
        }
        hide(*state);
        return true;
    });
}

void UserAreas::hide(UserAreaState& state) {
    loop_.removeTimer(state.timer);
    state.timer = 0;
    state.isShown = false;
}

bool UserAreas::begin(const StatePointer& state, const DialogState& dialog) {
    state->isShown = true;
    if (!guardedCall(errors_, "Init of a user area", [&] { return state->area->Init(); })) {
        return false;
    }
    AreaSize least;
    guardedCall(errors_, "GetMinSize of a user area",
                [&] { return state->area->GetMinSize(least.width, least.height); });
    const AreaSize space = spaceForArea(dialog, state->gadget);
    return !state->isShown || setSize(*state, std::max({least.width, space.width, 1}),
                                      std::max({least.height, space.height, 1}));
}

bool UserAreas::resize(const GeDialog* dialog, int32_t gadget, int32_t width, int32_t height) {
    UserAreaState* const state = find(dialog, gadget);
    return state && state->isShown && setSize(*state, width, height);
}

bool UserAreas::setSize(UserAreaState& state, int32_t width, int32_t height) {
    Image image;
    if (width < 1 || height < 1 || image.init(width, height, 24) != IMAGERESULT_OK) {
        errors_.print("A user area can't have " + std::to_string(width) + "x" + std::to_string(height) +
                      " pixels");
        return false;
    }
    state.image = std::move(image);
    guardedCall(errors_, "Sized of a user area", [&] {
        state.area->Sized(width, height);
        return true;
    });
    draw(state);
    return true;
}

void UserAreas::setTimer(const GeUserArea* area, int32_t milliseconds) {
    const StatePointer state = pointer(area);
    if (!state) {
        return;
    }
    loop_.removeTimer(state->timer);
    state->timer = 0;
    if (milliseconds <= 0 || !state->isShown) {
        return;
    }
    state->timer = loop_.addTimer(std::chrono::milliseconds(milliseconds), [this, state] {
        guardedCall(errors_, "Timer of a user area", [&] {
            state->area->Timer(BaseContainer(BFM_TIMERMESSAGE));
            return true;
        });
    });
}

void UserAreas::redraw(const GeUserArea* area) {
    if (const StatePointer state = pointer(area)) {
        draw(*state);
    }
}

void UserAreas::draw(UserAreaState& state) {
    if (!state.isShown || state.isDrawing || state.image.width() == 0) {
        return;
    }
    state.isDrawing = true;
    guardedCall(errors_, "DrawMsg of a user area", [&] {
        state.area->DrawMsg(0, 0, state.image.width() - 1, state.image.height() - 1, BaseContainer());
        return true;
    });
    state.isDrawing = false;
    ++state.drawings;
}

UserAreaState* UserAreas::find(const GeUserArea* area) const {
    return pointer(area).get();
}

UserAreas::StatePointer UserAreas::pointer(const GeUserArea* area) const {
    const auto found = std::ranges::find(states_, area, [](const auto& state) { return state->area; });
    return found == states_.end() ? nullptr : *found;
}

UserAreaState* UserAreas::find(const GeDialog* dialog, int32_t gadget) const {
    const auto found = std::ranges::find_if(states_, [=](const StatePointer& state) {
        return state->dialog == dialog && state->gadget == gadget;
    });
    return found == states_.end() ? nullptr : found->get();
}

void fillRectangle(Image& image, int32_t x1, int32_t y1, int32_t x2, int32_t y2, const Vector& colour) {
    const int32_t left = std::max(std::min(x1, x2), 0);
    const int32_t top = std::max(std::min(y1, y2), 0);
    const int32_t right = std::min(std::max(x1, x2), image.width() - 1);
    const int32_t bottom = std::min(std::max(y1, y2), image.height() - 1);
    for (int32_t y = top; y <= bottom; ++y) {
        for (int32_t x = left; x <= right; ++x) {
            image.setPixel(x, y, colour);
        }
    }
}

void copyPart(Image& image, int32_t left, int32_t top, const Image& source, int32_t x, int32_t y,
              int32_t width, int32_t height) {
    // In 64 bits, since the sums of a plug-in's numbers may leave 32. The place in `source` of our (0, 0).
    const int64_t shiftX = int64_t{x} - left;
    const int64_t shiftY = int64_t{y} - top;
    const int64_t firstX = std::max({int64_t{left}, -shiftX, int64_t{0}});
    const int64_t firstY = std::max({int64_t{top}, -shiftY, int64_t{0}});
    const int64_t endX = std::min({int64_t{left} + width, source.width() - shiftX, int64_t{image.width()}});
    const int64_t endY = std::min({int64_t{top} + height, source.height() - shiftY, int64_t{image.height()}});
    for (int64_t row = firstY; row < endY; ++row) {
        for (int64_t column = firstX; column < endX; ++column) {
            image.setPixel(
                static_cast<int32_t>(column), static_cast<int32_t>(row),
                source.pixel(static_cast<int32_t>(column + shiftX), static_cast<int32_t>(row + shiftY)));
        }
    }
}

} // namespace headless
