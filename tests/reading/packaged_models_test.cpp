// SPDX-License-Identifier: MIT
#include "reading/model_loader.h"

#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

// All OBJ and PLY files of Debian's package assimp-testmodels, against what Assimp says of them.

namespace Quenza {
namespace {

namespace fs = std::filesystem;

const fs::path MODELS = "/usr/share/assimp/models";

using Faces = std::array<u64, 2>; ///< Triangles and quads.

/// The only files that are refused.
const std::map<std::string, std::string> REFUSED = {
    {"OBJ/box_longline.obj", "Invalid number of vertices in face: 256"},
    {"OBJ/concave_polygon.obj", "Invalid number of vertices in face: 66"},
    {"OBJ/space_in_material_name.obj", "Invalid number of vertices in face: 66"},
    {"PLY/issue623.ply", "read of body failed."}, // its header lacks the line of the faces
    {"PLY/pond.0.ply", "read of body failed."},   // cut short by 69 bytes
    {"invalid/empty.ply",
     "could not open file '" + (MODELS / "invalid/empty.ply").string() + "' for reading."},
    {"invalid/malformed.obj", "Position index invalid. (index '12' out of bounds, on line 23)"},
    {"invalid/malformed2.obj", "syntax error: no integer following 'f' (line 23)"},
};

/// Files that only Assimp refuses, with the faces that they have.
const std::map<std::string, Faces> REFUSED_BY_ASSIMP = {{"invalid/empty.obj", {0, 0}}};

std::vector<fs::path> objAndPlyFiles() {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(MODELS))
        if (entry.path().extension() == ".obj" || entry.path().extension() == ".ply")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

bool hasArea(const aiMesh& mesh, const aiFace& face) {
    const auto at = [&](unsigned corner) { return mesh.mVertices[face.mIndices[corner]]; };
    return ((at(1) - at(0)) ^ (at(2) - at(0))).Length() * 0.5f >= 1e-20f;
}

/// Triangles without area don't count: a mesh leaves them out.
Faces facesByAssimp(const aiScene& scene) {
    Faces faces = {0, 0};
    for (unsigned m = 0; m < scene.mNumMeshes; ++m)
        for (unsigned f = 0; f < scene.mMeshes[m]->mNumFaces; ++f) {
            const aiFace& face = scene.mMeshes[m]->mFaces[f];
            faces[0] += face.mNumIndices == 3 && hasArea(*scene.mMeshes[m], face);
            faces[1] += face.mNumIndices == 4;
        }
    return faces;
}

TEST(PackagedModelsTest, HaveTheFacesThatAssimpTells) {
    if (!fs::exists(MODELS))
        GTEST_SKIP() << "the package assimp-testmodels isn't installed";
    std::map<std::string, std::string> refused;
    std::map<std::string, Faces> refused_by_assimp;
    for (const fs::path& file : objAndPlyFiles()) {
        const std::string name = fs::relative(file, MODELS).string();
        Mesh mesh;
        const std::string error =
            thrownMessage<ModelLoaderExcep>([&] { ModelLoader().streamModel(file.string(), mesh, 1); });
        if (error != "no exception") {
            refused[name] = error;
            continue;
        }
        EXPECT_EQ(thrownMessage<MessageExcep>([&] { mesh.checkAllIndices(); }), "no exception") << name;
        const Faces faces = {mesh.triangles.size(), mesh.quads.size()};
        Assimp::Importer importer;
        if (const aiScene* const scene = importer.ReadFile(file.string(), 0))
            EXPECT_EQ(faces, facesByAssimp(*scene)) << name;
        else
            refused_by_assimp[name] = faces;
    }
    EXPECT_EQ(refused, REFUSED);
    EXPECT_EQ(refused_by_assimp, REFUSED_BY_ASSIMP);
}

} // namespace
} // namespace Quenza
