// SPDX-License-Identifier: MIT
#pragma once

/// Finds the folder of the renderer's run-time library, tells it and the outcome on the console, and settles
/// whether the realtime edition is in use. Without the library the plug-in still exports and launches.
void announceRuntimeLibrary();
