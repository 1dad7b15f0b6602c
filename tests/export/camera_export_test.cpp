// SPDX-License-Identifier: MIT
#include "export/camera_export.h"

#include "export/exporter_fixture.h"
#include "headless/model/document.h"
#include "headless/model/handles.h"
#include "headless/model/view.h"
#include "host/ids.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <cmath>

namespace {

/// Each case makes a context anew and runs the camera's export alone.
class CameraExportTest : public ExporterTest {
protected:
    CameraExportTest() : object(add(Ocamera, "Eye")), camera(object->GetDataInstance()) {
        host().document()->view().setSceneCamera(headless::fromHost(object));
        camera->SetReal(CAMERA_TARGET_DISTANCE, 3.0f);
    }
    BaseContainer& addCameraTag() { return *addTag(object, PLUGINID_CAMERA_TAG)->GetDataInstance(); }
    void exportCamera() {
        node = new Quenza::SceneNodeCamera;
        settings = new Quenza::SceneNodeRenderSettings;
        EXPECT_TRUE(::exportCamera(node, settings, makeContext()));
    }

    BaseObject* object;
    BaseContainer* camera;
    Quenza::Ref<Quenza::SceneNodeCamera> node;
    Quenza::Ref<Quenza::SceneNodeRenderSettings> settings;
};

} // namespace

TEST_F(CameraExportTest, ParallelViewKeepsTheLensDistance) {
    exportCamera();
    const double lensDistance = node->lens_sensor_dist;
    camera->SetLong(CAMERA_PROJECTION, CAMERA_PROJECTION_PARALLEL);
    camera->SetReal(CAMERA_ZOOM, 2.0f);
    host().worldPreferences().SetLong(WPREF_UNITS_BASIC, 3); // centimetres
    exportCamera();
    EXPECT_EQ(node->camera_type, Quenza::SceneNodeCamera::ORTHOGRAPHIC);
    EXPECT_FLOAT_EQ(float(node->sensor_width), 5.12f);
    EXPECT_EQ(node->lens_sensor_dist, lensDistance);
    camera->SetReal(CAMERA_ZOOM, 0.0f);
    exportCamera();
    EXPECT_TRUE(std::isinf(node->sensor_width));
}

TEST_F(CameraExportTest, RegionTakesItsCornersInAnyOrder) {
    BaseContainer& tag = addCameraTag();
    const struct {
        int32_t on, x1, x2, y1, y2;
        std::vector<int32_t> expected;
    } cases[] = {
        {1, 10, 20, 30, 40, {10, 20, 30, 40}},
        {1, 20, 10, 40, 30, {10, 20, 30, 40}},
        {1, -5, 5, 7, 7, {-5, 5, 7, 7}},
        {2, 10, 20, 30, 40, {}},
    };
    for (const auto& c : cases) {
        tag.SetLong(CAM_RENDER_REGION, c.on);
        tag.SetLong(CAM_REGION_X1, c.x1);
        tag.SetLong(CAM_REGION_X2, c.x2);
        tag.SetLong(CAM_REGION_Y1, c.y1);
        tag.SetLong(CAM_REGION_Y2, c.y2);
        exportCamera();
        std::vector<int32_t> region;
        if (const Quenza::Ref<Quenza::RenderRegion> set = settings->render_region) {
            region = {set->x1, set->x2, set->y1, set->y2};
        }
        EXPECT_EQ(region, c.expected);
    }
}

TEST_F(CameraExportTest, LensShiftMovesTheCameraBack) {
    host().worldPreferences().SetLong(WPREF_UNITS_BASIC, 3); // centimetres
    camera->SetReal(CAMERA_FILM_OFFSET_X, 0.1f);
    camera->SetReal(CAMERA_FILM_OFFSET_Y, 0.2f);
    // The camera looks along -X: its right is the host's +Z, its up turned away from Y by a scale of 2.
    object->SetMl(Matrix({100, 200, 300}, {0, 0, 1}, {0, 2, 0}, {-1, 0, 0}));
    exportCamera();
    const double right = 0.0036;
    const double up = -0.2 * 480 / 640 * 0.036;
    EXPECT_NEAR(node->lens_shift_right_distance, right, 1e-9);
    EXPECT_NEAR(node->lens_shift_up_distance, up, 1e-9);
    ASSERT_EQ(node->keyframes.size(), 1u);
    const Quenza::KeyFrame& key = node->keyframes[0];
    EXPECT_NEAR(key.pos.x, 1, 1e-6);
    EXPECT_NEAR(key.pos.y, 3 - right, 1e-6);
    EXPECT_NEAR(key.pos.z, 2 - 2 * up, 1e-6);
    EXPECT_EQ(key.time, 0);
    EXPECT_EQ(key.rotation_axis, (Quenza::Vec3d{0, 0, 1}));
    EXPECT_EQ(key.rotation_angle, 0);
    EXPECT_EQ(node->up, (Quenza::Vec3d{0, 0, 2}));
    EXPECT_EQ(node->forwards, (Quenza::Vec3d{-1, 0, 0}));
}
