// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_sphere.h"

#include <set>

namespace Quenza {

namespace {

class SceneParser : public SceneFiles {
protected:
    static const SceneNodeRenderSettings& settingsOf(const Ref<SceneNodeRoot>& root) {
        return only<SceneNodeRenderSettings>(*root, NODE_RENDER_SETTINGS);
    }
};

TEST_F(SceneParser, AnEmptySceneGetsDefaultSettingsAndBackground) {
    const Ref<SceneNodeRoot> root = readElements("");
    ASSERT_EQ(root->getChildren().size(), 2u);
    EXPECT_EQ(root->getChildren()[0]->getType(), NODE_BACKGROUND_SETTINGS);
    EXPECT_EQ(root->getChildren()[1]->getType(), NODE_RENDER_SETTINGS);
    SceneNodeRenderSettings defaults;
    EXPECT_EQ(bodyOf(*root->getChildren()[1]), bodyOf(defaults));
    root->checkValidity();
}

TEST_F(SceneParser, ReadsEveryElementOfAScene) {
    const struct {
        const char* element;
        const char* nodes; ///< Type numbers of the nodes that it makes.
    } cases[] = {
        {"<alias_material><current_name>red</current_name><new_name>r</new_name></alias_material>", ""},
        {"<rectanglelight><pos>0 0 1</pos><width>1</width><height>1</height><spectrum><uniform><value>1"
         "</value></uniform></spectrum></rectanglelight>",
         "3 4 5 "},
        {"<meshlight><pos>0 0 0</pos><mesh_name>tri</mesh_name><spectrum><uniform><value>1</value></uniform>"
         "</spectrum></meshlight>",
         "3 5 "},
        {"<exit_portal><pos>0 0 0</pos><mesh_name>tri</mesh_name></exit_portal>", "3 5 "},
        {"<layer_name>Sun</layer_name>", ""},
        {"<renderer_settings/>", "2 "},
        {"<camera/>", "1 "},
        {"<material><name>x</name><null_material/></material>", "3 "},
        {"<medium><name>m</name><precedence>1</precedence><epidermis><melanin_fraction>0.1</melanin_fraction>"
         "<melanin_type_blend>0.5</melanin_type_blend></epidermis></medium>",
         "7 "},
        {"<sphere><radius>1</radius><material_uid>11</material_uid></sphere>", "6 "},
        {"<mesh><external><path>a.obj</path></external></mesh>", "4 "},
        {"<parametric_surface><shader><shader>s</shader></shader></parametric_surface>", "12 "},
        {"<scatter><shader><shader>s</shader></shader><geometry_uid>5</geometry_uid></scatter>", "13 "},
        {"<model><pos>0 0 0</pos><mesh_name>tri</mesh_name></model>", "5 "},
        {"<model2><geometry_uid>7</geometry_uid><rotation><matrix>1 0 0 0 1 0 0 0 1</matrix></rotation>"
         "</model2>",
         "5 "},
        {"<skylight/>", "10 "},
        {"<tonemapping><linear><scale>1</scale></linear></tonemapping>", "8 "},
        {"<background_settings/>", "10 "},
        {"<background><spectrum><uniform><value>1</value></uniform></spectrum></background>", "10 "},
        {"<env_map><path>sky.exr</path></env_map>", "10 "},
        {"<metadata/>", "11 "},
        {"<section_plane/>", "14 "},
    };
    for (const auto& [element, nodes] : cases) {
        SCOPED_TRACE(element);
        put("scene.qzs", "<scene>" + std::string(MATERIALS) + TRIANGLE + element + "</scene>");
        const Ref<SceneNodeRoot> root = read();
        std::string types;
        for (u64 i = 3; i < root->getChildren().size(); ++i)
            types += std::to_string(root->getChildren()[i]->getType()) + " ";
        const std::string expected = nodes;
        if (expected.find("10 ") == std::string::npos)
            EXPECT_EQ(types, expected == "2 " ? "2 10 " : expected + "10 2 ");
        else
            EXPECT_EQ(types, "10 2 ");
        root->checkValidity();
    }
}

TEST_F(SceneParser, RefusesBadElements) {
    const BadScene cases[] = {
        {"<teapot/>\n", "Unknown element type  (In element 'teapot', around line 2, column 1)"},
        {"<alias_material><current_name>nobody</current_name><new_name>x</new_name></alias_material>\n",
         "Tried to create an alias for the material with name 'nobody', which has not been defined.    (In "
         "element 'alias_material', around line 2, column 1)"},
        {"<alias_material><old/></alias_material>\n",
         "Found unexpected element 'old'  (In element 'old', around line 2, column 17)"},
        {"<sphere><radius>1</radius><material_name>nobody</material_name></sphere>\n",
         "Material 'nobody' is not defined.   (In element 'sphere', around line 2, column 1)"},
        {"<mesh><name>a</name></mesh>\n",
         "Mesh not created. (missing 'embedded', 'embedded_2' or 'external' element)   (In element 'mesh', "
         "around line 2, column 1)"},
        {"<mesh><name>a</name><external><path>a.ply</path></external></mesh>\n"
         "<mesh><name>a</name><external><path>b.ply</path></external></mesh>\n",
         "Mesh with name 'a' already defined; mesh names must be unique.   (In element 'mesh', around line "
         "3, "
         "column 1)"},
        {"<mesh><embedded/><external><path>a.ply</path></external></mesh>\n",
         "Found unexpected element 'external',  already parsed mutually exclusive element 'embedded'  (In "
         "element 'external', around line 2, column 18)"},
        {"<mesh><external/></mesh>\n",
         "could not find element 'path'  (In element 'external', around line 2, column 7)"},
        {"<mesh><size>1</size></mesh>\n",
         "Found unexpected element 'size'  (In element 'size', around line 2, column 7)"},
        {"<mesh><embedded_2><triangle v=\"0 0 0\" m=\"0\"/></embedded_2></mesh>\n",
         "Triangle vertex index is out of bounds. (vertex index=0)"},
    };
    for (const auto& [elements, message] : cases)
        EXPECT_EQ(refusal(elements), message) << elements;
}

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
              "Failed to open XML doc from path '" + path + "': No such file or directory");
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

TEST_F(SceneParser, AliasesOfAliasesAreTheMaterial) {
    const Ref<SceneNodeRoot> root =
        readElements(std::string(MATERIALS) +
                     "<alias_material><current_name>red</current_name><new_name>a</new_name></alias_material>"
                     "<alias_material><current_name>a</current_name><new_name>b</new_name></alias_material>"
                     "<sphere><radius>1</radius><material_name>b</material_name></sphere>");
    EXPECT_EQ(only<SceneNodeSphere>(*root, NODE_SPHERE).material, nodeNamed(*root, "red"));
}

TEST_F(SceneParser, ReadsMeshesWithTheirOptions) {
    const std::string options =
        "<max_num_subdivisions>3</max_num_subdivisions><subdivide_pixel_threshold>5</"
        "subdivide_pixel_threshold>"
        "<subdivide_curvature_threshold>0.25</subdivide_curvature_threshold>"
        "<displacement_error_threshold>0.5</displacement_error_threshold>"
        "<view_dependent_subdivision>false</view_dependent_subdivision>"
        "<subdivision_smoothing>false</subdivision_smoothing><normal_smoothing>true</normal_smoothing>"
        "<merge_vertices_with_same_pos_and_normal>false</merge_vertices_with_same_pos_and_normal>"
        "<wrap_u>true</wrap_u><wrap_v>true</wrap_v>"
        "<view_dependent_subdivision>false</view_dependent_subdivision><scale>2</scale>"
        "<external><path>a b.obj</path></external>";
    const Ref<SceneNodeRoot> root =
        readElements("<mesh><uid>7</uid><name>m</name>" + options + "</mesh>" +
                     "<mesh><embedded><vertex pos=\"1 2 3\"/></embedded><scale>2</scale></mesh>");
    EXPECT_EQ(bodyOf(*root->getChildren()[0]), options);
    EXPECT_EQ(root->getChildren()[0]->getUID().value(), 7u);
    EXPECT_EQ(static_cast<SceneNodeMesh&>(*root->getChildren()[1]).mesh->vert_positions[0], (Vec3f{2, 4, 6}));
}

TEST_F(SceneParser, NamelessMeshesTakeNoNameOfTheFile) {
    const String last = SceneNodeMesh().getName(); // "Mesh " and a counter
    const u64 next = std::stoull(last.toStdString().substr(5)) + 1;
    const std::string external = "<external><path>a.ply</path></external></mesh>";
    const Ref<SceneNodeRoot> root =
        readElements("<mesh>" + external + "<mesh><name>Mesh " + std::to_string(next) + "</name>" + external);
    EXPECT_EQ(root->getNumChildrenOfType(NODE_MESH), 2u);
    EXPECT_EQ(root->getChildren()[0]->getName(), root->getChildren()[1]->getName());
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

TEST_F(SceneParser, TakesWhitePointAndLayersFromElsewhere) {
    const std::string camera = "<camera><white_point>D50</white_point></camera>";
    const std::string names = "<layer_name>Sun</layer_name><layer_name>Lamps</layer_name>";
    const Ref<SceneNodeRoot> root = readElements(camera + names);
    EXPECT_FLOAT_EQ(float(settingsOf(root).white_point->x), 0.34567f);
    ASSERT_EQ(settingsOf(root).getNumLayers(), 2u);
    EXPECT_EQ(settingsOf(root).getLayer(1)->name, "Lamps");

    const Ref<SceneNodeRoot> own = readElements(
        names + "<renderer_settings><layer_setting><name>Own</name><xyz>1 1 1</xyz><gain>1</gain>"
                "</layer_setting></renderer_settings>");
    ASSERT_EQ(settingsOf(own).getNumLayers(), 1u);
    EXPECT_EQ(settingsOf(own).getLayer(0)->name, "Own");
}

TEST_F(SceneParser, TellsWhichSettingsAreWrong) {
    put("scene.qzs", "<scene/>");
    EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { read({folder.path()}); }),
              "Error reading inifile.xml: Failed to open XML doc from path '" +
                  (folder / "inifile.xml").toStdString() + "': No such file or directory");
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
