// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_sphere.h"
#include "support/system_texts.h"

#include <set>

namespace Quenza {

namespace {

class SceneParser : public SceneFiles {
protected:
    static const SceneNodeRenderSettings& settingsOf(const Ref<SceneNodeRoot>& root) {
        return only<SceneNodeRenderSettings>(*root, NODE_RENDER_SETTINGS);
    }
};

TEST_F(SceneParser, RefusesBadDocuments) {
    const std::string path = (folder / "scene.qzs").toStdString();
    const struct {
        std::string text;
        std::string message;
    } cases[] = {
        {"<scenedata/>", "Invalid root element 'scenedata'"},
        {"<scene>", "failed to load XML doc from path '" + path +
                        "': Error reading Element value.  (Line 1, column 8.)"},
    };
    for (const auto& [text, message] : cases) {
        put("scene.qzs", text);
        EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { read(); }), message);
    }
    std::filesystem::remove(path);
    EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { read(); }),
              "Failed to open XML doc from path '" + path + "': " + noSuchFile());
}

TEST_F(SceneParser, NumbersNodesAroundThoseWithUIDs) {
    const Ref<SceneNodeRoot> root =
        readElements("<material><name>first</name><null_material/></material>"
                     "<sphere><radius>1</radius><material_name>first</material_name></sphere>"
                     "<sphere><uid>1</uid><radius>1</radius><material_uid>2</material_uid></sphere>"
                     "<material><uid>2</uid><name>later</name><null_material/></material>"
                     "<material><uid>4294967294</uid><name>last</name><null_material/></material>");
    std::set<u32> uids{root->getUID().value(), SceneNodeUID::INVALID_VALUE};
    for (const Ref<SceneNode>& node : root->getChildren())
        EXPECT_TRUE(uids.insert(node->getUID().value()).second) << node->getUID().value();
    EXPECT_EQ(root->getChildren()[2]->getUID().value(), 1u);
    EXPECT_EQ(nodeNamed(*root, "later")->getUID().value(), 2u);

    bind(*root);
    EXPECT_EQ(static_cast<SceneNodeSphere&>(*root->getChildren()[1]).material, nodeNamed(*root, "first"));
    EXPECT_EQ(static_cast<SceneNodeSphere&>(*root->getChildren()[2]).material, nodeNamed(*root, "later"));
}

TEST_F(SceneParser, LaysSettingsOverEachOther) {
    put("inifile.xml", "<config><renderer_settings><width>100</width><height>200</height>"
                       "<max_depth>5</max_depth></renderer_settings></config>");
    put("scene.qzs", "<scene><renderer_settings><uid>40</uid><height>300</height><max_depth>6</max_depth>"
                     "</renderer_settings></scene>");
    const Ref<SceneNodeRoot> root =
        read({folder.path()}, "<max_depth>7</max_depth><white_point><chromaticity_coordinates>0.25 0.5"
                              "</chromaticity_coordinates></white_point>");
    const SceneNodeRenderSettings& settings = settingsOf(root);
    EXPECT_EQ(settings.getUID().value(), 40u);
    EXPECT_EQ(settings.getInt("width"), 100);
    EXPECT_EQ(settings.getInt("height"), 300);
    EXPECT_EQ(settings.getInt("max_depth"), 7);
    EXPECT_EQ(settings.getInt("super_sample_factor"), 2);
    EXPECT_EQ(settings.white_point->x, 0.25);

    put("scene.qzs", "<scene/>");
    EXPECT_EQ(settingsOf(read({folder.path()})).getInt("max_depth"), 5);
}

TEST_F(SceneParser, TellsWhichSettingsAreWrong) {
    put("scene.qzs", "<scene/>");
    EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { read({folder.path()}); }),
              "Error reading inifile.xml: Failed to open XML doc from path '" +
                  (folder / "inifile.xml").toStdString() + "': " + noSuchFile());
    put("inifile.xml", "<config/>");
    EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { QuenzaModelParser().readIniFile(folder.path()); }),
              "Error reading inifile.xml: Failed to find expected element 'renderer_settings'  (In element "
              "'config', around line 1, column 1)");
    EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { read({}, "<width>wide</width>"); }),
              "Error while parsing '--settings' argument: Failed to parse integer from 'wide'  (In element "
              "'width', around line 1, column 66)");
}

TEST_F(SceneParser, LeavesTheRootAloneOnFailure) {
    const Ref<SceneNodeRoot> before = readElements("");
    Ref<SceneNodeRoot> root = before;
    put("scene.qzs", "<scene><teapot/></scene>");
    EXPECT_THROW(QuenzaModelParser().parseScene(root, folder / "scene.qzs", {}, ""), QuenzaModelParserExcep);
    EXPECT_TRUE(root == before);
}

} // namespace

} // namespace Quenza
