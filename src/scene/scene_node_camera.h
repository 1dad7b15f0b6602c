// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/vec.h"
#include "scene/aperture_shape.h"
#include "scene/keyframe.h"
#include "scene/scene_node.h"

namespace Quenza {

/// The values of SceneNodeCamera::CameraType in a scene file, in their order.
inline constexpr const char* CAMERA_TYPE_WORDS[] = {"thin-lens-perspective", "orthographic", "spherical"};

/// The thin-lens camera. A scene has at most one. Lengths are in metres.
class SceneNodeCamera : public SceneNode {
public:
    /// Values of `camera_type`.
    enum CameraType : u32 {
        THIN_LENS_PERSPECTIVE = 0,
        ORTHOGRAPHIC = 1,
        SPHERICAL = 2,
    };

    SceneNodeCamera();

    u32 getType() const override { return NODE_CAMERA; }
    /// The copy shares the aperture shape.
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;

    double aperture_radius = 0.001;
    double focus_distance = 20.0;
    double sensor_width = 0.036;
    double lens_sensor_dist = 0.036;
    double exposure_duration = 0.333; ///< Seconds.
    double lens_shift_up_distance = 0;
    double lens_shift_right_distance = 0;
    bool autofocus = true;
    String obstacle_map_path;          ///< Image of what dims the lens; empty for none.
    Ref<ApertureShape> aperture_shape; ///< Never null.
    Vector<KeyFrame> keyframes;        ///< Over the frame interval; one for a static camera.
    Vec3d up{0, 0, 1};
    Vec3d forwards{0, 1, 0};
    u32 camera_type = THIN_LENS_PERSPECTIVE;

private:
    void growBox(SceneVisitor& visitor) const;
};

} // namespace Quenza
