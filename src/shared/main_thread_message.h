// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"
#include "shared/plugin_ids.h"

#include <memory>

/// Shows a text in a message box, on the main thread and at its leisure. Any thread.
inline void showOnMainThread(const String& text) {
    // The message plug-in shows the text and frees it.
    auto owned = std::make_unique<String>(text);
    SpecialEventAdd(PLUGINID_MESSAGE, 1, reinterpret_cast<uintptr_t>(owned.release()));
}
