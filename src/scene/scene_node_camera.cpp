// SPDX-License-Identifier: MIT
#include "scene/scene_node_camera.h"

#include "foundation/exceptions.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/transform_path.h"
#include "scene/xml_elements.h"

#include <iterator>

namespace Quenza {

SceneNodeCamera::SceneNodeCamera() : aperture_shape(new ApertureCircular) {}

Ref<SceneNode> SceneNodeCamera::clone() const {
    const Ref<SceneNodeCamera> copy = new SceneNodeCamera;
    copyBaseFieldsTo(*copy);
    copy->aperture_radius = aperture_radius;
    copy->focus_distance = focus_distance;
    copy->sensor_width = sensor_width;
    copy->lens_sensor_dist = lens_sensor_dist;
    copy->exposure_duration = exposure_duration;
    copy->lens_shift_up_distance = lens_shift_up_distance;
    copy->lens_shift_right_distance = lens_shift_right_distance;
    copy->autofocus = autofocus;
    copy->obstacle_map_path = obstacle_map_path;
    copy->aperture_shape = aperture_shape;
    copy->keyframes = keyframes;
    copy->up = up;
    copy->forwards = forwards;
    copy->camera_type = camera_type;
    return copy;
}

void SceneNodeCamera::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    writeOpenTag(stream, depth, "camera");
    writeUIDAndName(stream, depth + 1);
    writeDoubleElement(stream, depth + 1, "aperture_radius", aperture_radius);
    writeDoubleElement(stream, depth + 1, "focus_distance", focus_distance);
    writeDoubleElement(stream, depth + 1, "sensor_width", sensor_width);
    writeDoubleElement(stream, depth + 1, "lens_sensor_dist", lens_sensor_dist);
    writeDoubleElement(stream, depth + 1, "exposure_duration", exposure_duration);
    writeDoubleElement(stream, depth + 1, "lens_shift_up_distance", lens_shift_up_distance);
    writeDoubleElement(stream, depth + 1, "lens_shift_right_distance", lens_shift_right_distance);
    if (autofocus)
        writeEmptyElement(stream, depth + 1, "autofocus");
    if (!obstacle_map_path.empty()) {
        writeOpenTag(stream, depth + 1, "obstacle_map");
        writePathElement(stream, depth + 2, "path", obstacle_map_path, options);
        writeCloseTag(stream, depth + 1, "obstacle_map");
    }
    aperture_shape->writeToXML(stream, depth + 1, options);
    for (const KeyFrame& keyframe : keyframes)
        keyframe.writeToXML(stream, depth + 1);
    writeVec3Element(stream, depth + 1, "up", up);
    writeVec3Element(stream, depth + 1, "forwards", forwards);
    writeStringElement(stream, depth + 1, "camera_type",
                       camera_type < std::size(CAMERA_TYPE_WORDS) ? CAMERA_TYPE_WORDS[camera_type] : "");
    writeCloseTag(stream, depth, "camera");
}

void SceneNodeCamera::doVisit(SceneVisitor& visitor) {
    switch (visitor.mode) {
    case SceneVisitor::COLLECT_DEPENDENCIES:
        if (!obstacle_map_path.empty())
            visitor.dependencies.push_back(obstacle_map_path);
        break;
    case SceneVisitor::UPDATE_DEPENDENCIES:
        if (!obstacle_map_path.empty())
            obstacle_map_path = getMappedPath(visitor.path_map, obstacle_map_path);
        break;
    case SceneVisitor::BOUNDING_BOX:
        growBox(visitor);
        break;
    case SceneVisitor::OFFSET_UIDS:
        visitor.offsetUID(uid);
        break;
    default:
        break;
    }
    aperture_shape->doVisit(visitor);
}

void SceneNodeCamera::growBox(SceneVisitor& visitor) const {
    try {
        TransformPath(Matrix3d::identity(), 1.0, keyframes).growVisitorBox(visitor, {0, 0, 0}, {0, 0, 0});
    } catch (const TransformPathExcep& e) {
        throw QuenzaException(e.message());
    }
}

} // namespace Quenza
