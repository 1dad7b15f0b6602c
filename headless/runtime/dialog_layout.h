// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/dialog_state.h"

namespace headless {

struct AreaSize {
    int32_t width = 0;
    int32_t height = 0;
};

/// What the window of a dialog leaves to a user area: its size without the columns beside the area and the
/// rows above and below it. Never below 0.
AreaSize spaceForArea(const DialogState& dialog, int32_t gadget);

} // namespace headless
