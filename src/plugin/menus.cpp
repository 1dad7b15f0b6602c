// SPDX-License-Identifier: MIT
#include "plugin/menus.h"

#include "host/menu.h"
#include "shared/plugin_ids.h"

namespace {

constexpr int32_t PICTURE_VIEWER_COMMANDS[] = {PLUGINID_TONEMAPPING_COMMAND, PLUGINID_PAUSE_COMMAND,
                                               PLUGINID_RESUME_COMMAND, PLUGINID_UPDATE_IMAGE_COMMAND};

String commandEntry(int32_t id) {
    return String("PLUGIN_CMD_") + LongToString(id);
}

BaseContainer makeRendererMenu() {
    BaseContainer menu;
    menu.InsData(MENURESOURCE_SUBTITLE, GeData("Quenza Renderer"));
    int32_t kind = MENURESOURCE_FIRST_COMMAND;
    for (const int32_t command : PICTURE_VIEWER_COMMANDS) {
        menu.InsData(kind, GeData(commandEntry(command)));
        kind = MENURESOURCE_COMMAND;
    }
    return menu;
}

} // namespace

void enhancePictureViewerMenu() {
    BaseContainer* const menu = GetMenuResource("M_PICTURE_VIEWER");
    int32_t place = 0;
    if (!menu || SearchMenuResource(menu, commandEntry(PLUGINID_TONEMAPPING_COMMAND), place)) {
        return;
    }
    if (BaseContainer* const holder = SearchMenuResource(menu, "IDS_OUTWINDOW_VIEW", place)) {
        holder->InsDataAt(place + 1, MENURESOURCE_SUBMENU, GeData(makeRendererMenu()));
    }
}

void enhanceMaterialManagerMenu() {
    BaseContainer* const menu = GetMenuResource("M_MATERIAL_MANAGER");
    const String entry = commandEntry(PLUGINID_NEW_MATERIAL_COMMAND);
    int32_t place = 0;
    if (menu && !SearchMenuResource(menu, entry, place)) {
        menu->InsData(MENURESOURCE_COMMAND, GeData(entry));
    }
}
