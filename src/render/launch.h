// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

/// How the external renderer is to be started.
struct LaunchOptions {
    bool lowPriority = true;
    /// The console program instead of the one with a window.
    bool console = false;
    /// As master of a render network, on `port`.
    bool network = false;
    int32_t port = 7777;
    /// Where the images go: a path whose suffix is replaced for each kind. Empty: the renderer's own choice.
    Filename outputFile;
};

/// A seed that differs from run to run: it comes from the host's timer alone, not from the document.
int32_t randomSeed();

/// The renderer's arguments, each with its leading blank. Paths stand in double quotes and aren't escaped.
String buildLaunchArguments(const Filename& sceneFile, const LaunchOptions& options, int32_t seed);

/// Starts the renderer on a scene or a render queue and leaves it to itself. False when it isn't found or
/// can't be started.
bool launchQuenza(const Filename& sceneFile, const LaunchOptions& options);

/// Starts the renderer on a scene that was made to be looked at, with a search for the renderer before it.
/// Main thread only.
bool openSceneInRenderer(const Filename& sceneFile);

/// Starts a program with these arguments; its argv[0] is its file name without the folder.
bool createProcess(const Filename& executable, const String& arguments, bool lowPriority);
