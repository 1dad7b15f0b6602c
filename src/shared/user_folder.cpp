// SPDX-License-Identifier: MIT
#include "shared/user_folder.h"

#include "foundation/platform.h"
#include "host/general.h"
#include "shared/text.h"

Filename getUserFolder() {
    const Filename appData = toFilename(Quenza::PlatformUtils::getAppDataDirectory());
    const Filename folder = appData + "Quenza for Cinema 4D";
    if (!GeFExist(folder, true)) {
        if (!GeFExist(appData, true)) {
            GeFCreateDir(appData);
        }
        GeFCreateDir(folder);
    }
    return folder;
}
