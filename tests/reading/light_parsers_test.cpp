// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"

namespace Quenza {

namespace {

constexpr const char* SPECTRUM = "<spectrum><uniform><value>3</value></uniform></spectrum>";
constexpr const char* EMITTER =
    "<diffuse><base_emission><constant><uniform><value>3</value></uniform></constant></base_emission>";
constexpr const char* NO_TRIANGLE_COLOURS = "<random_triangle_colours>false</random_triangle_colours>";

class LightParsers : public SceneFiles {
protected:
    /// A scene of the triangle and the light, which is on line 3.
    Ref<SceneNodeRoot> readLight(const std::string& light) {
        Ref<SceneNodeRoot> root = readElements(TRIANGLE + light);
        root->finalise(folder / "scene.qzs"); // all must fit together
        return root;
    }
};

TEST_F(LightParsers, RectangleLightFacesDown) {
    const Ref<SceneNodeRoot> root = readLight(
        std::string("<rectanglelight><pos>1 2 3</pos><width>4</width><height>2</height>") + SPECTRUM +
        "<efficacy_scale><value>800</value></efficacy_scale><layer>2</layer></rectanglelight>");
    SceneNode* const material = nodeNamed(*root, "Rectangle Light Material 0");
    ASSERT_TRUE(material);
    EXPECT_EQ(bodyOf(*material), std::string(EMITTER) + NO_TRIANGLE_COLOURS + "<layer>2</layer></diffuse>");
    auto* const mesh = static_cast<SceneNodeMesh*>(nodeNamed(*root, "Rectangle Light Mesh 0"));
    ASSERT_TRUE(mesh);
    EXPECT_EQ(mesh->mesh->aabb_min, (Vec3f{-2, -1, 0}));
    EXPECT_EQ(mesh->mesh->aabb_max, (Vec3f{2, 1, 0}));
    const Vector<Vec3f>& p = mesh->mesh->vert_positions;
    const u32* const c = mesh->mesh->quads[0].vertex_indices;
    const Vec3f a = p[c[0]], b = p[c[1]], d = p[c[2]];
    EXPECT_LT((b.x - a.x) * (d.y - a.y) - (b.y - a.y) * (d.x - a.x), 0); // z of the normal

    const auto& model = only<SceneNodeModel>(*root, NODE_MODEL);
    EXPECT_EQ(model.getName(), "Rectangle Light Object");
    EXPECT_EQ(model.geometry, mesh);
    EXPECT_EQ(model.materials[0], material);
    EXPECT_EQ(model.keyframes[0].pos, (Vec3d{1, 2, 3}));
    ASSERT_EQ(model.emission_scales.size(), 1u);
    EXPECT_EQ(model.emission_scales[0]->measure, u32(EmissionScale::LUMINOUS_FLUX));
    EXPECT_EQ(model.emission_scales[0]->value, 800);
    EXPECT_EQ(model.emission_scales[0]->material, material);
}

TEST_F(LightParsers, MeshLightShinesOnAllOfItsMesh) {
    const Ref<SceneNodeRoot> root = readLight(
        std::string("<meshlight><pos>1 2 3</pos><rotation><matrix>1 0 0 0 0 -1 0 1 0</matrix></rotation>") +
        SPECTRUM +
        "<texture><path>glow.png</path></texture><efficacy_scale><measure>luminance</measure><value>5</value>"
        "</efficacy_scale><mesh_name>tri</mesh_name><scale>2</scale><ies_profile><path>a.ies</path>"
        "</ies_profile></meshlight>");
    const auto& model = only<SceneNodeModel>(*root, NODE_MODEL);
    EXPECT_EQ(model.getName(), "Mesh Light Object");
    EXPECT_EQ(model.geometry, nodeNamed(*root, "tri"));
    EXPECT_EQ(model.scale, 2);
    EXPECT_EQ(model.rotation->getMatrix().e[5], -1);
    ASSERT_EQ(model.materials.size(), 2u);
    EXPECT_EQ(model.materials[0], model.materials[1]);
    EXPECT_EQ(bodyOf(*model.materials[0]),
              "<diffuse><texture><path>glow.png</path><a>0</a><b>1</b><c>0</c><uv_set_index>0</uv_set_index>"
              "<exponent>2.2</exponent><smooth>false</smooth></texture>" +
                  std::string(EMITTER).substr(9) +
                  "<emission><texture><texture_index>0</texture_index></texture></emission>" +
                  NO_TRIANGLE_COLOURS + "<layer>0</layer></diffuse>");
    EXPECT_EQ(model.emission_scales[0]->measure, u32(EmissionScale::LUMINANCE));
    EXPECT_EQ(model.ies_profiles[0]->path, "a.ies");
    EXPECT_EQ(model.ies_profiles[0]->material, model.materials[0]);
}

} // namespace

} // namespace Quenza
