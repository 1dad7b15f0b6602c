// SPDX-License-Identifier: MIT
#include "materials/bake_shader.h"

#include "host/ids.h"
#include "materials/bake_checks.h"

#include <filesystem>

namespace {

class BakeShader : public BakeChecks {
protected:
    BakeShader() : material_(addMaterial("Painted")), noise_(addNoise(material_, MAT_ALBEDO_SHADER)) {}

    std::string file() const { return folder() + "/baked.jpg"; }
    bool bake(int32_t width, int32_t height, int32_t saveFlags = SAVEBIT_0) {
        data(material_).SetLong(MAT_BAKE_WIDTH, width);
        data(material_).SetLong(MAT_BAKE_HEIGHT, height);
        return bakeShaderToFile(noise_, Filename(String(file())), &data(material_), saveFlags, context());
    }

    BaseMaterial* material_;
    BaseShader* noise_;
};

TEST_F(BakeShader, KeepsPreviewsSmall) {
    const struct {
        bool isPreview;
        int32_t width, height;
        int32_t bakedWidth, bakedHeight;
    } cases[] = {
        {false, 1024, 512, 1024, 512}, {true, 1024, 512, 724, 362}, {true, 512, 512, 512, 512},
        {true, 513, 512, 512, 511},    {true, 64, 2048, 64, 2048},  {true, 64, 16384, 32, 8192},
    };
    for (const auto& entry : cases) {
        endExport();
        isMaterialPreview = entry.isPreview;
        EXPECT_TRUE(bake(entry.width, entry.height));
        const OwnedBitmap image = load(file());
        EXPECT_EQ(image->GetBw(), entry.bakedWidth);
        EXPECT_EQ(image->GetBh(), entry.bakedHeight);
    }
}

TEST_F(BakeShader, RefusesWhatItCannotBake) {
    for (const auto& [width, height] : {std::pair{0, 8}, {8, -1}, {1 << 20, 1 << 20}}) {
        EXPECT_FALSE(bake(width, height));
    }
    const Filename target{String(file())};
    EXPECT_FALSE(bakeShaderToFile(nullptr, target, &data(material_), SAVEBIT_0, context()));
    EXPECT_FALSE(bakeShaderToFile(noise_, target, nullptr, SAVEBIT_0, context()));
    std::filesystem::create_directories(file() + "/taken");
    EXPECT_FALSE(bake(8, 8));
}

/// A bake that fails, on a full disk say, may leave a part of its file.
TEST_F(BakeShader, ListsTemporaryFilesBeforeTheyAreWritten) {
    for (const int32_t width : {8, 0}) {
        endExport();
        Quenza::Vector<Quenza::String> files;
        extraFiles = &files;
        data(material_).SetLong(MAT_BAKE_WIDTH, width);
        exportMaterial(material_);
        ASSERT_EQ(files.size(), 1u) << width;
        EXPECT_EQ(Quenza::fileBytes(files[0]).empty(), width == 0);
        EXPECT_TRUE(std::filesystem::remove(files[0].toStdString()));
    }
}

} // namespace
