// SPDX-License-Identifier: MIT
#include "render/renderer_location.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "host/general.h"
#include "render/settings_file.h"
#include "shared/plugin_state.h"
#include "shared/text.h"
#include "shared/user_folder.h"

#include <exception>

namespace {

constexpr const char* RENDERER_KEY = "Software\\Tessaly Works\\Quenza Renderer";
constexpr const char* RT_KEY = "Software\\Tessaly Works\\Quenza RT";
constexpr const char* INSTALL_VALUE = "InstallDirectory";
constexpr const char* RENDERER_PROGRAM = "quenza.exe";
constexpr const char* CONSOLE_PROGRAM = "quenza_console.exe";

Filename settingsPath() {
    return getUserFolder() + "cquenzaSettings.cfg";
}

} // namespace

Filename getRegistryInstallDirectory() {
    const Quenza::String full = Quenza::PlatformUtils::readRegistryText(RENDERER_KEY, INSTALL_VALUE);
    const Quenza::String realtime = Quenza::PlatformUtils::readRegistryText(RT_KEY, INSTALL_VALUE);
    const bool preferRealtime = pluginState().isRTEdition && !realtime.empty();
    return toFilename(preferRealtime || full.empty() ? realtime : full);
}

bool quenzaExecutableExists(const Filename& directory) {
    return directory.Content() && GeFExist(directory + RENDERER_PROGRAM);
}

bool findRenderer(Filename& executable, bool console) {
    Filename directory = getRegistryInstallDirectory();
    if (!quenzaExecutableExists(directory) &&
        (!readSettings(settingsPath(), directory) || !quenzaExecutableExists(directory))) {
        return false;
    }
    executable = directory + (console ? CONSOLE_PROGRAM : RENDERER_PROGRAM);
    return true;
}

bool chooseRendererDirectory() {
    Filename directory;
    do {
        if (!directory.FileSelect(FILESELECT_DIRECTORY, "Please choose the Quenza directory.")) {
            return false;
        }
    } while (!quenzaExecutableExists(directory));
    saveSettings(&directory);
    return true;
}

void saveSettings(const Filename* rendererDirectory) {
    writeSettings(settingsPath(), rendererDirectory);
}

bool findOrChooseRenderer() {
    try {
        Filename executable;
        return findRenderer(executable, false) ||
               (chooseRendererDirectory() && findRenderer(executable, false));
    } catch (const std::exception& exception) {
        GePrint(exception.what());
        return false;
    }
}
