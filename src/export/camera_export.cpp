// SPDX-License-Identifier: MIT
#include "export/camera_export.h"

#include "export/camera_image_settings.h"
#include "export/motion_blur.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/object.h"
#include "shared/parameter_ids.h"
#include "shared/scene_space.h"
#include "shared/text.h"

#include <algorithm>
#include <cmath>

using namespace Quenza;

namespace {

constexpr float DEFAULT_F_NUMBER = 8.0f;

/// The host tells field of view and film; the renderer wants a thin lens. Lengths are metres. A focus
/// distance of 0 makes the focal length, and with it the aperture, 0; a zoom of 0 an infinitely wide parallel
/// view.
void exportLens(SceneNodeCamera& node, const ExportContext& context, float filmWidth) {
    const BaseContainer& camera = context.cameraData;
    const float focusDistance = camera.GetReal(CAMERA_TARGET_DISTANCE) * context.sceneScale;
    node.focus_distance = double(focusDistance);
    const bool parallel = context.cameraObject && context.cameraObject->GetDataInstance()->GetLong(
                                                      CAMERA_PROJECTION) == CAMERA_PROJECTION_PARALLEL;
    if (parallel) {
        node.camera_type = SceneNodeCamera::ORTHOGRAPHIC;
        node.sensor_width = double(1024.0f / camera.GetReal(CAMERA_ZOOM) * context.sceneScale);
    } else {
        node.camera_type = SceneNodeCamera::THIN_LENS_PERSPECTIVE;
        node.sensor_width = double(filmWidth);
    }
    // A parallel camera has it as well, of the film that it doesn't use.
    const float lensDistance = filmWidth / (2.0f * std::tan(camera.GetReal(CAMERA_FOV) * 0.5f));
    node.lens_sensor_dist = double(lensDistance);
    const float fNumber =
        context.hasCameraTag ? context.cameraTagData.GetReal(CAM_F_NUMBER) : DEFAULT_F_NUMBER;
    const float focalLength = 1.0f / (1.0f / lensDistance + 1.0f / focusDistance);
    node.aperture_radius = double(focalLength / (2.0f * fNumber));
}

/// Without a tag its empty data gives the circular shape.
void exportApertureShape(SceneNodeCamera& node, const BaseContainer& tag) {
    switch (tag.GetLong(CAM_APERTURE_SHAPE, CAM_APERTURE_CIRCULAR)) {
    case CAM_APERTURE_CIRCULAR:
        node.aperture_shape = new ApertureCircular;
        break;
    case CAM_APERTURE_GENERATED: {
        const Ref<ApertureGenerated> shape = new ApertureGenerated;
        shape->num_blades = tag.GetLong(CAM_APERTURE_BLADES);
        shape->blade_offset = double(tag.GetReal(CAM_APERTURE_OFFSET));
        shape->blade_curvature_radius = double(tag.GetReal(CAM_APERTURE_CURVATURE));
        shape->start_angle = double(tag.GetReal(CAM_APERTURE_ANGLE));
        node.aperture_shape = shape;
        break;
    }
    case CAM_APERTURE_FROM_IMAGE: {
        const Ref<ApertureImage> shape = new ApertureImage;
        shape->path = toSceneString(tag.GetFilename(CAM_APERTURE_IMAGE));
        node.aperture_shape = shape;
        break;
    }
    default:
        break;
    }
}

/// Shifts the lens by the film's offsets; returns how far that moves the camera, in host axes.
::Vector exportLensShift(SceneNodeCamera& node, const ExportContext& context, float filmWidth,
                         const Matrix& matrix) {
    const float aspect = float(context.imageWidth) / float(context.imageHeight);
    const float up = context.cameraData.GetReal(CAMERA_FILM_OFFSET_Y) * (-1.0f / aspect) * filmWidth;
    const float right = context.cameraData.GetReal(CAMERA_FILM_OFFSET_X) * filmWidth;
    node.lens_shift_up_distance = double(up);
    node.lens_shift_right_distance = double(right);
    // The film is in metres whatever the document's unit: no sceneScale here.
    return matrix.axisY * up + matrix.axisX * right;
}

std::vector<BaseObject*> pathFromTop(BaseObject* object) {
    std::vector<BaseObject*> chain;
    for (BaseObject* at = object; at; at = at->GetUp()) {
        chain.push_back(at);
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

void exportPosition(SceneNodeCamera& node, ExportContext& context, const Matrix& matrix,
                    const ::Vector& shift) {
    // The keyframes then hold the rotation too, and turn the default axes.
    if (context.cameraObject && exportMotionBlur(node.keyframes, context.cameraObject, matrix, context,
                                                 pathFromTop(context.cameraObject), shift)) {
        return;
    }
    if (node.keyframes.empty()) {
        node.keyframes.push_back(KeyFrame{{0, 0, 0}, 0, {0, 0, 1}, 0});
    }
    node.keyframes[0].pos = toSceneSpaceDouble(matrix.off * context.sceneScale - shift);
    node.up = toSceneSpaceDouble(matrix.axisY);
    node.forwards = toSceneSpaceDouble(matrix.axisZ);
}

} // namespace

bool exportCamera(const Ref<SceneNodeCamera>& cameraNode, const Ref<SceneNodeRenderSettings>& settingsNode,
                  ExportContext& context) {
    if (settingsNode) {
        exportImageSettings(*settingsNode, context);
    }
    SceneNodeCamera& node = *cameraNode;
    const BaseContainer& tag = context.cameraTagData;
    node.exposure_duration = double(context.exposureDuration);
    constexpr float METRES_PER_MILLIMETRE = 0.001f;
    const float filmWidth = context.cameraData.GetReal(CAMERA_APERTURE, 36.0f) * METRES_PER_MILLIMETRE;
    // In every export, a quiet one too: it tells what film the lens was computed with.
    GePrint(RealToString(double(filmWidth), -1, 6));
    exportLens(node, context, filmWidth);
    exportApertureShape(node, tag);
    if (tag.GetBool(CAM_OBSTACLE_MAP)) {
        node.obstacle_map_path =
            toSceneString(tag.GetFilename(CAM_OBSTACLE_MAP_FILE, Filename("element not found")));
    }
    node.autofocus = !context.hasCameraTag || tag.GetLong(CAM_AUTOFOCUS) == 1;
    const Matrix matrix = context.cameraObject ? context.cameraObject->GetMg() : Matrix();
    exportPosition(node, context, matrix, exportLensShift(node, context, filmWidth, matrix));
    return true;
}
