// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"
#include "headless/images/image_files.h"

#include <cmath>

namespace {

using headless::Image;

/// Pictures of a wall of shining tiles, which has no noise but at the edges of the tiles.
class PictureRegions : public Programs {
protected:
    static constexpr int32_t WIDTH = 80;
    static constexpr int32_t HEIGHT = 60;

    PictureRegions() {
        std::string materials;
        for (const char* const row : {"r [1, 0, 0]", "g [0, 1, 0]", "b [0, 0, 1]", "w [1, 1, 1]"}) {
            const std::string name(1, row[0]);
            materials += (materials.empty() ? "" : ", ") + std::string(R"({"id": ")") + name +
                         R"(", "name": ")" + name +
                         R"(", "parameters": {"MATERIAL_USE_COLOR": false, "MATERIAL_USE_LUMINANCE": true,
                            "MATERIAL_LUMINANCE_COLOR": )" +
                         (row + 2) + "}}";
        }
        // The lens is off the middle of the film, so that a region's own shift is added to another.
        std::string objects =
            R"({"type": "Camera", "position": [0, 0, -500], "parameters": {"CAMERA_FILM_OFFSET_X": 0.05,
                "CAMERA_FILM_OFFSET_Y": 0.1}, "tags": [{"type": 1022083, "parameters": {
                "CAM_TONEMAP_METHOD": "CAM_TONEMAP_LINEAR", "CAM_TONEMAP_SCALE": 1, "CAM_AUTOFOCUS": false}}], "id": "cam"})";
        for (int i = 0; i < 12; ++i) {
            objects +=
                R"(, {"type": "Plane", "position": [)" + std::to_string(100 * (i % 4) - 150) + ", " +
                std::to_string(100 - 100 * (i / 4)) +
                R"(, 0], "parameters": {"PRIM_PLANE_WIDTH": 90, "PRIM_PLANE_HEIGHT": 90, "PRIM_PLANE_SUBW": 1,
                       "PRIM_PLANE_SUBH": 1, "PRIM_AXIS": 5}, "tags": [{"type": "Texture", "material": ")" +
                "rgbw"[(i + i / 4 * 3) % 4] + "\"}]}";
        }
        writeFile(folder() / "wall.json",
                  R"({"format": "quenza-headless-document", "version": 1, "camera": "cam", "objects": [)" +
                      objects + R"(], "materials": [)" + materials + "]}");
    }

    Image picture(const std::string& region) {
        const std::string file = (folder() / "picture.png").string();
        EXPECT_EQ(headless("picture wall.json --size 80x60 --set RS_HALT_SPP=16 --image " + file + region), 0)
            << errors;
        Image image;
        EXPECT_EQ(headless::readImage(file, image), IMAGERESULT_OK);
        return image;
    }
    /// Mean difference of the bytes of a part of two images.
    static double difference(const Image& a, const Image& b, int32_t left, int32_t top, int32_t width,
                             int32_t height) {
        double sum = 0.0;
        for (int32_t y = top; y < top + height; ++y) {
            for (int32_t x = 3 * left; x < 3 * (left + width); ++x) {
                sum += std::abs(a.bytes()[3 * WIDTH * y + x] - b.bytes()[3 * WIDTH * y + x]);
            }
        }
        return sum / (3.0 * width * height);
    }
};

/// A region shows what the whole picture shows there, not a picture of its own.
TEST_F(PictureRegions, AreCutOutOfTheWholePicture) {
    const Image whole = picture("");
    const Image rows = picture(" --rows 10-25");
    const Image columns = picture(" --columns 50-75");
    EXPECT_LT(difference(whole, rows, 0, 10, WIDTH, 15), 6.0);
    EXPECT_LT(difference(whole, columns, 50, 0, 25, HEIGHT), 6.0);
    EXPECT_GT(difference(whole, rows, 0, 30, WIDTH, 15), 20.0);
    EXPECT_GT(difference(whole, columns, 10, 0, 25, HEIGHT), 20.0);
}

} // namespace
