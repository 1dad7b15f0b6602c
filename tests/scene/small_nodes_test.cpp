// SPDX-License-Identifier: MIT
#include "scene/materials/null_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/scene_node_background_settings.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_metadata.h"
#include "scene/scene_node_parametric_surface.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_scatter.h"
#include "scene/scene_node_section_plane.h"
#include "scene/scene_node_sphere.h"
#include "scene/scene_visitor.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

template <class Node>
Ref<Node> newNode(u32 uid = 3) {
    const Ref<Node> node = new Node;
    node->uid = SceneNodeUID(uid);
    node->name = "N";
    return node;
}

SceneVisitor offsetBy(u32 offset) {
    SceneVisitor visitor;
    visitor.mode = SceneVisitor::OFFSET_UIDS;
    visitor.uid_offset = offset;
    return visitor;
}

TEST(SphereTest, WritesBindsAndClones) {
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    const Ref<SceneNodeSphere> sphere = newNode<SceneNodeSphere>();
    const Ref<SceneNodeMaterial> material = newNode<SceneNodeMaterial>(8);
    root->addChild(sphere.getPointer());
    root->addChild(material.getPointer());
    sphere->keyframes.push_back(KeyFrame{{0, 0, 1}, 0.5, {0, 0, 1}, 0});
    sphere->radius = 0.25;
    sphere->material_uid = SceneNodeUID(8);
    const std::string xml =
        "<sphere><uid>3</uid><name>N</name><keyframe><time>0.5</time><pos>0 0 1</pos>"
        "<rotation_quaternion><axis>0 0 1</axis><angle>0</angle></rotation_quaternion></keyframe>"
        "<radius>0.25</radius><material_uid>8</material_uid></sphere>";
    EXPECT_EQ(xmlLine(*sphere), xml);
    SceneVisitor bind;
    sphere->doVisit(bind);
    EXPECT_EQ(sphere->material, material);
    EXPECT_TRUE(sphere->usesNode(material.getPointer()));
    EXPECT_FALSE(sphere->usesNode(nullptr));
    EXPECT_EQ(sphere->getReferencedUIDs()[0].value(), 8u);

    const Ref<SceneNode> copy = sphere->clone();
    EXPECT_EQ(xmlLine(*copy), xml);
    EXPECT_TRUE(static_cast<SceneNodeSphere*>(copy.getPointer())->material.isNull());
    EXPECT_EQ(thrownText([&] { copy->doVisit(bind); }), "While binding sphere: root node was NULL");

    SceneVisitor box;
    box.mode = SceneVisitor::BOUNDING_BOX;
    sphere->doVisit(box);
    EXPECT_EQ(box.aabb_min[2], 0.75f);
    EXPECT_EQ(box.aabb_max[0], 0.25f);
    sphere->keyframes.push_back(sphere->keyframes[0]);
    EXPECT_EQ(thrownText([&] { sphere->doVisit(box); }), "First frame must have time <= 0.0");
}

TEST(ScatterTest, Binds) {
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    root->addChild(newNode<SceneNodeMesh>(5).getPointer());
    const Ref<SceneNodeScatter> scatter = newNode<SceneNodeScatter>();
    root->addChild(scatter.getPointer());
    scatter->geometry_uid = SceneNodeUID(5);
    scatter->material_uids = {SceneNodeUID(5)};
    SceneVisitor bind;
    EXPECT_EQ(
        thrownText([&] { scatter->doVisit(bind); }),
        "While processing node 'N', UID 3:  Referenced node (UID 5) did not have type SceneNodeMaterial");
    EXPECT_EQ(thrownText([&] { newNode<SceneNodeScatter>()->doVisit(bind); }),
              "While binding geometry: root node was NULL");
}

TEST(SectionPlaneTest, WritesItsListWhenThereIsOne) {
    const Ref<SceneNodeSectionPlane> plane = newNode<SceneNodeSectionPlane>();
    plane->point = {1, 2, 3};
    plane->object_list_type = SceneNodeSectionPlane::INCLUDE;
    const std::string start =
        "<section_plane><uid>3</uid><name>N</name><point>1 2 3</point><normal>0 0 1</normal>"
        "<enabled>true</enabled><cull_geometry>true</cull_geometry>";
    EXPECT_EQ(xmlLine(*plane), start + "<object_list_type>include</object_list_type></section_plane>");
    plane->object_list_type = SceneNodeSectionPlane::EXCLUDE;
    plane->object_list = {SceneNodeUID(4), SceneNodeUID::INVALID};
    const std::string with_list =
        start + "<object_list><uid>4</uid><uid>4294967295</uid></object_list></section_plane>";
    EXPECT_EQ(xmlLine(*plane), with_list);
    EXPECT_EQ(xmlLine(*plane->clone()), with_list);
    SceneVisitor visitor = offsetBy(10);
    plane->doVisit(visitor);
    EXPECT_EQ(plane->uid.value(), 13u);
    EXPECT_EQ(plane->object_list[0].value(), 14u);
    EXPECT_FALSE(plane->object_list[1].isValid());
}

TEST(MetaDataTest, CloneHasItsStrings) {
    const Ref<SceneNodeMetaData> metadata = newNode<SceneNodeMetaData>();
    metadata->exporter = "E";
    metadata->author = "A & B";
    metadata->description = "two  blanks";
    metadata->created_date = "C";
    metadata->platform = "P";
    EXPECT_EQ(xmlText(*metadata->clone()), xmlText(*metadata));
}

TEST(BackgroundSettingsTest, WritesItsMaterialWithoutUID) {
    const Ref<SceneNodeBackgroundSettings> background = newNode<SceneNodeBackgroundSettings>();
    EXPECT_EQ(xmlText(*background),
              "<background_settings>\n\t<uid>3</uid>\n\t<name>N</name>\n</background_settings>\n");
    EXPECT_EQ(background->getHighestLayerIndex(), 0u);

    background->emission_scale = new EmissionScale;
    background->background_material = new NullMaterial;
    background->background_material->name = "sky";
    background->background_material->backface_emit = true;
    EXPECT_EQ(xmlText(*background),
              "<background_settings>\n\t<uid>3</uid>\n\t<name>N</name>\n"
              "\t<emission_scale>\n\t\t<measure>luminous_flux</measure>\n\t\t<value>1</value>\n"
              "\t\t<material_uid>4294967295</material_uid>\n\t</emission_scale>\n"
              "\t<background_material>\n\t\t<material>\n\t\t\t<name>sky</name>\n"
              "\t\t\t<null_material>\n\t\t\t</null_material>\n"
              "\t\t\t<backface_emit>true</backface_emit>\n"
              "\t\t</material>\n\t</background_material>\n</background_settings>\n");
    const Ref<SunSkyMaterial> sky = new SunSkyMaterial;
    sky->sky_layer = 4;
    background->background_material = sky;
    EXPECT_EQ(background->getHighestLayerIndex(), 4u);
    SceneVisitor visitor = offsetBy(1);
    background->doVisit(visitor);
    EXPECT_EQ(background->uid.value(), 4u);
}

// The unfinished operations print exactly this, and nothing when the base comparison has failed.
TEST(UnfinishedOperationsTest, PrintTheirLines) {
    const Ref<SceneNodeMaterial> material = newNode<SceneNodeMaterial>();
    material->material = new NullMaterial;
    const Ref<SceneNodeMedium> medium = newNode<SceneNodeMedium>();
    medium->medium = new Dermis;
    const struct {
        Ref<SceneNode> node;
        const char* compared;
        const char* cloned; ///< Empty: there is a clone.
    } cases[] = {
        {newNode<SceneNodeSphere>(), "TODO: IMPLEMENT SceneNodeSphere::doIsEqual()\n", ""},
        {newNode<SceneNodeBackgroundSettings>(), "TODO: IMPLEMENT SceneNodeBackgroundSettings::doIsEqual()",
         "SceneNodeBackgroundSettings::clone() not yet implemented"},
        {newNode<SceneNodeParametricSurface>(), "TODO: IMPLEMENT SceneNodeParametricSurface::doIsEqual()\n",
         "SceneNodeParametricSurface::clone() not yet implemented"},
        {newNode<SceneNodeScatter>(), "TODO: IMPLEMENT SceneNodeScatter::doIsEqual()\n",
         "SceneNodeScatter::clone() not yet implemented"},
        {newNode<SceneNodeMesh>(), "TODO: IMPLEMENT SceneNodeMesh::doIsEqual()\n",
         "SceneNodeMesh::clone() not yet implemented"},
        {newNode<SceneNodeRenderSettings>(), "TODO: IMPLEMENT SceneNodeRenderSettings::doIsEqual()", ""},
        {newNode<SceneNodeRoot>(), "", "SceneNodeRoot::clone() not yet implemented\n"},
        {material, "TODO: IMPLEMENT SceneNodeMaterial::doIsEqual()\n", ""},
        {medium, "TODO: IMPLEMENT SceneNodeMedium::doIsEqual()\n", ""},
    };
    for (const auto& c : cases) {
        testing::internal::CaptureStdout();
        EXPECT_TRUE(c.node->doIsEqual(*c.node));
        EXPECT_FALSE(c.node->doIsEqual(*newNode<SceneNodeMetaData>(99)));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), c.compared);
        testing::internal::CaptureStdout();
        EXPECT_EQ(c.node->clone().isNull(), *c.cloned != '\0');
        EXPECT_EQ(testing::internal::GetCapturedStdout(), c.cloned);
    }
}

} // namespace
} // namespace Quenza
