// SPDX-License-Identifier: MIT
#pragma once

#include "host/menu.h"

#include <list>
#include <optional>

namespace headless {

/// The host's menus that plug-ins add to, as containers: the Picture Viewer's and the material manager's. The
/// host has no commands of its own in them, only its sub-menus. Main thread only.
class Menus {
public:
    /// As the host makes them, before a plug-in was asked.
    Menus();

    /// Null when there is none of that name. Valid as long as the menu is there.
    BaseContainer* find(const String& name);
    /// In their order.
    const std::list<BaseContainer>& all() const { return menus_; }
    /// For a host that doesn't have this menu.
    void remove(const String& name);

    /// Looks in `menu` and all below it for a command, or a sub-menu of that name: the container that holds
    /// the entry, with the entry's index in it. Null when there is none.
    static BaseContainer* search(BaseContainer& menu, const String& entry, int32_t& index);

private:
    std::list<BaseContainer> menus_;
};

/// The number in "PLUGIN_CMD_1023599"; nothing for another text.
std::optional<int32_t> pluginCommandOf(const String& entry);

} // namespace headless
