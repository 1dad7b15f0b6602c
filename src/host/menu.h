// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"

/// Entries of a menu's container, in their order; a number may occur often.
enum MenuEntry : int32_t {
    /// The title, a string.
    MENURESOURCE_SUBTITLE = 1,
    /// A container.
    MENURESOURCE_SUBMENU = 2,
    /// A string, "PLUGIN_CMD_" and the command's number for a plug-in's.
    MENURESOURCE_COMMAND = 3,
    /// The first command of a menu that a plug-in makes.
    MENURESOURCE_FIRST_COMMAND = 4,
    /// The menu's own name, a string.
    MENURESOURCE_STRING = 5,
};

/// The host's live container of a menu; null when the host has none of that name. Main thread, while menus
/// are built.
BaseContainer* GetMenuResource(const String& name);
/// Looks for a command or the name of a sub-menu in a menu and all below it. The container that holds the
/// entry, with its index; null when there is none. A sub-menu's place is the place of its container.
BaseContainer* SearchMenuResource(BaseContainer* menu, const String& entry, int32_t& index);
