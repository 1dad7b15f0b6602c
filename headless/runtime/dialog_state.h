// SPDX-License-Identifier: MIT
#pragma once

#include "host/tables.h"

#include <utility>
#include <vector>

namespace headless {

struct Gadget {
    GadgetKind kind = GADGET_STATICTEXT;
    int32_t id = 0;
    int32_t width = 0;
    int32_t height = 0;
    GeData value;
    bool enabled = true;
    /// Of a combo box: value and text.
    std::vector<std::pair<int32_t, String>> choices;
};

/// What the host knows of a dialog. Gadgets come in the order of the layout and live as long as the window.
struct DialogState {
    GeDialog* dialog = nullptr;
    bool open = false;
    bool modal = false;
    int32_t width = 0;
    int32_t height = 0;
    String title;
    std::vector<Gadget> gadgets;
    /// Milliseconds between Timer calls, 0 for none; `timer` is the loop's number of it.
    int32_t timerInterval = 0;
    int timer = 0;
    /// Numbers of the loop's timers that stand for what the user will do.
    std::vector<int> actions;

    /// Null when there is none; number 0 names no gadget.
    Gadget* find(int32_t id);
    const Gadget* find(int32_t id) const;
    /// False when the number is taken.
    bool add(GadgetKind kind, int32_t id, int32_t gadgetWidth, int32_t gadgetHeight, const String& text);
};

} // namespace headless
