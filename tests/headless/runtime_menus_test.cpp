// SPDX-License-Identifier: MIT
#include "headless/app/menu_list.h"
#include "headless/runtime_fixture.h"

namespace headless {
namespace {

class MenuListTest : public RuntimeTest {};

TEST_F(MenuListTest, ShowsWhereCommandsStandAndWhetherTheyCanBeUsed) {
    start().loadPlugin(Quenza::PLUGIN_PATH);
    host().open(std::make_unique<Document>());
    host().menus().find("M_MATERIAL_MANAGER")->InsData(MENURESOURCE_COMMAND, GeData("PLUGIN_CMD_77"));
    EXPECT_EQ(menuList(host()),
              "MENU                                       ID       STATE           HELP\n"
              "Picture Viewer (M_PICTURE_VIEWER)\n"
              "  File (IDS_OUTWINDOW_FILE)\n"
              "  Edit (IDS_OUTWINDOW_EDIT)\n"
              "  View (IDS_OUTWINDOW_VIEW)\n"
              "  Quenza Renderer\n"
              "    Quenza Tonemapping                     1023599  enabled         Quenza Interactive "
              "Tonemapping Dialog\n"
              "    Pause Rendering                        1023695  disabled        Quenza Pause Rendering\n"
              "    Resume Rendering                       1023696  disabled        Quenza Resume Rendering\n"
              "    Update Image                           1027825  disabled        Quenza Update Image\n"
              "  Animation (IDS_OUTWINDOW_ANIMATION)\n"
              "Material Manager (M_MATERIAL_MANAGER)\n"
              "  Create (IDS_MATERIALMANAGER_CREATE)\n"
              "  Edit (IDS_MATERIALMANAGER_EDIT)\n"
              "  Function (IDS_MATERIALMANAGER_FUNCTION)\n"
              "  New Quenza Material                      1024454  enabled         New Quenza Material\n"
              "  PLUGIN_CMD_77                            77       not registered\n"
              "Plugins\n"
              "  Bake UVW Tag of Quenza Material...       1024339  disabled        Bake UVW Tag of Quenza "
              "Material\n"
              "  Bake Quenza Material on Object...        1024338  disabled        Bake Material on Object\n"
              "  About Quenza for Cinema 4D               1020894  enabled         About\n"
              "  Convert Materials to Quenza              1021852  enabled         Convert Materials\n"
              "  Import Quenza Material...                1022469  enabled         Import .qzm\n"
              "  Render with Quenza                       1023920  enabled         Render with Quenza\n"
              "  --                                       1022283  enabled\n");
}

} // namespace
} // namespace headless
