// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/model/camera_lens.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/track.h"
#include "host/object.h"

#include <cmath>
#include <limits>

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

TEST_F(CameraLensTest, SettingAParameterMovesTheOthers) {
    const std::unique_ptr<Object> camera = createObject(Ocamera);
    expectLens(*camera, 36, 36, "a new camera");
    BaseList2D& node = *toHost(camera.get());
    node.SetParameter(DescID(CAMERA_FOCUS), GeData(50.0));
    expectLens(*camera, 50, 36, "focal length");
    node.SetParameter(DescID(CAMERA_APERTURE), GeData(24.0));
    expectLens(*camera, 50, 24, "film: the lens stays");
    node.SetParameter(DescID(CAMERA_FOV), GeData(2.0 * std::atan(0.25)));
    expectLens(*camera, 48, 24, "field of view: the film stays");
    node.SetParameter(DescID(CAMERA_TARGET_DISTANCE), GeData(100.0));
    expectLens(*camera, 48, 24, "no part of the lens");
}

TEST_F(CameraLensTest, ValuesOfNoLensLeaveTheOthers) {
    const struct {
        int32_t id;
        float value;
    } cases[] = {{CAMERA_FOCUS, 0.0f},    {CAMERA_FOCUS, -3.0f},
                 {CAMERA_APERTURE, 0.0f}, {CAMERA_FOV, 0.0f},
                 {CAMERA_FOV, 3.2f},      {CAMERA_FOV, std::numeric_limits<float>::quiet_NaN()}};
    for (const auto& test : cases) {
        const std::unique_ptr<Object> camera = createObject(Ocamera);
        BaseContainer expected = camera->data;
        camera->setParameter(test.id, GeData(test.value));
        for (const int32_t id : {CAMERA_FOCUS + 0, CAMERA_APERTURE + 0, CAMERA_FOV + 0}) {
            if (id != test.id) {
                EXPECT_EQ(camera->data.GetReal(id), expected.GetReal(id)) << test.id << " = " << test.value;
            }
        }
    }
}

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

TEST_F(CameraLensTest, TracksMoveTheWholeLens) {
    const auto document =
        loadCamera(R"("tracks": [{"parameter": "CAMERA_FOCUS", "keys": [[0, 30], [10, 90]]}])");
    Object& camera = *document->objects().first();
    applyTracks(camera, 0.75);
    expectLens(camera, 75, 36, "focal length");

    const auto zoom = loadCamera(
        R"("tracks": [{"parameter": "CAMERA_FOV", "keys": [[0, {"degrees": 30}], [10, {"degrees": 90}]]}])");
    applyTracks(*zoom->objects().first(), 1.0);
    expectLens(*zoom->objects().first(), 18, 36, "field of view");
}

} // namespace

} // namespace headless
