// SPDX-License-Identifier: MIT
#include "reading/older_model_parser.h"
#include "reading/scene_fixture.h"
#include "scene/scene_node_material.h"

#include <cmath>

namespace Quenza {

namespace {

class ModelParser : public SceneFiles {
protected:
    /// A scene with materials, the triangle and the element, which is on line 5.
    std::string wholeScene(const std::string& element) { return std::string(MATERIALS) + TRIANGLE + element; }
    SceneNodeModel& readModel(const std::string& element) {
        root = readElements(wholeScene(element));
        return only<SceneNodeModel>(*root, NODE_MODEL);
    }

    Ref<SceneNodeRoot> root;
};

TEST_F(ModelParser, ReadsTheOlderForm) {
    SceneNodeModel& model = readModel(
        "<model><pos>1 2 3</pos><end_pos>2 2 3</end_pos><rotation><matrix>0 -2 0 2 0 0 0 0 "
        "2</matrix></rotation>"
        "<final_rotation><matrix>-2 0 0 0 -2 0 0 0 2</matrix></final_rotation><scale>3</scale>"
        "<mesh_name>tri</mesh_name><invisible_to_camera>true</invisible_to_camera>"
        "<emission_scale><measure>luminous_flux</measure><value>5</value><material_name>blue</material_name>"
        "</emission_scale><ies_profile><path>a.ies</path><material_name>red</material_name></ies_profile>"
        "</model>");
    bind(*root);
    EXPECT_EQ(model.getName(), "tri instance");
    EXPECT_EQ(model.geometry, nodeNamed(*root, "tri"));
    EXPECT_EQ(model.scale, 3);
    EXPECT_TRUE(model.invisible_to_camera);
    ASSERT_EQ(model.materials.size(), 2u);
    EXPECT_EQ(model.materials[0], nodeNamed(*root, "red"));
    EXPECT_EQ(model.materials[1], nodeNamed(*root, "blue"));
    EXPECT_EQ(model.emission_scales[0]->material, nodeNamed(*root, "blue"));
    EXPECT_EQ(model.ies_profiles[0]->material, nodeNamed(*root, "red"));
    EXPECT_EQ(model.ies_profiles[0]->path, "a.ies");
    ASSERT_EQ(model.keyframes.size(), 2u);
    EXPECT_EQ(model.keyframes[0].pos, (Vec3d{1, 2, 3}));
    EXPECT_EQ(model.keyframes[0].rotation_angle, 0);
    EXPECT_EQ(model.keyframes[1].time, 1);
    EXPECT_EQ(model.keyframes[1].pos, (Vec3d{2, 2, 3}));
    EXPECT_NEAR(model.keyframes[1].rotation_angle, std::acos(0.0), 1e-12);
    EXPECT_NEAR(model.keyframes[1].rotation_axis.z, 1, 1e-12);
}

/// The turn, applied to the first matrix, gives the second one.
TEST(FindTurn, TakesOneMatrixToTheOther) {
    const Matrix3d from{{2, 0.5, 0, 0, 1, 0, 0, -0.25, 3}};
    const Vec3d axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0.6, -0.8, 0}, {-0.48, 0.6, 0.64}};
    for (const Vec3d& axis : axes)
        for (const double angle : {0.0, 1e-7, 0.5, 2.0, 3.1415, 3.141592653589793, -1.0}) {
            const Matrix3d turn = axisAngleMatrix(axis, angle);
            Matrix3d to{};
            for (int i = 0; i < 9; ++i)
                for (int k = 0; k < 3; ++k)
                    to.e[i] += turn.e[i / 3 * 3 + k] * from.e[3 * k + i % 3];
            Vec3d found_axis{};
            double found_angle = 0;
            ASSERT_TRUE(findTurn(from, to, found_axis, found_angle));
            const Matrix3d found = axisAngleMatrix(found_axis, found_angle);
            for (int i = 0; i < 9; ++i)
                EXPECT_NEAR(found.e[i], turn.e[i], 2e-7) << angle;
        }
    Vec3d axis{};
    double angle = 0;
    EXPECT_FALSE(findTurn(Matrix3d{}, from, axis, angle));
    EXPECT_FALSE(findTurn(from, Matrix3d::identity(), axis, angle));
    EXPECT_FALSE(findTurn(Matrix3d::identity(), Matrix3d{{-1, 0, 0, 0, 1, 0, 0, 0, 1}}, axis, angle));
}

TEST_F(ModelParser, OlderFormLoadsItsExternalMesh) {
    put("tri.obj", "usemtl blue\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    root = readElements(std::string(MATERIALS) +
                        "<mesh><name>obj</name><external><path>tri.obj</path></external></mesh>"
                        "<model><mesh_name>obj</mesh_name><pos>0 0 0</pos></model>");
    const auto& model = only<SceneNodeModel>(*root, NODE_MODEL);
    ASSERT_EQ(model.materials.size(), 1u);
    EXPECT_EQ(model.materials[0], nodeNamed(*root, "blue"));
    root->finalise(folder / "scene.qzs");
}

} // namespace

} // namespace Quenza
