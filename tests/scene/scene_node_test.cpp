// SPDX-License-Identifier: MIT
#include "scene/scene_node.h"

#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_metadata.h"
#include "scene/scene_node_root.h"
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

TEST(SceneVisitorTest, RefusesPathsWithoutAMapping) {
    Map<String, String> paths;
    paths.insert("old", "new");
    EXPECT_EQ(getMappedPath(paths, "old"), "new");
    EXPECT_EQ(thrownText([&] { getMappedPath(paths, "other"); }),
              "While updating dependencies: Missing mapping for old path 'other'.");
}

} // namespace
} // namespace Quenza
