// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/import/import_model.h"

// Models that Debian's package assimp-testmodels brings.

namespace headless {

namespace {

class PackagedModelTest : public DocumentsTest {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(models())) {
            GTEST_SKIP() << "the package assimp-testmodels isn't installed";
        }
    }
    static std::filesystem::path models() { return "/usr/share/assimp/models"; }
};

TEST_F(PackagedModelTest, TellsWhatABrokenModelLacks) {
    const struct {
        const char* file;
        const char* reason;
    } cases[] = {
        {"glTF2/BoxWithInfinites-glTF-Binary/BoxWithInfinites.glb",
         "the model has no polygons: mesh \"Mesh\" is left out: the coordinates of point 0 are no finite "
         "numbers"},
        {"glTF2/IndexOutOfRange/AllIndicesOutOfRange.gltf",
         "the model can't be read: Mesh \"Mesh\" has no faces"},
        {"glTF2/MissingBin/BoxTextured.gltf",
         "the model can't be read: GLTF: could not open referenced file \"BoxTextured0.bin\""},
        {"PLY/points.ply", "the model has no polygons"},
        {"invalid/empty.obj", "the model can't be read: OBJ-file is too small."},
        {"invalid/readme.txt", nullptr},
    };
    for (const auto& test : cases) {
        const std::string file = (models() / test.file).string();
        std::vector<std::string> warnings;
        const std::string error = errorOf([&] { importModel(file, warnings); });
        if (test.reason) {
            EXPECT_EQ(error, file + ": " + test.reason);
        } else {
            EXPECT_TRUE(error.starts_with(file + ": the model can't be read: ")) << error;
        }
    }
}

} // namespace

} // namespace headless
