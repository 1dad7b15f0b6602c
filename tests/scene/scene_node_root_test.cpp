// SPDX-License-Identifier: MIT
#include "scene/scene_node_root.h"

#include "scene/scene_node_material.h"
#include "scene/scene_node_sphere.h"
#include "scene/xml_text.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace Quenza {
namespace {

/// A node of any type that writes one line, or fails.
class TestNode : public SceneNode {
public:
    explicit TestNode(u32 type = NODE_MESH) : type_(type) {}
    u32 getType() const override { return type_; }
    Ref<SceneNode> clone() const override { return nullptr; }
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) override {
        if (on_write)
            on_write();
        stream.writeString(String(depth, '\t') + "<" + name + "/>\n");
    }
    void doVisit(SceneVisitor&) override {}
    std::function<void()> on_write;

private:
    u32 type_;
};

Ref<TestNode> testNode(const char* name, u32 type = NODE_MESH, u32 uid = SceneNodeUID::INVALID_VALUE) {
    const Ref<TestNode> node = new TestNode(type);
    node->name = name;
    node->uid = SceneNodeUID(uid);
    return node;
}

TEST(SceneNodeRootTest, ChecksForNodesThatAreTwice) {
    const struct {
        u32 type;
        const char* text;
    } cases[] = {
        {NODE_RENDER_SETTINGS, "getNumChildrenOfType(SceneNodeRenderSettings) > 1"},
        {NODE_TONEMAPPING, "getNumChildrenOfType(SceneNodeToneMapping) > 1"},
        {NODE_CAMERA, "getNumChildrenOfType(SceneNodeCamera) > 1"},
        {NODE_BACKGROUND_SETTINGS, "getNumChildrenOfType(SceneNodeBackgroundSettings) > 1"},
        {NODE_METADATA, "getNumChildrenOfType(SceneNodeMetaData) > 1"},
        {NODE_MESH, "no exception"},
    };
    SceneNodeRoot all;
    for (u64 i = std::size(cases); i-- > 0;) {
        SceneNodeRoot root;
        root.addChild(testNode("", cases[i].type).getPointer());
        EXPECT_EQ(thrownText([&] { root.checkValidity(); }), "no exception");
        root.addChild(testNode("", cases[i].type).getPointer());
        EXPECT_EQ(thrownText([&] { root.checkValidity(); }), cases[i].text);
        all.addChild(testNode("", cases[i].type).getPointer());
        all.addChild(testNode("", cases[i].type).getPointer());
        EXPECT_EQ(thrownText([&] { all.checkValidity(); }), cases[i].text)
            << "the first in order is reported";
    }
    all.addChild(testNode("first", NODE_MESH, 50).getPointer());
    all.addChild(testNode("second", NODE_MODEL, 50).getPointer());
    EXPECT_EQ(thrownText([&] { all.checkValidity(); }), "Two nodes sharing the same UID 50:\nfirst, second");
}

TEST(SceneNodeRootTest, ReplacesNodesAndTheirReferences) {
    SceneNodeRoot root;
    const Ref<SceneNodeMaterial> old_material = new SceneNodeMaterial;
    const Ref<SceneNodeSphere> sphere = new SceneNodeSphere;
    const Ref<SceneNodeSphere> other_sphere = new SceneNodeSphere;
    const Ref<SceneNodeMaterial> kept_material = new SceneNodeMaterial;
    for (const Ref<SceneNode>& node : {Ref<SceneNode>(old_material), Ref<SceneNode>(sphere),
                                       Ref<SceneNode>(other_sphere), Ref<SceneNode>(kept_material)})
        root.addChild(node);
    sphere->material = old_material;
    other_sphere->material = kept_material;

    const Ref<SceneNodeMaterial> new_material = new SceneNodeMaterial;
    new_material->uid = old_material->uid;
    const Ref<SceneNode> wrong_type = testNode("", NODE_MESH, kept_material->uid.value());
    const Ref<SceneNode> added = testNode("", NODE_MESH, 40);
    root.replaceNodes({Ref<SceneNode>(new_material), wrong_type, added});

    EXPECT_EQ(root.children[0], new_material.getPointer());
    EXPECT_EQ(new_material->getParent(), &root);
    EXPECT_EQ(old_material->getParent(), nullptr);
    EXPECT_EQ(root.getChildByUID(new_material->uid), new_material.getPointer());
    EXPECT_EQ(sphere->material, new_material);
    EXPECT_EQ(other_sphere->material, kept_material) << "a reference keeps its type";
    EXPECT_EQ(root.children[3], wrong_type);
    EXPECT_EQ(root.children.size(), 5u);
    EXPECT_EQ(root.children[4], added);
}

class WriteSceneFileTest : public testing::Test {
protected:
    WriteSceneFileTest() { root.addChild(node.getPointer()); }

    std::string writeFailure() {
        return thrownText([this] { root.writeToXMLFile(path, false, nullptr); });
    }

    const TempDir dir;
    const String path = dir / "scene.qzs";
    SceneNodeRoot root;
    const Ref<TestNode> node = testNode("a");
};

TEST_F(WriteSceneFileTest, KeepsTheOldFileWhenANodeFails) {
    writeBytes(path, "old");
    node->on_write = [] { throw QuenzaException("node failed"); };
    EXPECT_EQ(writeFailure(), "node failed");
    node->on_write = [] { throw std::runtime_error("something else"); };
    EXPECT_EQ(writeFailure(), "An unhandled error has occured.");
    EXPECT_EQ(fileBytes(path), "old");
    EXPECT_FALSE(exists(path + ".partial"));
}

TEST_F(WriteSceneFileTest, TellsWhyTheFileCannotBeWritten) {
    const String in_missing_dir = dir / "missing/scene.qzs";
    EXPECT_EQ(thrownText([&] { root.writeToXMLFile(in_missing_dir, false, nullptr); }),
              "Failed to write scene file '" + in_missing_dir.toStdString() + "'. " + noSuchFolder());
#ifdef __linux__
    std::filesystem::create_symlink("/dev/full", (path + ".partial").toStdString());
    EXPECT_EQ(writeFailure(),
              "Failed to write scene file '" + path.toStdString() + "'. No space left on device");
    EXPECT_FALSE(exists(path));
#endif
}

} // namespace
} // namespace Quenza
