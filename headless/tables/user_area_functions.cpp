// SPDX-License-Identifier: MIT
#include "headless/tables/user_area_functions.h"

#include "headless/runtime/host.h"

namespace headless {

namespace {

/// Calls `use` with the dialogs' user areas on the main thread.
template <typename Use>
void withAreas(const char* what, Use use) {
    Host& host = Host::current();
    host.onMainThread(what, [&] { use(host.dialogs().areas()); });
}

/// The same for an area that a window shows.
template <typename Use>
void withShown(const char* what, const GeUserArea* area, Use use) {
    withAreas(what, [&](const UserAreas& areas) {
        UserAreaState* const state = areas.find(area);
        if (state && state->isShown) {
            use(*state);
        }
    });
}

/// The same while it draws.
template <typename Use>
void withDrawing(const char* what, const GeUserArea* area, Use use) {
    withShown(what, area, [&](UserAreaState& state) {
        if (state.isDrawing) {
            use(state);
        }
    });
}

} // namespace

bool attachUserArea(GeDialog* dialog, GeUserArea* area, int32_t gadgetId) {
    bool attached = false;
    withAreas("AttachUserArea", [&](UserAreas& areas) {
        const DialogState* const state = Host::current().dialogs().state(dialog);
        attached = state && areas.attach(*state, area, gadgetId);
    });
    return attached;
}

void detachUserArea(GeUserArea* area) {
    withAreas("~GeUserArea", [=](UserAreas& areas) { areas.detach(area); });
}

int32_t getAreaWidth(const GeUserArea* area) {
    int32_t width = 0;
    withShown("GetWidth", area, [&](const UserAreaState& state) { width = state.image.width(); });
    return width;
}

int32_t getAreaHeight(const GeUserArea* area) {
    int32_t height = 0;
    withShown("GetHeight", area, [&](const UserAreaState& state) { height = state.image.height(); });
    return height;
}

void setAreaTimer(GeUserArea* area, int32_t milliseconds) {
    withAreas("SetTimer", [=](UserAreas& areas) { areas.setTimer(area, milliseconds); });
}

void redrawArea(GeUserArea* area) {
    withAreas("Redraw", [=](UserAreas& areas) { areas.redraw(area); });
}

void setAreaPen(GeUserArea* area, const Vector& colour) {
    withDrawing("DrawSetPen", area, [&](UserAreaState& state) { state.pen = colour; });
}

void drawAreaRectangle(GeUserArea* area, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    withDrawing("DrawRectangle", area,
                [=](UserAreaState& state) { fillRectangle(state.image, x1, y1, x2, y2, state.pen); });
}

void drawAreaBitmap(GeUserArea* area, BaseBitmap* bitmap, int32_t wx, int32_t wy, int32_t x, int32_t y,
                    int32_t width, int32_t height) {
    withDrawing("DrawBitmap", area, [=](UserAreaState& state) {
        if (bitmap) {
            copyPart(state.image, wx, wy, *fromHost(bitmap), x, y, width, height);
        }
    });
}

} // namespace headless
