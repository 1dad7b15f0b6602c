// SPDX-License-Identifier: MIT
#include "plugin/runtime_library.h"

#include "host/general.h"
#include "render/renderer_location.h"
#include "shared/plugin_state.h"

#include <cerrno>

namespace {

constexpr const char* DEVELOPMENT_FOLDER = "D:/Work/Exporters/Cquenza/QuenzaSDK/QuenzaSDK_3.6.24";
constexpr const char* LIBRARY_FILE = "quenza_sdk.dll";
constexpr const char* RT_LIBRARY_FILE = "quenza_rt_sdk.dll";

/// A development tree goes before a library that was shipped with the plug-in, and that before an installed
/// renderer.
Filename libraryFolder() {
    const Filename development(DEVELOPMENT_FOLDER);
    if (GeFExist(development, true)) {
        return development + "binaries" + "vs2012_64";
    }
    const Filename shipped =
        (pluginState().pluginPath ? *pluginState().pluginPath : Filename()) + "quenza_x64";
    if (GeFExist(shipped, true)) {
        return shipped;
    }
    const Filename installed = getRegistryInstallDirectory();
    return installed.Content() ? installed : shipped;
}

void printFailure(int32_t code, const String& reason) {
    GePrint(String("Failed initialising Quenza sdk (error code:") + LongToString(code) + "):");
    GePrint(reason);
}

} // namespace

void announceRuntimeLibrary() {
    const Filename folder = libraryFolder();
    GePrint(String("Loading quenza from: ") + folder.GetString());
    const bool hasLibrary = GeFExist(folder + LIBRARY_FILE);
    if (!hasLibrary && !GeFExist(folder + RT_LIBRARY_FILE)) {
        printFailure(20, String("Failed to load DLL from '") + folder.GetString() +
                             "' (Error code: " + LongToString(ENOENT) + ")");
    } else {
        printFailure(22, "This build of the plug-in renders with the external program only.");
    }
    pluginState().isRTEdition = !hasLibrary;
}
