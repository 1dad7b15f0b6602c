// SPDX-License-Identifier: MIT
#include "plugin/preview_scenes.h"

#include "foundation/file_utils.h"
#include "host/general.h"
#include "shared/plugin_ids.h"
#include "shared/plugin_state.h"
#include "shared/text.h"

void addPreviewScenes() {
    if (!pluginState().pluginPath) {
        return;
    }
    const Filename folder = *pluginState().pluginPath + "res" + "materialpreview";
    if (!GeFExist(folder, true)) {
        return;
    }
    try {
        for (const Quenza::String& entry : Quenza::FileUtils::getFilesInDir(toSceneString(folder))) {
            if (!AddUserPreviewScene(folder + toFilename(entry), PLUGINID_MATERIAL)) {
                GePrint(String("Failed loading preview scene: ") + toHostString(entry));
            }
        }
    } catch (const Quenza::FileUtils::FileUtilsExcep& exception) {
        GePrint(exception.what());
    }
}
