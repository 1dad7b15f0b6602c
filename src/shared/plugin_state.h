// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

#include <memory>

/// What the whole plug-in knows about its process, from the host's first call to its last.
struct PluginState {
    /// The plug-in's folder, told by the host; null before and when there was no memory for it.
    std::unique_ptr<Filename> pluginPath;
    /// The run-time library in use is the realtime edition's: its folder holds no "quenza_sdk.dll".
    bool isRTEdition = false;
    /// Starts the external renderer on a scene file, without waiting for it; asks the artist where it is when
    /// it isn't found. False when it wasn't started. Main thread. Null before the plug-in's start.
    bool (*openScene)(const Filename& sceneFile) = nullptr;
};

/// The one instance. Written on the main thread while the plug-in starts and ends, read by all.
PluginState& pluginState();
