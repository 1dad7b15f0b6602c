// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "headless/model/handles.h"
#include "host/ids.h"
#include "host/inexclude.h"
#include "scene/scene_node_section_plane.h"
#include "scene/scene_node_sphere.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

class TraversalTest : public ExporterTest {
protected:
    BaseObject* addSectionPlane(std::initializer_list<BaseObject*> objects) {
        BaseObject* const plane = add(PLUGINID_SECTION_PLANE, "plane");
        InExcludeData list;
        for (BaseObject* const object : objects) {
            list.InsertObject(object, 0);
        }
        plane->GetDataInstance()->SetData(SECTION_OBJECTS, GeData(list));
        return plane;
    }
    const Quenza::SceneNodeSectionPlane& sectionPlane() const {
        return *nodes<Quenza::SceneNodeSectionPlane>(Quenza::NODE_SECTION_PLANE).at(0);
    }
    /// Names of the models that a section plane lists.
    std::string listed() const {
        std::string names;
        for (const Quenza::SceneNodeUID uid : sectionPlane().object_list) {
            for (const Quenza::SceneNodeModel* const node : models()) {
                names += node->getUID() == uid ? node->getName().toStdString() : "";
            }
        }
        return names;
    }
};

} // namespace

TEST_F(TraversalTest, CompositingTagHoldsForTheBranchUntilTheNext) {
    BaseObject* const hidden = addQuad("hidden");
    BaseObject* const inherits = addQuad("inherits", hidden);
    BaseObject* const seen = addQuad("seen", inherits);
    addQuad("below", seen);
    addInstance("instance", addQuad("linked"), inherits);
    setInvisible(hidden, true);
    setInvisible(seen, false);
    exportScene();
    const std::pair<const char*, bool> expected[] = {
        {"hidden", true}, {"inherits", true}, {"seen", false}, {"below", false}};
    for (const auto& [name, isInvisible] : expected) {
        EXPECT_EQ(model(name)->invisible_to_camera, isInvisible) << name;
    }
    ASSERT_EQ(modelNames(), "hidden inherits seen below linked linked");
    EXPECT_TRUE(models()[4]->invisible_to_camera);
    EXPECT_FALSE(models()[5]->invisible_to_camera);
}

TEST_F(TraversalTest, InstanceEntersItsLinkAtItsOwnPlace) {
    BaseObject* const linked = addQuad("linked");
    BaseObject* const child = addQuad("child", linked);
    addQuad("sibling");
    move(linked, {100, 0, 0});
    move(child, {0, 5, 0});
    BaseObject* const instance = addInstance("instance", linked);
    move(instance, {1, 2, 3});
    scale(instance, {2, 2, 2});
    exportScene();
    EXPECT_EQ(modelNames(), "linked child sibling linked child");
    EXPECT_EQ(models()[3]->keyframes[0].pos, (Quenza::Vec3d{1, 3, 2}));
    EXPECT_EQ(models()[4]->keyframes[0].pos, (Quenza::Vec3d{1, 3, 12}));
    EXPECT_EQ(meshes().size(), 1u);
    EXPECT_EQ(exporter().instanceCount, 4);
}

TEST_F(TraversalTest, InstancesThatLeadNowhereAreSkipped) {
    BaseObject* const parent = addQuad("parent");
    addInstance("own parent", parent, parent);
    BaseObject* const own = add(PLUGINID_INSTANCE, "own", parent);
    own->GetDataInstance()->SetLink(INSTANCE_LINK, parent);
    add(PLUGINID_INSTANCE, "no link");
    BaseObject* const linked = addQuad("linked");
    headless::fromHost(addInstance("switched off", linked))->enabled = false;
    hide(addInstance("hidden", linked));
    BaseObject* const itself = addInstance("itself", nullptr);
    itself->GetDataInstance()->SetLink(INSTANCEOBJECT_LINK, itself);
    exportScene();
    EXPECT_EQ(modelNames(), "parent linked");
}

TEST_F(TraversalTest, HiddenLinkShowsAtInstancesOnlyWhereItIsItselfShown) {
    BaseObject* const hiddenParent = add(Onull, "parent");
    hide(hiddenParent);
    BaseObject* const linked = addQuad("linked", hiddenParent);
    addInstance("instance", linked);
    exportScene();
    EXPECT_EQ(modelNames(), "linked"); // what hides it lies above the link
    hide(linked);
    exportScene();
    EXPECT_EQ(modelNames(), "");
}

TEST_F(TraversalTest, ChainsOfInstancesFitTheStack) {
    constexpr int depth = 6000;
    BaseObject* const store = add(Onull, "store");
    hide(store);
    BaseObject* link = addQuad("link", store);
    for (int i = 0; i < depth; ++i) {
        BaseObject* const holder = add(Onull, "holder", store);
        addInstance("instance", link, holder);
        link = holder;
    }
    addInstance("entry", link);
    exportScene();
    EXPECT_EQ(modelNames(), "link");
}

TEST_F(TraversalTest, ShapesOfAreaLightsAreNoObjects) {
    BaseObject* const shape = addQuad("shape");
    addQuad("other");
    BaseObject* const light = add(Olight, "light");
    BaseContainer& data = *light->GetDataInstance();
    data.SetLong(LIGHT_TYPE, LIGHT_TYPE_AREA);
    data.SetLong(LIGHT_AREADETAILS_SHAPE, LIGHT_AREADETAILS_SHAPE_OBJECT);
    data.SetLink(LIGHT_AREADETAILS_OBJECT, shape);
    exportScene();
    EXPECT_EQ(modelNames(), "other shape") << "the second is the light";
    data.SetLong(LIGHT_AREADETAILS_SHAPE, LIGHT_AREADETAILS_SHAPE_RECTANGLE);
    exportScene();
    EXPECT_EQ(modelNames(), "shape other Plane");
    data.SetLong(LIGHT_AREADETAILS_SHAPE, LIGHT_AREADETAILS_SHAPE_OBJECT);
    hide(light);
    exportScene();
    EXPECT_EQ(modelNames(), "shape other");
}

TEST_F(TraversalTest, SectionPlaneListsModelsOfItsObjects) {
    const struct {
        bool withChildren;
        bool culls;
        const char* listed;
    } cases[] = {{true, true, "parent child cubed cubed parent child "},
                 {false, true, "parent cubed parent "},
                 {true, false, ""}};
    // With children, what stands in a cache is seen twice: by its generator and by itself.
    BaseObject* const parent = addQuad("parent ");
    addQuad("child ", parent);
    BaseObject* const cube = addCube("cubed ");
    addInstance("instance", parent);
    addQuad("other ");
    BaseObject* const plane = addSectionPlane({parent, cube});
    for (const auto& c : cases) {
        plane->GetDataInstance()->SetBool(SECTION_WITH_CHILDREN, c.withChildren);
        plane->GetDataInstance()->SetBool(SECTION_CULL_GEOMETRY, c.culls);
        exportScene();
        EXPECT_EQ(listed(), c.listed);
        EXPECT_EQ(sectionPlane().cull_geometry, c.culls);
    }
}

TEST_F(TraversalTest, PerfectSpheresAreMeshesOnTheGPU) {
    BaseObject* const sphere = add(Osphere, "sphere");
    sphere->GetDataInstance()->SetBool(PRIM_SPHERE_PERFECT, true);
    options.gpuRendering = true;
    exportScene();
    EXPECT_EQ(nodes<Quenza::SceneNodeSphere>(Quenza::NODE_SPHERE).size(), 0u);
    EXPECT_EQ(modelNames(), "sphere");
}

TEST_F(TraversalTest, ObjectsWithoutAPlaceAreLeftOutByName) {
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    move(addQuad("lost"), {notANumber, 0, 0});
    addQuad("found");
    exportScene();
    EXPECT_EQ(modelNames(), "found");
    EXPECT_EQ(consoleLines(),
              (std::vector<std::string>{"0.036000",
                                        "Object \"lost\" is left out: its matrix holds no finite numbers."}));
}
