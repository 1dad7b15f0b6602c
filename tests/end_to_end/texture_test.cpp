// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"
#include "engine/output.h"
#include "engine/scene_loader.h"
#include "engine/session.h"

#include <algorithm>
#include <atomic>

namespace {

namespace fs = std::filesystem;

/// Eight colours that differ in which of red, green and blue they hold: four across, two down.
constexpr int COLUMNS = 4;
const char* const COLOURS[2][COLUMNS] = {{"r", "g", "b", "rg"}, {"rb", "gb", "rgb", ""}};

class Textures : public Session {
protected:
    void writePicture(const fs::path& file) {
        constexpr int BLOCK = 4;
        std::vector<unsigned char> rgb;
        for (int y = 0; y < 2 * BLOCK; ++y) {
            for (int x = 0; x < COLUMNS * BLOCK; ++x) {
                const std::string colour = COLOURS[y / BLOCK][x / BLOCK];
                for (const char channel : {'r', 'g', 'b'}) {
                    rgb.push_back(colour.find(channel) != std::string::npos ? 255 : 0);
                }
            }
        }
        fs::create_directories(file.parent_path());
        ASSERT_EQ(engine::writePNG(file.string(), COLUMNS * BLOCK, 2 * BLOCK, rgb), "");
    }

    engine::FloatImage renderExport() {
        const fs::path scene = userFolder() / "quickrender" / "quickrender.qzs";
        const auto root = engine::loadScene(scene.string(), "", "<width>160</width><height>120</height>");
        engine::SessionOptions options;
        options.halt_samples = 8;
        engine::RenderSession session(root, scene.parent_path().string(), options);
        session.run(std::atomic<bool>{false}, [](const engine::Progress&) {});
        return session.layerImages()[0];
    }

    /// Which channels are bright about there; a pixel is 1/0.32 cm of the plane through the origin.
    static std::string colourAt(const engine::FloatImage& image, double x, double y) {
        const float* const pixel = image.pixel(Quenza::u32(80 + 0.32 * x), Quenza::u32(60 - 0.32 * y));
        const float brightest = *std::max_element(image.rgb.begin(), image.rgb.end());
        std::string colour;
        for (int i = 0; i < 3; ++i) {
            colour += pixel[i] > 0.2f * brightest ? std::string(1, "rgb"[i]) : "";
        }
        return colour;
    }
};

/// From the artist's file to the picture: neither upside down nor mirrored, on planes and cubes, and on
/// spheres, be they true spheres or meshes.
TEST_F(Textures, PicturesStandUprightOnSurfaces) {
    install(makeRenderer("none", ""));
    writePicture(folder() / "maps" / "colours.png");
    const std::string tag = R"("tags": [{"type": "Texture", "material": "m"}])";
    openDocument(R"({"type": "Camera", "id": "cam", "position": [0, 0, -500]},
        {"type": "Plane", "position": [-120, 0, 0], )" +
                     tag + R"(, "parameters": {"PRIM_PLANE_WIDTH": 200,
            "PRIM_PLANE_HEIGHT": 200, "PRIM_PLANE_SUBW": 1, "PRIM_PLANE_SUBH": 1, "PRIM_AXIS": 5}},
        {"type": "Cube", "position": [180, 0, 50], )" +
                     tag + R"(, "parameters": {"PRIM_CUBE_SIZE": [100, 100, 100]}},
        {"type": "Sphere", "position": [60, 60, 0], )" +
                     tag + R"(, "parameters": {"PRIM_SPHERE_RAD": 48}},
        {"type": "Sphere", "position": [60, -60, 0], )" +
                     tag + R"(, "parameters": {"PRIM_SPHERE_RAD": 48,
            "PRIM_SPHERE_PERFECT": false}})",
                 "", R"("camera": "cam", "materials": [{"id": "m", "name": "m", "parameters": {
        "MATERIAL_USE_SPECULAR": false, "MATERIAL_COLOR_SHADER": "i"}, "shaders": [{"type": "Bitmap", "id": "i", "parameters": {
        "BITMAPSHADER_FILENAME": "maps/colours.png"}}]}])");
    ASSERT_TRUE(render());
    const engine::FloatImage image = renderExport();
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < COLUMNS; ++column) {
            const std::string colour = COLOURS[row][column];
            const double across = (column + 0.5) / COLUMNS - 0.5, up = row == 0 ? 0.25 : -0.25;
            EXPECT_EQ(colourAt(image, -120 + 200 * across, 200 * up), colour) << "plane, column " << column;
            EXPECT_EQ(colourAt(image, 180 + 100 * across, 100 * up), colour) << "cube, column " << column;
        }
        // The side that looks at the camera starts half way along the picture.
        for (const int side : {0, 1}) {
            const std::string colour = COLOURS[row][2 + side];
            const double x = 60 + (side == 0 ? -20 : 20), y = row == 0 ? 20 : -20;
            EXPECT_EQ(colourAt(image, x, 60 + y), colour) << "true sphere, side " << side;
            EXPECT_EQ(colourAt(image, x, -60 + y), colour) << "sphere of polygons, side " << side;
        }
    }
}

} // namespace
