// SPDX-License-Identifier: MIT
#include "end_to_end/scene_numbers.h"
#include "end_to_end/session.h"
#include "reading/scene_report.h"
#include "scene/mesh.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/scene.h>
#include <map>

namespace {

namespace fs = std::filesystem;

/// What a scene shows: faces and the box around them, in metres with Z up.
struct Figures {
    size_t faces = 0;
    double min[3] = {1e300, 1e300, 1e300};
    double max[3] = {-1e300, -1e300, -1e300};

    void add(double x, double y, double z) {
        const double p[3] = {x, y, z};
        for (int axis = 0; axis < 3; ++axis) {
            min[axis] = std::min(min[axis], p[axis]);
            max[axis] = std::max(max[axis], p[axis]);
        }
    }
};

/// By Assimp's own data. `metres` per unit of the model; Assimp is right-handed with Y up.
void addNode(const aiScene& scene, const aiNode& node, const aiMatrix4x4& outer, double metres,
             Figures& figures) {
    const aiMatrix4x4 world = outer * node.mTransformation;
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
        const aiMesh& mesh = *scene.mMeshes[node.mMeshes[i]];
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            const aiFace& face = mesh.mFaces[f];
            figures.faces += face.mNumIndices < 3 ? 0 : face.mNumIndices <= 4 ? 1 : face.mNumIndices - 2;
            for (unsigned corner = 0; corner < face.mNumIndices && face.mNumIndices >= 3; ++corner) {
                const aiVector3D p = world * mesh.mVertices[face.mIndices[corner]];
                figures.add(double(p.x) * metres, double(-p.z) * metres, double(p.y) * metres);
            }
        }
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) {
        addNode(scene, *node.mChildren[i], world, metres, figures);
    }
}

/// By the files of an export: each model's mesh under the model's rotation and position.
Figures readBack(const fs::path& sceneFile) {
    Figures figures;
    TiXmlDocument document;
    EXPECT_TRUE(document.LoadFile(sceneFile.string()));
    std::map<std::string, Quenza::Mesh> meshes;
    for (const TiXmlElement* node = document.RootElement()->FirstChildElement(); node;
         node = node->NextSiblingElement()) {
        const std::string uid = node->FirstChildElement("uid")->GetText();
        if (node->ValueStr() == "mesh") {
            const fs::path path = node->FirstChildElement("external")->FirstChildElement("path")->GetText();
            Quenza::Mesh::readFromFile((sceneFile.parent_path() / path).string(), meshes[uid]);
            continue;
        }
        if (node->ValueStr() != "model2") {
            continue;
        }
        const Quenza::Mesh& mesh = meshes.at(node->FirstChildElement("geometry_uid")->GetText());
        figures.faces += mesh.triangles.size() + mesh.quads.size();
        const std::vector<double> m =
            numbersOf(node->FirstChildElement("rotation")->FirstChildElement("matrix"));
        const std::vector<double> pos =
            numbersOf(node->FirstChildElement("keyframe")->FirstChildElement("pos"));
        EXPECT_TRUE(m.size() == 9 && pos.size() == 3);
        for (const Quenza::Vec3f& v : mesh.vert_positions) {
            const double x = double(v.x), y = double(v.y), z = double(v.z);
            figures.add(m[0] * x + m[1] * y + m[2] * z + pos[0], m[3] * x + m[4] * y + m[5] * z + pos[1],
                        m[6] * x + m[7] * y + m[8] * z + pos[2]);
        }
    }
    return figures;
}

struct Model {
    const char* file;
    /// Metres per unit of what Assimp gives.
    double metres;
};

class RealModels : public Session, public ::testing::WithParamInterface<Model> {};

TEST_P(RealModels, ReadBackAsAssimpTellsThem) {
    const fs::path file = fs::path("/usr/share/assimp/models") / GetParam().file;
    if (!fs::exists(file)) {
        GTEST_SKIP() << "the package assimp-testmodels isn't installed";
    }
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    const aiScene* const model = importer.ReadFile(file.string(), 0);
    ASSERT_NE(model, nullptr) << importer.GetErrorString();
    Figures expected;
    addNode(*model, *model->mRootNode, aiMatrix4x4(), GetParam().metres, expected);

    openFile(file);
    // A document without render settings has the unit of the host's preferences, which are centimetres.
    ASSERT_TRUE(render());
    const fs::path scene = userFolder() / "quickrender" / "quickrender.qzs";
    const Figures actual = readBack(scene);
    EXPECT_EQ(actual.faces, expected.faces);
    for (int axis = 0; axis < 3; ++axis) {
        const double tolerance = 1e-5 * std::max(1e-3, expected.max[axis] - expected.min[axis]);
        EXPECT_NEAR(actual.min[axis], expected.min[axis], tolerance) << axis;
        EXPECT_NEAR(actual.max[axis], expected.max[axis], tolerance) << axis;
    }
    const fs::path report = userFolder() / "quickrender" / "quickrender.report.txt";
    ASSERT_TRUE(waitFor(report));
    EXPECT_NE(readFile(report).find("\nResult: no faults\n"), std::string::npos) << readFile(report);
}

INSTANTIATE_TEST_SUITE_P(Packaged, RealModels,
                         ::testing::Values(Model{"Collada/Cinema4D.dae", 1.0}, Model{"Collada/duck.dae", 1.0},
                                           Model{"FBX/spider.fbx", 0.01}, Model{"OBJ/spider.obj", 0.01},
                                           Model{"PLY/Wuson.ply", 0.01},
                                           Model{"glTF2/BoxTextured-glTF/BoxTextured.gltf", 1.0}));

} // namespace
