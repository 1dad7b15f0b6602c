// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/model/camera_lens.h"
#include "headless/model/primitive_ids.h"

#include <cmath>

// Focal length, film and field of view of a camera are one thing, whoever sets them.

namespace headless {

namespace {

class CameraLensTest : public DocumentsTest {
protected:
    struct Lens {
        double focus;
        double aperture;
        double view;
    };
    static Lens lensOf(const Object& camera) {
        const auto real = [&camera](int32_t id) { return static_cast<double>(camera.data.GetReal(id)); };
        return {real(CAMERA_FOCUS), real(CAMERA_APERTURE), real(CAMERA_FOV)};
    }
    static void expectLens(const Object& camera, double focus, double aperture, const std::string& where) {
        const Lens lens = lensOf(camera);
        EXPECT_NEAR(lens.focus, focus, 1e-4 * focus) << where;
        EXPECT_NEAR(lens.aperture, aperture, 1e-4 * aperture) << where;
        EXPECT_NEAR(lens.view, 2.0 * std::atan(aperture / (2.0 * focus)), 1e-5) << where;
    }
    std::unique_ptr<Document> loadCamera(const std::string& body) const {
        return load(R"("fps": 10, "objects": [{"type": "Camera", )" + body + "}]");
    }
};

TEST_F(CameraLensTest, DocumentsTellItInAnyWords) {
    const struct {
        const char* parameters;
        double focus;
        double aperture;
    } cases[] = {
        {R"("CAMERA_FOCUS": 50)", 50, 36},
        {R"("CAMERA_FOCUS": 50, "CAMERA_APERTURE": 24)", 50, 24},
        {R"("CAMERA_FOV": {"degrees": 90})", 18, 36},
        {R"("CAMERA_FOV": {"degrees": 90}, "CAMERA_APERTURE": 24)", 12, 24},
        {R"("1008": {"degrees": 90}, "CAMERA_APERTURE": 24)", 12, 24},
        {R"("500": 50, "CAMERA_FOV": {"degrees": 90})", 18, 36},
    };
    for (const auto& test : cases) {
        const auto document = loadCamera(std::string("\"parameters\": {") + test.parameters + "}");
        const Object& camera = *document->objects().first();
        expectLens(camera, test.focus, test.aperture, test.parameters);
        const auto copy = saveAndLoad(*document);
        const Lens kept = lensOf(*copy->objects().first()), lens = lensOf(camera);
        EXPECT_EQ(kept.focus, lens.focus) << test.parameters;
        EXPECT_EQ(kept.view, lens.view) << test.parameters;
    }
}

} // namespace

} // namespace headless
