// SPDX-License-Identifier: MIT
#include "headless/runtime/menus.h"

#include <charconv>

namespace headless {

namespace {

struct SubMenuText {
    const char* name;
    const char* title;
};

constexpr SubMenuText PICTURE_VIEWER[] = {{"IDS_OUTWINDOW_FILE", "File"},
                                          {"IDS_OUTWINDOW_EDIT", "Edit"},
                                          {"IDS_OUTWINDOW_VIEW", "View"},
                                          {"IDS_OUTWINDOW_ANIMATION", "Animation"}};
constexpr SubMenuText MATERIAL_MANAGER[] = {{"IDS_MATERIALMANAGER_CREATE", "Create"},
                                            {"IDS_MATERIALMANAGER_EDIT", "Edit"},
                                            {"IDS_MATERIALMANAGER_FUNCTION", "Function"}};

BaseContainer makeMenu(const char* name, const char* title) {
    BaseContainer menu;
    menu.InsData(MENURESOURCE_STRING, GeData(name));
    menu.InsData(MENURESOURCE_SUBTITLE, GeData(title));
    return menu;
}

template <size_t Count>
BaseContainer makeMenu(const char* name, const char* title, const SubMenuText (&subMenus)[Count]) {
    BaseContainer menu = makeMenu(name, title);
    for (const SubMenuText& subMenu : subMenus) {
        menu.InsData(MENURESOURCE_SUBMENU, GeData(makeMenu(subMenu.name, subMenu.title)));
    }
    return menu;
}

bool isNamed(const BaseContainer& menu, const String& name) {
    return menu.GetString(MENURESOURCE_STRING) == name;
}

} // namespace

Menus::Menus() {
    menus_.push_back(makeMenu("M_PICTURE_VIEWER", "Picture Viewer", PICTURE_VIEWER));
    menus_.push_back(makeMenu("M_MATERIAL_MANAGER", "Material Manager", MATERIAL_MANAGER));
}

BaseContainer* Menus::find(const String& name) {
    for (BaseContainer& menu : menus_) {
        if (isNamed(menu, name)) {
            return &menu;
        }
    }
    return nullptr;
}

void Menus::remove(const String& name) {
    menus_.remove_if([&](const BaseContainer& menu) { return isNamed(menu, name); });
}

BaseContainer* Menus::search(BaseContainer& menu, const String& entry, int32_t& index) {
    for (int32_t i = 0; i < menu.GetCount(); ++i) {
        const int32_t kind = menu.GetIndexId(i);
        GeData& data = menu.GetIndexData(i);
        const bool isCommand = kind == MENURESOURCE_COMMAND || kind == MENURESOURCE_FIRST_COMMAND;
        BaseContainer* const subMenu = kind == MENURESOURCE_SUBMENU ? data.GetContainer() : nullptr;
        if ((isCommand && data.GetString() == entry) || (subMenu && isNamed(*subMenu, entry))) {
            index = i;
            return &menu;
        }
        if (BaseContainer* const found = subMenu ? search(*subMenu, entry, index) : nullptr) {
            return found;
        }
    }
    return nullptr;
}

std::optional<int32_t> pluginCommandOf(const String& entry) {
    constexpr std::string_view PREFIX = "PLUGIN_CMD_";
    const std::string& text = entry.GetUtf8();
    if (!text.starts_with(PREFIX)) {
        return std::nullopt;
    }
    const char* const end = text.data() + text.size();
    int32_t number = 0;
    const auto [stop, error] = std::from_chars(text.data() + PREFIX.size(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace headless
