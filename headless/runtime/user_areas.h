// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"
#include "headless/runtime/dialog_state.h"
#include "host/userarea.h"

#include <functional>
#include <memory>
#include <vector>

namespace headless {

class Console;
class MainLoop;

/// A part of a window that the plug-in draws, and what it drew last.
struct UserAreaState {
    GeUserArea* area = nullptr;
    const GeDialog* dialog = nullptr;
    int32_t gadget = 0;
    /// From the window's opening to its close.
    bool isShown = false;
    /// Of the area's size.
    Image image;
    /// How often it was drawn since it is shown.
    int drawings = 0;
    Vector pen;
    bool isDrawing = false;
    /// The loop's number of the area's timer, 0 for none.
    int timer = 0;
};

/// The user areas in the dialogs' windows. Main thread only. An exception of an area's own code gives an
/// error line.
class UserAreas {
public:
    UserAreas(MainLoop& loop, Console& errors) : loop_(loop), errors_(errors) {}

    /// False unless the gadget is a user area of the dialog, and free. In an open window the area is shown at
    /// once.
    bool attach(const DialogState& dialog, GeUserArea* area, int32_t gadget);
    void detach(const GeUserArea* area);
    /// Begins all areas of a window: Init, size, first drawing. False when one refuses.
    bool show(const DialogState& dialog);
    /// The window is closed, or one of its areas taken out.
    void close(const GeDialog* dialog);
    void close(const GeDialog* dialog, int32_t gadget);

    /// As the user who drags the window's edge. False when the area isn't shown or the size not allowed.
    bool resize(const GeDialog* dialog, int32_t gadget, int32_t width, int32_t height);
    void setTimer(const GeUserArea* area, int32_t milliseconds);
    /// Has the area draw itself; nothing while it isn't shown, or is drawing.
    void redraw(const GeUserArea* area);

    /// Null for an area that no gadget shows. Valid until the area is taken out.
    UserAreaState* find(const GeUserArea* area) const;
    UserAreaState* find(const GeDialog* dialog, int32_t gadget) const;

private:
    using StatePointer = std::shared_ptr<UserAreaState>;

    bool begin(const StatePointer& state, const DialogState& dialog);
    bool setSize(UserAreaState& state, int32_t width, int32_t height);
    void draw(UserAreaState& state);
    void hide(UserAreaState& state);
    void remove(const std::function<bool(const UserAreaState&)>& isMeant);
    StatePointer pointer(const GeUserArea* area) const;

    MainLoop& loop_;
    Console& errors_;
    std::vector<StatePointer> states_;
};

// What an area's drawing functions do to its image. Corners and sizes may lie outside.

/// Fills a rectangle, both corners included, in either order.
void fillRectangle(Image& image, int32_t x1, int32_t y1, int32_t x2, int32_t y2, const Vector& colour);
/// Copies a part of `source` to (left, top), one to one.
void copyPart(Image& image, int32_t left, int32_t top, const Image& source, int32_t x, int32_t y,
              int32_t width, int32_t height);

} // namespace headless
