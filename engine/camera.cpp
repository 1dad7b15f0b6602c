// SPDX-License-Identifier: MIT
#include "engine/camera.h"

#include "engine/colour.h"
#include "engine/sampling.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

using Quenza::SceneNodeCamera;
using Quenza::u32;

/// A focus nearer than that is no focus: everything would be blurred away.
constexpr float MIN_FOCUS = 1e-4f;

} // namespace

Camera::Camera(const SceneNodeCamera& node, u32 width, u32 height, bool vignetting, ImageCache& images,
               Notices& notices)
    : type_(node.camera_type), width_(float(std::max(1u, width))), height_(float(std::max(1u, height))),
      sensor_width_(float(node.sensor_width)), lens_sensor_dist_(float(node.lens_sensor_dist)),
      aperture_radius_(std::max(0.0f, float(node.aperture_radius))),
      focus_distance_(std::max(MIN_FOCUS, float(node.focus_distance))),
      shift_up_(float(node.lens_shift_up_distance)), shift_right_(float(node.lens_shift_right_distance)),
      autofocus_(node.autofocus), vignetting_(vignetting),
      motion_(Quenza::Matrix3d::identity(), node.keyframes), forwards_(normalise(toVec(node.forwards))),
      aperture_(node.aperture_shape.getPointer(), images, notices) {
    const Vec up = toVec(node.up);
    right_ = normalise(cross(forwards_, up));
    if (length(right_) < 0.5f) {
        right_ = Frame(forwards_).tangent;
    }
    up_ = cross(right_, forwards_);
    if (!node.obstacle_map_path.empty()) {
        obstacle_ = images.load(node.obstacle_map_path);
    }
}

Camera::Pose Camera::poseAt(float time) const {
    const Affine place = motion_.at(time);
    return {place.origin, normalise(place.vector(right_)), normalise(place.vector(up_)),
            normalise(place.vector(forwards_))};
}

void Camera::focus(const Geometry& geometry) {
    if (!autofocus_ || type_ != SceneNodeCamera::THIN_LENS_PERSPECTIVE) {
        return;
    }
    const Pose pose = poseAt(0);
    Ray ray;
    ray.origin = pose.position + pose.right * shift_right_ + pose.up * shift_up_;
    ray.direction =
        normalise(pose.forwards * lens_sensor_dist_ + pose.right * shift_right_ + pose.up * shift_up_);
    Hit hit;
    if (geometry.intersect(ray, hit, true)) {
        focus_distance_ = std::max(MIN_FOCUS, hit.distance * dot(ray.direction, pose.forwards));
    }
}

Camera::View Camera::view(float x, float y, Random& random) const {
    const float time = random.next();
    const Pose pose = poseAt(time);
    View view = type_ == SceneNodeCamera::ORTHOGRAPHIC ? orthographic(pose, x, y)
                : type_ == SceneNodeCamera::SPHERICAL  ? spherical(pose, x, y)
                                                       : thinLens(pose, x, y, random);
    view.ray.time = time;
    return view;
}

Camera::View Camera::thinLens(const Pose& pose, float x, float y, Random& random) const {
    // The picture on the sensor is upside down; these are its places as they are seen, in front of the lens.
    const float across = (x / width_ - 0.5f) * sensor_width_ + shift_right_;
    const float above = (0.5f - y / height_) * sensor_width_ * height_ / width_ + shift_up_;
    const Vec towards = pose.forwards * lens_sensor_dist_ + pose.right * across + pose.up * above;
    const Vec centre = pose.position + pose.right * shift_right_ + pose.up * shift_up_;
    const Vec sharp = centre + towards * (focus_distance_ / lens_sensor_dist_);
    const Vec on_lens = aperture_.sample(random);

    View view;
    view.ray.origin = centre + (pose.right * on_lens.x + pose.up * on_lens.y) * aperture_radius_;
    view.ray.direction = normalise(sharp - view.ray.origin);
    view.weight = obstacle(on_lens);
    if (vignetting_) {
        const float cosine = dot(normalise(towards), pose.forwards);
        view.weight *= cosine * cosine * cosine * cosine;
    }
    return view;
}

Camera::View Camera::orthographic(const Pose& pose, float x, float y) const {
    const float across = (x / width_ - 0.5f) * sensor_width_ + shift_right_;
    const float above = (0.5f - y / height_) * sensor_width_ * height_ / width_ + shift_up_;
    View view;
    view.ray.origin = pose.position + pose.right * across + pose.up * above;
    view.ray.direction = pose.forwards;
    return view;
}

Camera::View Camera::spherical(const Pose& pose, float x, float y) const {
    const float longitude = (x / width_ - 0.5f) * 2 * PI;
    const float latitude = (0.5f - y / height_) * PI;
    View view;
    view.ray.origin = pose.position;
    view.ray.direction = normalise((pose.forwards * std::cos(longitude) + pose.right * std::sin(longitude)) *
                                       std::cos(latitude) +
                                   pose.up * std::sin(latitude));
    return view;
}

float Camera::obstacle(const Vec& on_lens) const {
    if (!obstacle_ || obstacle_->width == 0 || obstacle_->height == 0) {
        return 1.0f;
    }
    const auto place = [](float f, u32 n) {
        return std::min(u32(std::clamp(f, 0.0f, 1.0f) * float(n)), n - 1);
    };
    const float* const p = obstacle_->pixel(place(0.5f * (on_lens.x + 1.0f), obstacle_->width),
                                            place(0.5f * (1.0f - on_lens.y), obstacle_->height));
    return std::max(0.0f, luminance({p[0], p[1], p[2]}));
}

Lens::Lens(const SceneNodeCamera& camera)
    : aperture_radius(std::max(0.0, camera.aperture_radius)), lens_sensor_dist(camera.lens_sensor_dist),
      exposure_duration(camera.exposure_duration), focus_distance(camera.focus_distance) {}

double Lens::exposure(double focused_at) const {
    // The lens is focused, so that its focal length is below its distance from the sensor.
    const double focal = 1.0 / (1.0 / lens_sensor_dist + 1.0 / std::max(double(MIN_FOCUS), focused_at));
    const double number = focal / (2.0 * aperture_radius);
    const double exposure = exposure_duration / (number * number);
    return std::isfinite(exposure) && exposure > 0 ? exposure : 0.0;
}

} // namespace engine
