// SPDX-License-Identifier: MIT
#include "scene/scene_node_scatter.h"

#include "scene/scene_node_mesh.h"
#include "scene/scene_node_root.h"
#include "scene/scene_visitor.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

template <class Node>
Ref<Node> newNode(u32 uid) {
    const Ref<Node> node = new Node;
    node->uid = SceneNodeUID(uid);
    node->name = "N";
    return node;
}

TEST(ScatterTest, Binds) {
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    root->addChild(newNode<SceneNodeMesh>(5).getPointer());
    const Ref<SceneNodeScatter> scatter = newNode<SceneNodeScatter>(3);
    root->addChild(scatter.getPointer());
    scatter->geometry_uid = SceneNodeUID(5);
    scatter->material_uids = {SceneNodeUID(5)};
    SceneVisitor bind;
    EXPECT_EQ(
        thrownText([&] { scatter->doVisit(bind); }),
        "While processing node 'N', UID 3:  Referenced node (UID 5) did not have type SceneNodeMaterial");
    EXPECT_EQ(thrownText([&] { newNode<SceneNodeScatter>(3)->doVisit(bind); }),
              "While binding geometry: root node was NULL");
}

} // namespace
} // namespace Quenza
