// SPDX-License-Identifier: MIT
#include "plugin/runtime_library.h"

#include "export/gpu_devices.h"
#include "foundation/exceptions.h"
#include "foundation/platform.h"
#include "foundation/string.h"
#include "host/general.h"
#include "render/render_state.h"
#include "render/renderer_location.h"
#include "render/runtime/hardware_info.h"
#include "render/runtime/quenza_context.h"
#include "shared/plugin_state.h"
#include "shared/text.h"

namespace {

constexpr const char* DEVELOPMENT_FOLDER = "D:/Work/Exporters/Cquenza/QuenzaSDK/QuenzaSDK_3.6.24";

/// A development tree goes before a library that was shipped with the plug-in, and that before an installed
/// renderer.
Filename libraryFolder() {
    const Filename development(DEVELOPMENT_FOLDER);
    // Away from Windows it would be a place below the current folder.
    if (Quenza::PlatformUtils::isAbsolutePath(DEVELOPMENT_FOLDER) && GeFExist(development, true)) {
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

/// Empty when the system names no folder of the kind.
Quenza::String dataFolder() {
    try {
        return Quenza::PlatformUtils::getAppDataDirectory() +
               Quenza::String(1, Quenza::PlatformUtils::SEPARATOR) + "Quenza Renderer";
    } catch (const Quenza::PlatformUtils::PlatformUtilsExcep& exception) {
        GePrint(exception.what());
        return "";
    }
}

void listDevices() {
    try {
        if (const auto list = HardwareInfo(quenzaContext()).getGPUInfo()) {
            for (const auto& device : list->devices) {
                gpuDevices().push_back({toHostString(device.name), device.kind});
            }
        }
    } catch (const Quenza::QuenzaException& exception) {
        GePrint(exception.what());
    }
}

} // namespace

void startRuntimeLibrary() {
    const Filename folder = libraryFolder();
    GePrint(String("Loading quenza from: ") + folder.GetString());
    quenzaContext() = new QuenzaContext;
    Quenza::String reason;
    const int32_t code = loadLibrary(*quenzaContext(), toSceneString(folder), dataFolder(), reason);
    if (code != LOADLIBRARY_OK) {
        GePrint(String("Failed initialising Quenza sdk (error code:") + LongToString(code) + "):");
        GePrint(toHostString(reason));
    }
    gpuDevices().clear();
    if (isLibraryLoaded()) {
        listDevices();
    }
    pluginState().isRTEdition = !hasFullRenderer(toSceneString(folder));
    if (isLibraryLoaded()) {
        GePrint(pluginState().isRTEdition ? "Successfully initialised Quenza RT."
                                          : "Successfully initialised Quenza Renderer.");
    }
}

void endRuntimeLibrary() {
    clearRenderState();
    quenzaContext() = nullptr;
}
