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

} // namespace
} // namespace Quenza
