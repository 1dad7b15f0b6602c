// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include "host/menu.h"

namespace {

/// A menu's entries, those of sub-menus in brackets: numbers and texts.
std::string describe(const BaseContainer& menu) {
    std::string text;
    for (int32_t i = 0; i < menu.GetCount(); ++i) {
        const GeData& data = menu.GetIndexData(i);
        text += (i ? ", " : "") + std::to_string(menu.GetIndexId(i)) + " ";
        text += data.GetContainer() ? "[" + describe(*data.GetContainer()) + "]" : data.GetString().GetUtf8();
    }
    return text;
}

class MenusTest : public Session {
protected:
    std::string menu(const char* name) {
        const BaseContainer* const found = host().menus().find(name);
        return found ? describe(*found) : "none";
    }
    void loadPlugin() { host().loadPlugin(Quenza::PLUGIN_PATH); }
};

constexpr const char* RENDERER_MENU = "2 [1 Quenza Renderer, 4 PLUGIN_CMD_1023599, 3 PLUGIN_CMD_1023695, "
                                      "3 PLUGIN_CMD_1023696, 3 PLUGIN_CMD_1027825]";

TEST_F(MenusTest, GetThePluginsEntriesOnce) {
    startHost();
    const std::string pictureViewer = menu("M_PICTURE_VIEWER");
    const std::string materials = menu("M_MATERIAL_MANAGER");
    loadPlugin();
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(menu("M_MATERIAL_MANAGER"), materials + ", 3 PLUGIN_CMD_1024454");
        std::string added = menu("M_PICTURE_VIEWER");
        const size_t at = added.find(RENDERER_MENU);
        ASSERT_NE(at, std::string::npos) << added;
        // Right behind the sub-menu "View", and nothing else is touched.
        int32_t index = 0;
        BaseContainer* const holder =
            SearchMenuResource(host().menus().find("M_PICTURE_VIEWER"), "IDS_OUTWINDOW_VIEW", index);
        ASSERT_TRUE(holder);
        EXPECT_EQ("2 [" + describe(*holder->GetIndexData(index + 1).GetContainer()) + "]", RENDERER_MENU);
        added.erase(at - 2, std::string(RENDERER_MENU).size() + 2);
        EXPECT_EQ(added, pictureViewer);
        host().buildMenus();
    }
}

TEST_F(MenusTest, StayAsTheyAreInAHostWithOtherNames) {
    startHost();
    BaseContainer& pictureViewer = *host().menus().find("M_PICTURE_VIEWER");
    while (pictureViewer.RemoveData(MENURESOURCE_SUBMENU)) {
    }
    const std::string before = menu("M_PICTURE_VIEWER");
    host().menus().remove("M_MATERIAL_MANAGER");
    loadPlugin();
    EXPECT_EQ(menu("M_PICTURE_VIEWER"), before);
    EXPECT_EQ(menu("M_MATERIAL_MANAGER"), "none");
    host().menus().remove("M_PICTURE_VIEWER");
    const std::vector<std::string> errors = host().errors().lines();
    host().buildMenus();
    EXPECT_EQ(host().errors().lines(), errors);
}

} // namespace
