// SPDX-License-Identifier: MIT
#include "reading/model_files.h"
#include "support/pipe.h"

#include <filesystem>
#include <string>

namespace Quenza {
namespace {

using ModelLoaderTest = ModelFilesTest;

const std::string OBJ_TRIANGLE = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
const std::string TRIANGLE_MESH = "v 0 0 0\nv 2 0 0\nv 0 2 0\ntriangle 0 1 2 m 0\n";

TEST_F(ModelLoaderTest, ChoosesByExtension) {
    EXPECT_EQ(loadBytes("a.b.OBJ", OBJ_TRIANGLE, 2), "material default\n" + TRIANGLE_MESH);
    EXPECT_EQ(loadBytes("m.Ply", "ply\nformat ascii 1.0\nend_header\n"), "material default\n");
    Mesh mesh;
    ModelLoader().streamModel(dir / "a.b.OBJ", mesh, 1);
    Mesh::writeToFile(dir / "m.qzMesh", mesh);
    EXPECT_EQ(load(dir / "m.qzMesh", 2), "material default\n" + TRIANGLE_MESH);

    const struct {
        String path;
        String error;
    } cases[] = {
        {"", "filename too short: ''"},       {"obj", "filename too short: 'obj'"},
        {"m.3", "filename too short: 'm.3'"}, {"m.3ds", "key '3ds' not found"},
        {"objobj", "key 'objobj' not found"}, {"model.", "key '' not found"},
        {"model.obj.", "key '' not found"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(load(test.path), "error: " + test.error.toStdString());
}

TEST_F(ModelLoaderTest, TellsWhatItCannotOpen) {
    for (const char* name : {"m.obj", "m.ply", "m.qzmesh"}) {
        const std::string path = (dir / name).toStdString();
        const std::string file = std::string(name) == "m.ply" ? "could not open file '" : "could not open '";
        const std::string error =
            "error: " + (std::string(name) == "m.qzmesh" ? "Failed to open file '" : file) + path +
            "' for reading.";
        EXPECT_EQ(load(dir / name), error) << "missing";
        std::filesystem::create_directory(path);
        EXPECT_EQ(load(dir / name), error) << "a directory";
        std::filesystem::remove(path);
        if (makePipe(dir / name)) {
            EXPECT_EQ(load(dir / name), error) << "a pipe that nobody writes to";
        }
    }
}

} // namespace
} // namespace Quenza
