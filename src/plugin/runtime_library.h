// SPDX-License-Identifier: MIT
#pragma once

/// Finds the renderer's run-time library and starts it, tells the folder and the outcome on the console, and
/// settles which devices there are and whether the realtime edition is in use. Without the library the
/// plug-in still exports and launches. Main thread.
void startRuntimeLibrary();

/// Lets go of a render that is still on and of the library. Main thread.
void endRuntimeLibrary();
