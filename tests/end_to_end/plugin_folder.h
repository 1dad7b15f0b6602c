// SPDX-License-Identifier: MIT
#pragma once

#include "support/built_files.h"

#include <filesystem>
#include <string>

// The plug-in in a folder of a test, beside which another run-time library lies than the built one, or none.

/// Puts the plug-in there and gives its file.
inline std::filesystem::path placePlugin(const std::filesystem::path& folder) {
    for (const char* const entry : {Quenza::PLUGIN_NAME, "res"}) {
        Quenza::link(std::filesystem::path(QUENZA_BIN_DIR) / entry, folder / entry);
    }
    return folder / Quenza::PLUGIN_NAME;
}

/// Puts a library there that was built into `builtFolder`, under the name given, and gives its file.
inline std::filesystem::path placeLibrary(const std::filesystem::path& folder, const std::string& builtFolder,
                                          const std::string& name) {
    const std::filesystem::path file = folder / "quenza_x64" / name;
    std::filesystem::create_directories(file.parent_path());
    Quenza::link(std::filesystem::path(QUENZA_BIN_DIR) / builtFolder / "quenza_sdk.dll", file);
    return file;
}
