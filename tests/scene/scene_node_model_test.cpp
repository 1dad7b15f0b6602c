// SPDX-License-Identifier: MIT
#include "scene/scene_node_model.h"

#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_parametric_surface.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_sphere.h"
#include "scene/scene_visitor.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace Quenza {
namespace {

KeyFrame keyAt(double time, const Vec3d& pos = {0, 0, 0}) {
    return KeyFrame{pos, time, {0, 0, 1}, 0};
}

/// A root with a mesh (UID 1) that refers to two materials, and three materials (UIDs 2 to 4).
class SceneNodeModelTest : public testing::Test {
protected:
    SceneNodeModelTest() {
        mesh_node->name = "Cube";
        mesh_node->mesh = new Mesh;
        mesh_node->mesh->num_materials_referenced = 2;
        mesh_node->mesh->addMaterialUsed("default0");
        mesh_node->mesh->addMaterialUsed("default1");
        root->addChild(mesh_node.getPointer());
        for (Ref<SceneNodeMaterial>& material : materials) {
            material = new SceneNodeMaterial;
            root->addChild(material.getPointer());
        }
        model->uid = SceneNodeUID(10);
        model->rotation = new MatrixRotation;
        model->keyframes.push_back(keyAt(0, {1, 2.5, -3}));
        root->addChild(model.getPointer());
    }

    void useUIDs() {
        model->geometry_uid = mesh_node->uid;
        model->material_uids = {materials[0]->uid, materials[1]->uid};
    }
    std::string bind() {
        SceneVisitor visitor;
        return thrownText([&] { model->doVisit(visitor); });
    }

    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    const Ref<SceneNodeMesh> mesh_node = new SceneNodeMesh;
    Ref<SceneNodeMaterial> materials[3];
    const Ref<SceneNodeModel> model = new SceneNodeModel;
};

TEST_F(SceneNodeModelTest, WritesAllItsParts) {
    model->geometry = mesh_node;
    model->geometry_uid = SceneNodeUID(99);
    model->scale = 0.5;
    model->invisible_to_camera = true;
    model->materials = {materials[0], materials[2]};
    const Ref<IESProfile> profile = new IESProfile;
    profile->material_uid = SceneNodeUID(77);
    profile->path = "lamp.ies";
    const Ref<EmissionScale> scale = new EmissionScale;
    scale->measure = EmissionScale::LUMINANCE;
    scale->value = 100;
    scale->material = materials[1];
    const Ref<EmissionScale> silent = new EmissionScale;
    silent->measure = EmissionScale::NO_MEASURE;
    model->ies_profiles.push_back(profile);
    model->emission_scales = {silent, scale};
    EXPECT_EQ(xmlLine(*model),
              "<model2><uid>10</uid><name>Model</name><geometry_uid>1</geometry_uid><scale>0.5</scale>"
              "<invisible_to_camera>true</invisible_to_camera><rotation><matrix>1 0 0 0 1 0 0 0 1"
              "</matrix></rotation><keyframe><time>0</time><pos>1 2.5 -3</pos><rotation_quaternion>"
              "<axis>0 0 1</axis><angle>0</angle></rotation_quaternion></keyframe><materials>"
              "<material_uid>2</material_uid><material_uid>4</material_uid></materials><ies_profile>"
              "<material_uid>77</material_uid><path>lamp.ies</path></ies_profile><emission_scale>"
              "<measure>luminance</measure><value>100</value><material_uid>3</material_uid>"
              "</emission_scale></model2>");
}

TEST_F(SceneNodeModelTest, WritesTheLeastWithoutReferences) {
    useUIDs();
    model->keyframes.clear();
    model->rotation = new AxisRotation({0, 1, 0}, 0.5);
    EXPECT_EQ(xmlLine(*model),
              "<model2><uid>10</uid><name>Model</name><geometry_uid>1</geometry_uid><scale>1</scale>"
              "<rotation><axis_rotation><axis>0 1 0</axis><angle>0.5</angle></axis_rotation></rotation>"
              "<materials></materials></model2>");
    model->rotation = nullptr;
    EXPECT_EQ(thrownText([&] { xmlLine(*model); }), "Model 'Model' has no rotation.");
}

TEST_F(SceneNodeModelTest, BindsByUID) {
    useUIDs();
    EXPECT_EQ(bind(), "no exception");
    EXPECT_EQ(model->geometry, mesh_node);
    EXPECT_EQ(model->materials[0], materials[0]);
    EXPECT_EQ(model->materials[1], materials[1]);
    model->geometry_uid = SceneNodeUID(99);
    EXPECT_EQ(bind(), "no exception") << "what is bound stays";
}

TEST_F(SceneNodeModelTest, TellsWhichReferenceIsBroken) {
    useUIDs();
    model->material_uids[1] = SceneNodeUID(99);
    EXPECT_EQ(bind(), "While processing node 'Model', UID 10:  Failed to find material for UID 99");
    model->materials.clear();
    model->material_uids[1] = mesh_node->uid;
    EXPECT_EQ(bind(), "While processing node 'Model', UID 10:  Referenced node (UID 1) did not have type "
                      "SceneNodeMaterial");
    model->geometry = nullptr;
    model->geometry_uid = SceneNodeUID(98);
    EXPECT_EQ(bind(), "While processing node 'Model', UID 10:  Failed to find geometry for UID 98");
    model->geometry_uid = materials[0]->uid;
    EXPECT_EQ(bind(), "Referenced node did not have type SceneNodeMesh or SceneNodeParametricSurface");
    root->removeChild(model.getPointer());
    EXPECT_EQ(bind(), "While binding geometry: root node was NULL");
}

TEST_F(SceneNodeModelTest, NeedsAMaterialForEachThatTheMeshRefersTo) {
    mesh_node->mesh->num_materials_referenced = 4;
    model->geometry = mesh_node;
    model->materials = {materials[0], materials[1]};
    EXPECT_EQ(
        bind(),
        "Model (UID 10, name 'Model') has a different number of materials assigned than the geometry "
        "references.\nnum materials assigned: 2, geometry num materials referenced: 4.  SDK Users: make "
        "sure you call endOfModel() on QuenzaMesh objects");
    model->materials.resize(5, materials[0]);
    EXPECT_EQ(bind(), "no exception");
    model->materials.clear();
    model->geometry = new SceneNodeParametricSurface;
    EXPECT_EQ(bind(), "no exception") << "only meshes refer to materials";
}

TEST_F(SceneNodeModelTest, BindsEmissionByUIDOrByTheMeshsName) {
    useUIDs();
    const Ref<EmissionScale> by_uid = new EmissionScale;
    by_uid->material_uid = materials[2]->uid;
    const Ref<IESProfile> by_name = new IESProfile;
    by_name->material_name = "default1";
    model->emission_scales.push_back(by_uid);
    model->ies_profiles.push_back(by_name);
    EXPECT_EQ(bind(), "no exception");
    EXPECT_EQ(by_uid->material, materials[2]);
    EXPECT_EQ(by_name->material, materials[1]);

    by_name->material = nullptr;
    model->materials = {materials[2], materials[0]};
    EXPECT_EQ(bind(), "no exception");
    EXPECT_EQ(by_name->material, materials[0]) << "bound materials go before stored UIDs";
}

TEST_F(SceneNodeModelTest, TellsWhichEmissionIsBroken) {
    useUIDs();
    const Ref<IESProfile> profile = new IESProfile;
    const Ref<EmissionScale> scale = new EmissionScale;
    model->ies_profiles.push_back(profile);
    EXPECT_EQ(bind(), "Failed binding material to IES profile in model Model: Invalid UID.");
    model->emission_scales.push_back(scale);
    EXPECT_EQ(bind(), "Failed binding material to Emission scale in model Model: Invalid UID.");
    scale->material_name = "wood";
    EXPECT_EQ(bind(), "Material 'wood' is not defined on mesh Cube.");
    scale->material_name = "default1";
    model->material_uids.resize(1);
    EXPECT_EQ(bind(), "Failed binding material to Emission scale in model Model: Invalid UID.");
    model->material_uids.clear();
    EXPECT_EQ(bind(), "No materials assigned to model Model.");
    scale->material_uid = mesh_node->uid;
    EXPECT_EQ(bind(), "Node with UID 1 was not a material node.");
}

TEST_F(SceneNodeModelTest, TakesPartInVisits) {
    model->geometry = mesh_node;
    model->geometry_uid = SceneNodeUID(1);
    model->material_uids = {SceneNodeUID(2), SceneNodeUID::INVALID};
    mesh_node->path = "cube.obj";
    const Ref<IESProfile> shared = new IESProfile;
    shared->path = "a.ies";
    model->ies_profiles = {shared};
    const Ref<SceneNodeModel> twin = new SceneNodeModel;
    twin->ies_profiles = {shared};

    SceneVisitor collect;
    collect.mode = SceneVisitor::COLLECT_DEPENDENCIES;
    model->doVisit(collect);
    ASSERT_EQ(collect.dependencies.size(), 2u);
    EXPECT_EQ(collect.dependencies[0], "cube.obj");
    EXPECT_EQ(collect.dependencies[1], "a.ies");

    SceneVisitor update;
    update.mode = SceneVisitor::UPDATE_DEPENDENCIES;
    update.path_map.insert("a.ies", "b.ies");
    model->doVisit(update);
    twin->doVisit(update);
    EXPECT_EQ(shared->path, "b.ies");

    SceneVisitor offset;
    offset.mode = SceneVisitor::OFFSET_UIDS;
    offset.uid_offset = 100;
    model->doVisit(offset);
    EXPECT_EQ(model->uid.value(), 110u);
    EXPECT_EQ(model->geometry_uid.value(), 101u);
    EXPECT_EQ(model->material_uids[0].value(), 102u);
    EXPECT_FALSE(model->material_uids[1].isValid());
}

TEST_F(SceneNodeModelTest, ClonesAndCompares) {
    useUIDs();
    bind();
    model->setFlags(1);
    model->emission_scales.push_back(new EmissionScale);
    const Ref<SceneNode> copy = model->clone();
    EXPECT_EQ(copy->getRefCount(), 1u);
    EXPECT_EQ(copy->getParent(), nullptr);
    EXPECT_EQ(copy->getFlags(), 1u);
    EXPECT_EQ(xmlText(*copy), xmlText(*model));
    EXPECT_TRUE(copy->doIsEqual(*model));
    const std::vector<u32> expected{1, 2, 3};
    std::vector<u32> uids;
    for (const SceneNodeUID uid : copy->getReferencedUIDs())
        uids.push_back(uid.value());
    EXPECT_EQ(uids, expected);

    const Ref<SceneNodeMesh> other_mesh = new SceneNodeMesh;
    static_cast<SceneNodeModel*>(copy.getPointer())->geometry = other_mesh;
    EXPECT_FALSE(copy->doIsEqual(*model));
}

TEST_F(SceneNodeModelTest, GrowsTheBoxAlongItsPath) {
    mesh_node->mesh->addVertex({-1, -1, -1});
    mesh_node->mesh->addVertex({1, 1, 3});
    mesh_node->mesh->endOfModel();
    model->geometry = mesh_node;
    model->scale = 2;
    model->rotation = new MatrixRotation(Matrix3d{{0, -1, 0, 1, 0, 0, 0, 0, 1}});
    model->keyframes = {keyAt(0, {10, 0, 0}), keyAt(1, {20, 0, 0})};
    SceneVisitor visitor;
    visitor.mode = SceneVisitor::BOUNDING_BOX;
    model->doVisit(visitor);
    const f32 min[3] = {8, -2, -2};
    const f32 max[3] = {22, 2, 6};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(visitor.aabb_min[i], min[i]);
        EXPECT_EQ(visitor.aabb_max[i], max[i]);
    }
    model->keyframes.clear();
    EXPECT_EQ(thrownText([&] { model->doVisit(visitor); }), "Must be at least one frame.");
}

TEST_F(SceneNodeModelTest, RebindsGeometryAndMaterials) {
    useUIDs();
    bind();
    const Ref<SceneNodeMesh> new_mesh = new SceneNodeMesh;
    new_mesh->uid = mesh_node->uid;
    const Ref<SceneNodeMaterial> new_material = new SceneNodeMaterial;
    new_material->uid = materials[1]->uid;
    const Ref<SceneNodeSphere> wrong_type = new SceneNodeSphere;
    wrong_type->uid = materials[0]->uid;
    root->replaceNodes({Ref<SceneNode>(new_mesh), Ref<SceneNode>(new_material), Ref<SceneNode>(wrong_type)});
    EXPECT_EQ(model->geometry, new_mesh);
    EXPECT_EQ(model->materials[0], materials[0]);
    EXPECT_EQ(model->materials[1], new_material);
}

} // namespace
} // namespace Quenza
