// SPDX-License-Identifier: MIT
#include "export/plugin_state.h"

PluginState& pluginState() {
    static PluginState state;
    return state;
}
