// SPDX-License-Identifier: MIT
#include "scene/scene_node_mesh.h"

#include "scene/mesh_file.h"
#include "scene/mesh_loader.h"
#include "scene/scene_node_root.h"
#include "scene/scene_visitor.h"
#include "scene/xml_text.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

Ref<Mesh> triangleMesh() {
    const Ref<Mesh> mesh = new Mesh;
    for (const Vec3f& v : {Vec3f{0, 0, 0}, Vec3f{1, 0, 0}, Vec3f{1, 1, 0}})
        mesh->addVertex(v);
    const u32 corners[3] = {0, 1, 2};
    mesh->addTriangle(corners, corners, 1);
    mesh->endOfModel();
    return mesh;
}

class SceneNodeMeshTest : public testing::Test {
protected:
    SceneNodeMeshTest() {
        node->name = "M";
        node->uid = SceneNodeUID(7);
        node->mesh = triangleMesh();
        options.base_path = dir.path();
        options.scene_path = dir / "scene.qzs";
    }

    static std::string pathIn(const std::string& xml) {
        const std::string before = "\t<external>\n\t\t<path>";
        const size_t start = xml.find(before) + before.size();
        return xml.substr(start, xml.find("</path>", start) - start);
    }
    std::string relativePath() {
        return nativeText("scene_meshes/" + getMeshFileName(*triangleMesh()).toStdString());
    }

    const TempDir dir;
    const Ref<SceneNodeMesh> node = new SceneNodeMesh;
    XMLWriteOptions options;
};

TEST_F(SceneNodeMeshTest, WritesItselfAndItsFile) {
    EXPECT_EQ(pathIn(xmlText(*node, 0, options)), relativePath());
    Mesh written;
    Mesh::readFromFile(dir / relativePath(), written);
    EXPECT_EQ(written.triangles[0], triangleMesh()->triangles[0]);
    EXPECT_TRUE(node->mesh.nonNull());

    writeBytes(dir / relativePath(), "damaged");
    options.write_absolute_paths = true;
    EXPECT_EQ(pathIn(xmlText(*node, 0, options)), (dir / relativePath()).toStdString());
    EXPECT_NE(fileBytes(dir / relativePath()), "damaged") << "an earlier file of that name is replaced";
}

TEST_F(SceneNodeMeshTest, LetsGoOfTheMeshOnDemandAndLoadsItAgain) {
    options.release_meshes = true;
    const std::string xml = xmlText(*node, 0, options);
    EXPECT_TRUE(node->mesh.isNull());
    EXPECT_EQ(xmlText(*node, 0, options), xml);

    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    root->addChild(node.getPointer());
    node->scale = 2.5;
    root->finalise(dir / "scene.qzs");
    ASSERT_TRUE(node->mesh.nonNull());
    EXPECT_EQ(node->mesh->vert_positions[2], (Vec3f{2.5f, 2.5f, 0}));
    EXPECT_EQ(node->mesh->num_materials_referenced, 2u);
    EXPECT_EQ(node->mesh->aabb_max.x, 2.5f);
}

TEST_F(SceneNodeMeshTest, TurnsAFolderThatCannotBeMadeIntoTheOneException) {
    options.base_path = dir / "missing";
    EXPECT_EQ(thrownText([&] { xmlText(*node, 0, options); }),
              "Failed to create directory '" + (dir / "missing/scene_meshes").toStdString() + "'");
}

TEST_F(SceneNodeMeshTest, LoadsNothingButItsOwnFiles) {
    const auto failure = [](const String& path) {
        Mesh mesh;
        return thrownText([&] { loadMeshFile(path, mesh, 1.0); });
    };
    EXPECT_EQ(failure("a.b"), "filename too short: 'a.b'");
    EXPECT_EQ(failure("dir.x/mesh.OBJ"), "key 'obj' not found");

    const Ref<Mesh> broken = triangleMesh();
    broken->triangles[0].vertex_indices[1] = 3;
    Mesh::writeToFile(dir / "broken.QzMesh", *broken);
    EXPECT_EQ(failure(dir / "broken.QzMesh"), "Triangle vertex index is out of bounds. (vertex index=3)");
}

} // namespace
} // namespace Quenza
