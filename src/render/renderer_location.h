// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

// Where the renderer is installed.

/// The renderer's install folder by the registry, empty when no key holds a value. The full renderer goes
/// before the realtime edition, unless the realtime library is the one in use.
Filename getRegistryInstallDirectory();

/// True when "quenza.exe" lies in the folder as a file.
bool quenzaExecutableExists(const Filename& directory);

/// Looks for the renderer by the registry, then by the settings file. On success `executable` is the path of
/// "quenza_console.exe" with `console`, else of "quenza.exe". The console program is presumed to lie beside
/// the other.
bool findRenderer(Filename& executable, bool console);

/// Asks the artist for the renderer's folder until the choice holds "quenza.exe", and stores it in the
/// settings file. False when cancelled. Main thread only.
bool chooseRendererDirectory();

/// Asks the artist when the renderer isn't found; false when there is still none. Main thread only.
bool findOrChooseRenderer();

/// Stores the renderer's folder in the settings file. With a null path the file is only written back. A file
/// that can't be written isn't reported.
void saveSettings(const Filename* rendererDirectory);
