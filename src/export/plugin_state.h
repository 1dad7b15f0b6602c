// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

/// What the whole plug-in knows about its process, from the host's first call to its last.
struct PluginState {
    /// The plug-in's folder; empty until the host has told it.
    Filename pluginPath;
    /// The run-time library in use is the realtime edition's: its folder holds no "quenza_sdk.dll".
    bool isRTEdition = false;
};

/// The one instance. Written on the main thread while the plug-in starts and ends, read by all.
PluginState& pluginState();
