// SPDX-License-Identifier: MIT
#include "render/region_camera.h"

#include "scene/rotation.h"

#include <cmath>

using Quenza::SceneNodeCamera;
using Quenza::Vec3d;

namespace {

Vec3d cross(const Vec3d& a, const Vec3d& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vec3d normalised(const Vec3d& v) {
    const double length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return length > 0.0 ? Vec3d{v.x / length, v.y / length, v.z / length} : v;
}

Vec3d multiply(const Quenza::Matrix3d& m, const Vec3d& v) {
    return {m.e[0] * v.x + m.e[1] * v.y + m.e[2] * v.z, m.e[3] * v.x + m.e[4] * v.y + m.e[5] * v.z,
            m.e[6] * v.x + m.e[7] * v.y + m.e[8] * v.z};
}

/// A shift moves the lens off the camera's place: takes the place back by as much.
void moveBack(SceneNodeCamera& camera, double right, double up) {
    const Vec3d axisRight = normalised(cross(camera.forwards, camera.up));
    const Vec3d axisUp = normalised(cross(axisRight, camera.forwards));
    const Vec3d shift{axisRight.x * right + axisUp.x * up, axisRight.y * right + axisUp.y * up,
                      axisRight.z * right + axisUp.z * up};
    for (Quenza::KeyFrame& key : camera.keyframes) {
        const Vec3d turned = multiply(Quenza::axisAngleMatrix(key.rotation_axis, key.rotation_angle), shift);
        key.pos = {key.pos.x - turned.x, key.pos.y - turned.y, key.pos.z - turned.z};
    }
}

} // namespace

void aimAtRegion(SceneNodeCamera& camera, const PictureJob& job) {
    const bool isWhole = job.regionWidth == job.bufferWidth && job.regionHeight == job.bufferHeight;
    if (isWhole || camera.camera_type == SceneNodeCamera::SPHERICAL) {
        return;
    }
    const auto middle = [](int64_t start, int64_t length) {
        return static_cast<double>(start) + 0.5 * static_cast<double>(length);
    };
    const auto aspect = [](int64_t width, int64_t height) {
        return static_cast<double>(width) / static_cast<double>(height);
    };
    const double pixel = camera.sensor_width / static_cast<double>(job.bufferWidth);
    const double right = (middle(job.regionX, job.regionWidth) - middle(0, job.bufferWidth)) * pixel;
    const double up = (middle(0, job.bufferHeight) - middle(job.regionY, job.regionHeight)) * pixel;
    // The export took the region's height for that of the film, of which the camera's own shift is a part.
    const double wholeShiftUp = camera.lens_shift_up_distance * aspect(job.regionWidth, job.regionHeight) /
                                aspect(job.bufferWidth, job.bufferHeight);
    const double correction = wholeShiftUp - camera.lens_shift_up_distance;
    camera.sensor_width = static_cast<double>(job.regionWidth) * pixel;
    camera.lens_shift_right_distance += right;
    camera.lens_shift_up_distance = wholeShiftUp + up;
    if (camera.camera_type == SceneNodeCamera::THIN_LENS_PERSPECTIVE) {
        moveBack(camera, right, up + correction);
    } else {
        moveBack(camera, 0.0, correction);
    }
}
