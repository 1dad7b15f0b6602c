// SPDX-License-Identifier: MIT
#include "shared/plugin_state.h"

PluginState& pluginState() {
    static PluginState state;
    return state;
}
