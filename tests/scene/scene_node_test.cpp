// SPDX-License-Identifier: MIT
#include "scene/scene_node.h"

#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_metadata.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_sphere.h"
#include "scene/scene_visitor.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace Quenza {
namespace {

Ref<SceneNode> namedNode(const String& name, u32 uid = SceneNodeUID::INVALID_VALUE) {
    const Ref<SceneNode> node = new SceneNodeMetaData;
    node->name = name;
    node->uid = SceneNodeUID(uid);
    return node;
}

TEST(SceneNodeTest, NamesItsTypes) {
    std::string names;
    for (u32 type = 0; type < 16; ++type)
        names += std::string(getNodeTypeName(type)) + ", ";
    EXPECT_EQ(names, "Root, Camera, Render Settings, Material, Mesh, Object, Sphere, Medium, Tone Mapping, "
                     "Rectangle Light, Background Settings, Metadata, Parametric Surface, Scatter, "
                     "Section Plane, Unknown type, ");
    EXPECT_STREQ(getNodeTypeName(0xFFFFFFFF), "Unknown type");
}

TEST(SceneNodeTest, HandsOutUIDs) {
    SceneNodeRoot root;
    EXPECT_EQ(root.getUID().value(), 0u);
    EXPECT_EQ(root.getName(), "Scene");
    const auto add = [&root](u32 preset) {
        const Ref<SceneNode> node = namedNode("", preset);
        root.addChild(node);
        return std::vector<u32>{node->getUID().value(), root.next_uid};
    };
    const u32 none = SceneNodeUID::INVALID_VALUE;
    EXPECT_EQ(add(none), (std::vector<u32>{1, 1}));
    EXPECT_EQ(add(100), (std::vector<u32>{100, 100}));
    EXPECT_EQ(add(none), (std::vector<u32>{101, 101}));
    root.setNextUID(7);
    EXPECT_EQ(add(5), (std::vector<u32>{5, 8}));
}

TEST(SceneNodeTest, GivesUIDsBelowARootAlone) {
    const Ref<SceneNode> parent = namedNode("parent");
    const Ref<SceneNode> child = namedNode("child");
    parent->addChild(child);
    EXPECT_FALSE(child->getUID().isValid());
    EXPECT_EQ(child->getRoot(), nullptr);

    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    root->addChild(parent);
    const Ref<SceneNode> late = namedNode("late");
    parent->addChild(late);
    EXPECT_EQ(late->getUID().value(), 2u);
    EXPECT_EQ(late->getRoot(), root.getPointer());
    EXPECT_EQ(root->getChildByUID(SceneNodeUID(2)), nullptr) << "lookups are one level deep";
    EXPECT_EQ(parent->getChildByUID(SceneNodeUID(2)), late.getPointer());
}

TEST(SceneNodeTest, FindsItselfAndDirectChildren) {
    SceneNodeRoot root;
    const Ref<SceneNode> first = namedNode("first", 5);
    const Ref<SceneNode> second = namedNode("second", 5);
    root.addChild(first);
    root.addChild(second);
    EXPECT_EQ(root.getChildByUID(SceneNodeUID(0)), &root);
    EXPECT_EQ(root.getChildByUID(SceneNodeUID(5)), second.getPointer());
    EXPECT_EQ(root.getChildByUID(SceneNodeUID(6)), nullptr);
    root.removeChild(second);
    EXPECT_EQ(second->getParent(), nullptr);
    EXPECT_EQ(root.getChildren().size(), 1u);
    EXPECT_EQ(root.getChildByUID(SceneNodeUID(5)), nullptr);
    root.removeChild(root.children[0]);
    EXPECT_TRUE(root.getChildren().empty());
}

TEST(SceneNodeTest, GetsMaterialsAndMediaByUID) {
    SceneNodeRoot root;
    const Ref<SceneNodeMaterial> material = new SceneNodeMaterial;
    const Ref<SceneNodeMedium> medium = new SceneNodeMedium;
    root.addChild(material.getPointer());
    root.addChild(medium.getPointer());
    EXPECT_EQ(root.getMaterial(SceneNodeUID(1)), material.getPointer());
    EXPECT_EQ(root.getMedium(SceneNodeUID(2)), medium.getPointer());
    EXPECT_EQ(thrownText([&] { root.getMaterial(SceneNodeUID(2)); }),
              "Node with UID 2 was not a material node.");
    EXPECT_EQ(thrownText([&] { root.getMedium(SceneNodeUID(1)); }), "Node with UID 1 was not a medium node.");
    EXPECT_EQ(thrownText([&] { root.getMedium(SceneNodeUID(0)); }), "Node with UID 0 was not a medium node.");
    EXPECT_EQ(thrownText([&] { root.getMaterial(SceneNodeUID(9)); }), "Failed to find node with UID 9");
    EXPECT_EQ(thrownText([&] { root.getMedium(SceneNodeUID()); }), "Failed to find node with UID 4294967295");
}

TEST(SceneNodeTest, DetachesChildrenThatOutliveIt) {
    const Ref<SceneNode> child = namedNode("child");
    {
        const Ref<SceneNodeRoot> root = new SceneNodeRoot;
        root->addChild(child);
    }
    EXPECT_EQ(child->getParent(), nullptr);
    EXPECT_EQ(child->getRefCount(), 1u);
}

TEST(SceneNodeTest, FindsByLoweredName) {
    SceneNodeRoot root;
    const Ref<SceneNode> red = namedNode("Red Chair");
    const Ref<SceneNode> table = namedNode("table");
    red->addChild(namedNode("REDDISH"));
    root.addChild(red);
    root.addChild(table);
    const auto count = [&root](const char* query, Vector<u32> types) {
        Vector<SceneNode*> found;
        root.findByName(query, found, types);
        return found.size();
    };
    EXPECT_EQ(count("red", {NODE_METADATA}), 2u);
    EXPECT_EQ(count("Red", {NODE_METADATA}), 0u);
    EXPECT_EQ(count("", {NODE_METADATA, NODE_ROOT}), 4u);
    EXPECT_EQ(count("", {NODE_MESH}), 0u);
    for (int i = 0; i < 100; ++i)
        table->addChild(namedNode("leg"));
    EXPECT_EQ(count("", {NODE_METADATA, NODE_ROOT}), 64u);
}

TEST(SceneNodeTest, ComparesTrees) {
    const auto tree = [](const char* name, u32 uid) {
        const Ref<SceneNodeRoot> root = new SceneNodeRoot;
        root->addChild(namedNode(name, uid));
        return root;
    };
    const Ref<SceneNodeRoot> a = tree("x", 3);
    EXPECT_TRUE(a->isEqual(*tree("x", 3)));
    EXPECT_FALSE(a->isEqual(*tree("y", 3)));
    EXPECT_FALSE(a->isEqual(*tree("x", 4)));
    EXPECT_FALSE(a->isEqual(SceneNodeRoot()));
    const Ref<SceneNodeRoot> other_type = new SceneNodeRoot;
    const Ref<SceneNode> sphere = new SceneNodeSphere;
    sphere->name = "x";
    sphere->uid = SceneNodeUID(3);
    other_type->addChild(sphere);
    EXPECT_FALSE(a->isEqual(*other_type));
    EXPECT_TRUE(a->isSameNode(a.getPointer()));
}

TEST(SceneNodeTest, TracksChanges) {
    SceneNodeRoot root;
    const Ref<SceneNode> first = namedNode("first");
    const Ref<SceneNode> second = namedNode("second");
    root.addChild(first);
    root.addChild(second);
    for (const Ref<SceneNode>& node : {first, second}) {
        node->setFlags(1);
        node->markChanged();
    }
    EXPECT_EQ(first->getStamp(), 1u);
    EXPECT_EQ(second->getStamp(), 2u);
    EXPECT_EQ(root.getStamp(), 2u);
    root.clearFlagsUpTo(1);
    EXPECT_FALSE(first->testFlags(1));
    EXPECT_TRUE(second->testFlags(3));
    EXPECT_FALSE(second->testFlags(2));
    const Ref<SceneNode> detached = namedNode("detached");
    detached->markChanged();
    EXPECT_EQ(detached->getStamp(), 0u);
}

TEST(SceneNodeTest, MakesVisitorsForOtherModules) {
    SceneNodeRoot root;
    SceneVisitor* visitor = root.createVisitor(SceneVisitor::OFFSET_UIDS, "p", "b");
    EXPECT_EQ(visitor->mode, 5u);
    EXPECT_EQ(visitor->path, "p");
    EXPECT_EQ(visitor->base_path, "b");
    EXPECT_TRUE(visitor->use_stored_paths);
    const Ref<SceneNode> with_uid = namedNode("", 4);
    const Ref<SceneNode> without = namedNode("");
    with_uid->addChild(without);
    visitor->uid_offset = 10;
    with_uid->visitAll(*visitor);
    EXPECT_EQ(with_uid->getUID().value(), 14u);
    EXPECT_FALSE(without->getUID().isValid());
    root.destroyVisitor(visitor);
    root.destroyVisitor(nullptr);
}

TEST(SceneVisitorTest, RefusesPathsWithoutAMapping) {
    Map<String, String> paths;
    paths.insert("old", "new");
    EXPECT_EQ(getMappedPath(paths, "old"), "new");
    EXPECT_EQ(thrownText([&] { getMappedPath(paths, "other"); }),
              "While updating dependencies: Missing mapping for old path 'other'.");
}

TEST(SceneVisitorTest, GrowsItsBoxOutwards) {
    SceneVisitor visitor;
    EXPECT_EQ(visitor.aabb_min[0], std::numeric_limits<f32>::infinity());
    visitor.growBox({0.1, 0, -0.1}, {0.1, 1, 0.1});
    EXPECT_LE(double(visitor.aabb_min[0]), 0.1);
    EXPECT_GE(double(visitor.aabb_max[0]), 0.1);
    EXPECT_LE(double(visitor.aabb_min[2]), -0.1);
    EXPECT_EQ(visitor.aabb_max[1], 1.0f);
}

} // namespace
} // namespace Quenza
