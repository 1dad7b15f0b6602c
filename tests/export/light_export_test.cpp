// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "headless/model/handles.h"
#include "headless/model/object.h"
#include "host/ids.h"
#include "host/inexclude.h"
#include "host/material.h"
#include "scene/scene_node_section_plane.h"
#include "scene/scene_node_sphere.h"
#include "scene/wavelength_dependent_param.h"
#include "shared/light_layers.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/plugin_state.h"
#include "support/temp_dir.h"

using Quenza::SceneNodeModel;

namespace {

class LightExportTest : public ExporterTest {
protected:
    LightExportTest() { pluginState().pluginPath = std::make_unique<Filename>("/plugins/quenza"); }
    ~LightExportTest() override { pluginState().pluginPath.reset(); }

    BaseObject* addLight(int32_t type, const char* name = "light") {
        BaseObject* const light = add(Olight, name);
        light->GetDataInstance()->SetLong(LIGHT_TYPE, type);
        return light;
    }
    BaseObject* addArea(int32_t shape, const Vector& size) {
        BaseObject* const light = addLight(LIGHT_TYPE_AREA);
        BaseContainer& data = *light->GetDataInstance();
        data.SetLong(LIGHT_AREADETAILS_SHAPE, shape);
        data.SetReal(LIGHT_AREADETAILS_SIZEX, size.x);
        data.SetReal(LIGHT_AREADETAILS_SIZEY, size.y);
        data.SetReal(LIGHT_AREADETAILS_SIZEZ, size.z);
        return light;
    }
    BaseContainer& addLightTag(BaseObject* light) {
        return *addTag(light, PLUGINID_LIGHT_TAG)->GetDataInstance();
    }
    /// The materials "defaultLight", in the order of the lights.
    std::vector<Quenza::SceneNodeMaterial*> lightMaterials() const {
        std::vector<Quenza::SceneNodeMaterial*> found;
        for (auto* const node : nodes<Quenza::SceneNodeMaterial>(Quenza::NODE_MATERIAL)) {
            if (node->getName() == "defaultLight") {
                found.push_back(node);
            }
        }
        return found;
    }
    SceneNodeModel& onlyModel() const {
        EXPECT_EQ(models().size(), 1u);
        return *models().at(0);
    }
    std::vector<Quenza::SceneNodeSphere*> spheres() const {
        return nodes<Quenza::SceneNodeSphere>(Quenza::NODE_SPHERE);
    }
    /// "x y z", the extents of a model's mesh in scene space, rounded to millimetres.
    std::string extents(const SceneNodeModel& shown) const {
        float low[3] = {1e9f, 1e9f, 1e9f}, high[3] = {-1e9f, -1e9f, -1e9f};
        auto* const node = static_cast<Quenza::SceneNodeMesh*>(scene().getChildByUID(shown.geometry_uid));
        for (const Quenza::Vec3f& p : node->mesh->vert_positions) {
            const float position[] = {p.x, p.y, p.z};
            for (int i = 0; i < 3; ++i) {
                low[i] = std::min(low[i], position[i]);
                high[i] = std::max(high[i], position[i]);
            }
        }
        char text[64];
        std::snprintf(text, sizeof text, "%.3f %.3f %.3f", double(high[0] - low[0]), double(high[1] - low[1]),
                      double(high[2] - low[2]));
        return text;
    }
    static std::vector<std::string> iesFiles(const SceneNodeModel& shown) {
        std::vector<std::string> paths;
        for (const auto& profile : shown.ies_profiles) {
            paths.push_back(profile->path.toStdString());
        }
        return paths;
    }
};

const std::string DEFAULT_IES = "/plugins/quenza" + Quenza::nativeText("/presets/default.ies");

} // namespace

TEST_F(LightExportTest, OmniLightsAreBallsOfACentimetreInEveryUnit) {
    BaseObject* const light = addLight(LIGHT_TYPE_OMNI);
    move(light, {1, 2, 3});
    for (const int32_t unit : {1, 2, 3, 4}) {
        host().worldPreferences().SetLong(WPREF_UNITS_BASIC, unit);
        exportScene();
        ASSERT_EQ(spheres().size(), 1u);
        EXPECT_NEAR(spheres()[0]->radius, 0.01, 1e-8) << unit;
        EXPECT_EQ(spheres()[0]->material_uid, context().lightMaterialUID);
        const double scale = double(context().sceneScale);
        EXPECT_NEAR(spheres()[0]->keyframes[0].pos.y, 3.0 * scale, 1e-6 * scale);
        EXPECT_TRUE(models().empty());
    }
}

TEST_F(LightExportTest, AreaLightsHaveTheSizeAndShapeThatTheHostShows) {
    const Vector size(2.0f, 4.0f, 6.0f);
    const struct {
        int32_t shape;
        const char* name;
        // Scene space: the host's Z, in which the light shines, is the scene's Y. Rounds have 50 sides.
        const char* extents;
    } cases[] = {
        {LIGHT_AREADETAILS_SHAPE_DISC, "Disc", "3.000 0.000 2.994"},
        {LIGHT_AREADETAILS_SHAPE_RECTANGLE, "Plane", "2.000 0.000 4.000"},
        {LIGHT_AREADETAILS_SHAPE_SPHERE, "Sphere", "3.992 3.984 4.000"},
        {LIGHT_AREADETAILS_SHAPE_CYLINDER, "Cylinder", "3.000 6.000 2.994"},
        {LIGHT_AREADETAILS_SHAPE_CUBE, "Cube", "2.000 6.000 4.000"},
        {LIGHT_AREADETAILS_SHAPE_HEMISPHERE, "Sphere", "4.000 3.992 2.000"},
    };
    BaseObject* const light = addArea(0, size);
    for (const auto& test : cases) {
        light->GetDataInstance()->SetLong(LIGHT_AREADETAILS_SHAPE, test.shape);
        exportScene();
        const SceneNodeModel& shown = onlyModel();
        EXPECT_EQ(shown.getName().toStdString(), test.name);
        EXPECT_EQ(extents(shown), test.extents) << test.name << test.shape;
        ASSERT_EQ(shown.materials.size(), 1u);
        EXPECT_EQ(shown.materials[0]->getUID(), context().lightMaterialUID);
        EXPECT_TRUE(shown.ies_profiles.empty());
        EXPECT_TRUE(shown.emission_scales.empty());
    }
}

TEST_F(LightExportTest, WhatCannotBeALightLeavesNothing) {
    BaseObject* const light = addArea(7, {1, 1, 1});
    exportScene();
    EXPECT_TRUE(models().empty()) << "a shape that the renderer doesn't have";
    light->GetDataInstance()->SetLong(LIGHT_AREADETAILS_SHAPE, LIGHT_AREADETAILS_SHAPE_OBJECT);
    exportScene();
    EXPECT_TRUE(models().empty()) << "an empty link";
    light->GetDataInstance()->SetLink(LIGHT_AREADETAILS_OBJECT, addCube("no polygons"));
    exportScene();
    EXPECT_EQ(modelNames(), "no polygons") << "a link to another type";
    light->GetDataInstance()->SetLong(LIGHT_TYPE, 3);
    exportScene();
    EXPECT_EQ(lightMaterials().size(), 0u) << "a distant light";
    light->GetDataInstance()->SetLong(LIGHT_TYPE, LIGHT_TYPE_OMNI);
    headless::fromHost(light)->enabled = false;
    exportScene();
    EXPECT_TRUE(spheres().empty()) << "switched off";
}

TEST_F(LightExportTest, SpotLightsAreTinyPlanesThatFaceForwards) {
    addLight(LIGHT_TYPE_SPOT);
    exportScene();
    const SceneNodeModel& spot = onlyModel();
    EXPECT_EQ(extents(spot), "0.001 0.000 0.001");
    const Quenza::Mesh& mesh = meshOf("Plane");
    ASSERT_EQ(mesh.quads.size(), 1u);
    const auto corner = [&mesh](int i) { return mesh.vert_positions[mesh.quads[0].vertex_indices[i]]; };
    const Quenza::Vec3f a = corner(0), b = corner(1), c = corner(2);
    const float facing = (b.z - a.z) * (c.x - a.x) - (b.x - a.x) * (c.z - a.z);
    EXPECT_GT(facing, 0.0f) << "the host's +Z is the scene's +Y";
    EXPECT_EQ(iesFiles(spot), std::vector<std::string>{DEFAULT_IES});
    EXPECT_EQ(spot.ies_profiles[0]->material_uid, context().lightMaterialUID);
}

TEST_F(LightExportTest, IESFilesOfTagsAndTheDefaultOfSpots) {
    const struct {
        int32_t type;
        int32_t useIES;
        std::vector<std::string> expected;
    } cases[] = {
        {LIGHT_TYPE_SPOT, 0, {DEFAULT_IES}},
        {LIGHT_TYPE_SPOT, 1, {"/lamps/street.ies"}},
        {LIGHT_TYPE_AREA, 0, {}},
        {LIGHT_TYPE_AREA, 1, {"/lamps/street.ies"}},
        // Only 1 adds the tag's file, while any other number than 0 keeps the default away.
        {LIGHT_TYPE_SPOT, 2, {}},
        {LIGHT_TYPE_AREA, 2, {}},
    };
    BaseObject* const light = addArea(LIGHT_AREADETAILS_SHAPE_RECTANGLE, {1, 1, 1});
    BaseContainer& tag = addLightTag(light);
    tag.SetFilename(LIGHT_IES_FILE, Filename("/lamps/street.ies"));
    for (const auto& test : cases) {
        light->GetDataInstance()->SetLong(LIGHT_TYPE, test.type);
        tag.SetLong(LIGHT_USE_IES, test.useIES);
        exportScene();
        EXPECT_EQ(iesFiles(onlyModel()), test.expected) << test.type << test.useIES;
    }
}

TEST_F(LightExportTest, LinkedShapesStandAtTheLight) {
    PolygonObject* const shape = addQuad("lampshade");
    addTexture(shape)->SetMaterial(addMaterial(PLUGINID_MATERIAL, "unused"));
    move(shape, {50, 0, 0});
    BaseObject* const light = addArea(LIGHT_AREADETAILS_SHAPE_OBJECT, {1, 1, 1});
    light->GetDataInstance()->SetLink(LIGHT_AREADETAILS_OBJECT, shape);
    move(light, {1, 2, 3});
    exportScene();
    EXPECT_EQ(modelNames(), "lampshade");
    EXPECT_EQ(onlyModel().keyframes[0].pos, (Quenza::Vec3d{1, 3, 2}));
    EXPECT_EQ(context().modelMap.at(light), onlyModel().getUID());
    EXPECT_EQ(context().modelMap.size(), 1u);
    EXPECT_TRUE(context().materialMap.empty());
}

TEST_F(LightExportTest, EqualLightsShareTheirMeshAndObjectsNeverShareIt) {
    addArea(LIGHT_AREADETAILS_SHAPE_CUBE, {200, 200, 200});
    addArea(LIGHT_AREADETAILS_SHAPE_CUBE, {200, 200, 200});
    addCube("cube")->GetDataInstance()->SetLong(PRIM_AXIS, PRIM_AXIS_PLUS_Z);
    exportScene();
    EXPECT_EQ(models().size(), 3u);
    EXPECT_EQ(meshes().size(), 2u);
    EXPECT_EQ(exporter().instanceCount, 1);
    EXPECT_EQ(lightMaterials().size(), 2u);
    EXPECT_NE(models()[0]->materials[0], models()[1]->materials[0]);
    EXPECT_EQ(models()[2]->materials[0]->getUID(), context().defaultMaterialUID);
}
