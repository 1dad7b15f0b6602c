// SPDX-License-Identifier: MIT
#include "headless/app/menu_list.h"

#include "headless/app/text_table.h"
#include "headless/model/handles.h"

namespace headless {

namespace {

/// Flags of a command that stands in other menus than Plugins.
constexpr int32_t IN_OTHER_MENUS = 0x10000000 | 0x20000000;

std::string stateOf(CommandData& command, const Document* document) {
    const int32_t state = command.GetState(toHost(document));
    std::string text = (state & CMD_ENABLED) != 0 ? "enabled" : "disabled";
    return (state & CMD_VALUE) != 0 ? text + ", checked" : text;
}

/// A name without the "#$3 " by which the host sorts its menu.
std::string shownName(const PluginInfo& info) {
    const std::string name = info.name.GetUtf8();
    const size_t blank = name.starts_with("#$") ? name.find(' ') : std::string::npos;
    return blank == std::string::npos ? name : name.substr(blank + 1);
}

class MenuList {
public:
    explicit MenuList(Host& host) : host_(host) {}

    void addMenu(const BaseContainer& menu, size_t depth) {
        const std::string name = menu.GetString(MENURESOURCE_STRING).GetUtf8();
        const std::string title = menu.GetString(MENURESOURCE_SUBTITLE).GetUtf8();
        add(depth, title + (name.empty() ? "" : " (" + name + ")"), "", "", "");
        for (int32_t i = 0; i < menu.GetCount(); ++i) {
            const GeData& data = menu.GetIndexData(i);
            switch (menu.GetIndexId(i)) {
            case MENURESOURCE_SUBMENU:
                if (const BaseContainer* const subMenu = data.GetContainer()) {
                    addMenu(*subMenu, depth + 1);
                }
                break;
            case MENURESOURCE_COMMAND:
            case MENURESOURCE_FIRST_COMMAND:
                addEntry(data.GetString(), depth + 1);
                break;
            default:
                break;
            }
        }
    }

    void addPlugins() {
        add(0, "Plugins", "", "", "");
        for (const std::unique_ptr<Registration>& registration : host_.registrations().all()) {
            if (registration->command && (registration->info.info & IN_OTHER_MENUS) == 0) {
                addCommand(*registration, 1);
            }
        }
    }

    std::string text() const { return table_.text(); }

private:
    void addEntry(const String& entry, size_t depth) {
        const std::optional<int32_t> id = pluginCommandOf(entry);
        const Registration* const registration = id ? host_.registrations().find(*id) : nullptr;
        if (registration && registration->command) {
            addCommand(*registration, depth);
        } else {
            add(depth, entry.GetUtf8(), id ? std::to_string(*id) : "", "not registered", "");
        }
    }

    void addCommand(const Registration& registration, size_t depth) {
        const PluginInfo& info = registration.info;
        add(depth, shownName(info), std::to_string(info.id), stateOf(*registration.command, host_.document()),
            info.help.GetUtf8());
    }

    void add(size_t depth, const std::string& text, const std::string& id, const std::string& state,
             const std::string& help) {
        table_.add({std::string(depth * 2, ' ') + text, id, state, help});
    }

    Host& host_;
    TextTable table_{{"MENU", "ID", "STATE", "HELP"}};
};

} // namespace

std::string menuList(Host& host) {
    MenuList list(host);
    for (const BaseContainer& menu : host.menus().all()) {
        list.addMenu(menu, 0);
    }
    list.addPlugins();
    return list.text();
}

} // namespace headless
