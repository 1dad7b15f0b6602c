// SPDX-License-Identifier: MIT
#include "plugin/plugin_lifecycle.h"

#include "export/version.h"
#include "host/ids.h"
#include "host/tables.h"
#include "plugin/menus.h"
#include "plugin/preview_scenes.h"
#include "plugin/registrations.h"
#include "plugin/runtime_library.h"
#include "render/launch.h"
#include "shared/plugin_state.h"

#include <new>

namespace {

int32_t initCount = 0;

void printBanner() {
    GePrint(String("\n") + DECORATION);
    GePrint(String("._.-. ") + exporterVersionString());
    GePrint(String("._.-. Developed by: ") + DEVELOPER_CREDIT);
    GePrint("._.-. For more information go to: the README and docs folder of the plug-in");
    GePrint(String(DECORATION) + "\n");
}

} // namespace

int32_t initPlugin(const HostTable* tables, const Filename* pluginFolder) {
    if (++initCount != 1) {
        return 1;
    }
    if (!tables || tables->apiVersion < API_VERSION || !pluginFolder) {
        initCount = 0;
        return -3;
    }
    SetHostTables(tables);
    pluginState().pluginPath.reset(new (std::nothrow) Filename(*pluginFolder));
    return 1;
}

bool PluginStart() {
    startRuntimeLibrary();
    pluginState().openScene = openSceneInRenderer;
    if (!registerPlugins()) {
        return false;
    }
    addPreviewScenes();
    printBanner();
    return true;
}

int32_t endPlugin() {
    if (initCount > 0 && --initCount == 0) {
        endRuntimeLibrary();
        GeFreeResource();
        pluginState().pluginPath.reset();
        pluginState().openScene = nullptr;
    }
    return 1;
}

bool PluginMessage(int32_t id, void* /*data*/) {
    switch (id) {
    case C4DMSG_NONE:
        return true;
    case C4DMSG_LOAD_RESOURCES:
        return pluginState().pluginPath && GeLoadResource(*pluginState().pluginPath);
    case C4DMSG_BUILD_MENUS:
        enhanceMaterialManagerMenu();
        enhancePictureViewerMenu();
        return true;
    default:
        return false;
    }
}
