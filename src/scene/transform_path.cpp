// SPDX-License-Identifier: MIT
#include "scene/transform_path.h"

#include "scene/rotation.h"
#include "scene/scene_visitor.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quenza {

namespace {

/// A determinant below this part of what the lengths of the rows allow is rounding and nothing else.
constexpr double MIN_RELATIVE_DETERMINANT = 1e-15;

bool isInvertible(const Matrix3d& m) {
    const double* e = m.e;
    const double determinant = e[0] * (e[4] * e[8] - e[5] * e[7]) - e[1] * (e[3] * e[8] - e[5] * e[6]) +
                               e[2] * (e[3] * e[7] - e[4] * e[6]);
    const double limit =
        std::hypot(e[0], e[1], e[2]) * std::hypot(e[3], e[4], e[5]) * std::hypot(e[6], e[7], e[8]);
    return std::isfinite(determinant) && std::abs(determinant) > MIN_RELATIVE_DETERMINANT * limit;
}

Vec3d transformed(const Matrix3d& m, const Vec3d& v) {
    const double* e = m.e;
    return Vec3d{e[0] * v.x + e[1] * v.y + e[2] * v.z, e[3] * v.x + e[4] * v.y + e[5] * v.z,
                 e[6] * v.x + e[7] * v.y + e[8] * v.z};
}

struct Box {
    Vec3d min;
    Vec3d max;

    void grow(const Vec3d& p) {
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }
    void growBySphere(const Vec3d& centre, double radius) {
        grow({centre.x - radius, centre.y - radius, centre.z - radius});
        grow({centre.x + radius, centre.y + radius, centre.z + radius});
    }
};

bool sameTurn(const KeyFrame& a, const KeyFrame& b) {
    return a.rotation_angle == b.rotation_angle &&
           (a.rotation_angle == 0 || a.rotation_axis == b.rotation_axis);
}

} // namespace

TransformPath::TransformPath(const Matrix3d& rotation, double scale, const Vector<KeyFrame>& keyframes)
    : object_matrix_(rotation), keyframes_(keyframes) {
    if (keyframes.empty())
        throw TransformPathExcep("Must be at least one frame.");
    if (!isInvertible(rotation))
        throw TransformPathExcep("transformation matrix is not invertible");
    if (keyframes.size() > 1)
        checkTimes();
    for (double& e : object_matrix_.e)
        e *= scale;
}

void TransformPath::checkTimes() const {
    if (keyframes_[0].time > 0)
        throw TransformPathExcep("First frame must have time <= 0.0");
    if (keyframes_.back().time < 1)
        throw TransformPathExcep("Last frame must have time >= 1.0");
    for (u64 i = 1; i < keyframes_.size(); ++i)
        if (!(keyframes_[i].time > keyframes_[i - 1].time))
            throw TransformPathExcep("Frame times must be strictly increasing.");
}

void TransformPath::getSweptBox(const Vec3d& object_min, const Vec3d& object_max, Vec3d& swept_min,
                                Vec3d& swept_max) const {
    Vec3d corners[8];
    double radius = 0;
    for (u32 i = 0; i < 8; ++i) {
        corners[i] = transformed(object_matrix_,
                                 {i & 1 ? object_max.x : object_min.x, i & 2 ? object_max.y : object_min.y,
                                  i & 4 ? object_max.z : object_min.z});
        radius = std::max(radius, std::hypot(corners[i].x, corners[i].y, corners[i].z));
    }
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Box box{{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
    for (u64 k = 0; k < keyframes_.size(); ++k) {
        const KeyFrame& key = keyframes_[k];
        const Matrix3d turn = axisAngleMatrix(key.rotation_axis, key.rotation_angle);
        for (const Vec3d& corner : corners) {
            const Vec3d p = transformed(turn, corner);
            box.grow({key.pos.x + p.x, key.pos.y + p.y, key.pos.z + p.z});
        }
        if (k > 0 && !sameTurn(keyframes_[k - 1], key)) {
            box.growBySphere(keyframes_[k - 1].pos, radius);
            box.growBySphere(key.pos, radius);
        }
    }
    swept_min = box.min;
    swept_max = box.max;
}

void TransformPath::growVisitorBox(SceneVisitor& visitor, const Vec3d& object_min,
                                   const Vec3d& object_max) const {
    Vec3d min;
    Vec3d max;
    getSweptBox(object_min, object_max, min, max);
    visitor.growBox(min, max);
}

} // namespace Quenza
