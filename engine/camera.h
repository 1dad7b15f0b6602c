// SPDX-License-Identifier: MIT
#pragma once

#include "engine/aperture.h"
#include "engine/geometry.h"
#include "engine/random.h"
#include "engine/transform.h"
#include "scene/scene_node_camera.h"

#include <memory>

namespace engine {

/// What of a camera decides how much light reaches its film.
struct Lens {
    explicit Lens(const Quenza::SceneNodeCamera& camera);

    /// Exposure time in seconds over the squared f-number, with the lens focused at that distance in metres;
    /// 0 when there is no such number.
    double exposure(double focused_at) const;

    double aperture_radius, lens_sensor_dist, exposure_duration; ///< Metres and seconds.
    double focus_distance; ///< Metres; what autofocus finds wins over it.
};

/// Makes the rays that a pixel sees.
class Camera {
public:
    /// The image's size gives the sensor's height. `vignetting` dims towards the edges as a real lens does.
    Camera(const Quenza::SceneNodeCamera& node, Quenza::u32 width, Quenza::u32 height, bool vignetting,
           ImageCache& images, Notices& notices);

    /// Sets the focus to what lies in the middle of the picture, when the camera wants that.
    void focus(const Geometry& geometry);

    struct View {
        Ray ray;
        float weight = 1; ///< Share of the light that the lens lets through.
    };
    /// Through the place (x, y), in pixels from the top left corner, at a random time of the frame.
    View view(float x, float y, Random& random) const;

    /// At the beginning of the exposure.
    Vec position() const { return poseAt(0).position; }
    float focusDistance() const { return focus_distance_; }

private:
    struct Pose {
        Vec position, right, up, forwards;
    };
    Pose poseAt(float time) const;
    View thinLens(const Pose& pose, float x, float y, Random& random) const;
    View orthographic(const Pose& pose, float x, float y) const;
    View spherical(const Pose& pose, float x, float y) const;
    float obstacle(const Vec& on_lens) const;

    Quenza::u32 type_;
    float width_, height_; ///< Of the image, in pixels.
    float sensor_width_, lens_sensor_dist_, aperture_radius_, focus_distance_;
    float shift_up_, shift_right_;
    bool autofocus_, vignetting_;
    MotionTransform motion_; ///< Of the camera's own axes: x right, y forwards, z up.
    Vec right_, up_, forwards_;
    Aperture aperture_;
    std::shared_ptr<const FloatImage> obstacle_;
};

} // namespace engine
