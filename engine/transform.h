// SPDX-License-Identifier: MIT
#pragma once

#include "engine/vec.h"
#include "foundation/vec.h"
#include "foundation/vector.h"
#include "scene/keyframe.h"

#include <vector>

namespace engine {

/// An affine map, held as the images of the axes and of the origin.
struct Affine {
    Vec x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1}, origin;

    Vec vector(const Vec& v) const { return x * v.x + y * v.y + z * v.z; }
    Vec point(const Vec& v) const { return vector(v) + origin; }
    float determinant() const { return dot(x, cross(y, z)); }
    /// Takes outward normals to outward normals, of a mirrored object too. The length is arbitrary.
    Vec normal(const Vec& n) const {
        const Vec turned = cross(y, z) * n.x + cross(z, x) * n.y + cross(x, y) * n.z;
        return determinant() < 0.0f ? -turned : turned;
    }
};

/// Where an object is at each time of the frame.
class MotionTransform {
public:
    MotionTransform() : steps_(1) {}
    /// A point p goes to pos + turn * linear * p; pos and turn come from the keyframes, which have rising
    /// times. Between keyframes the position moves on a line, and the turn about one axis at even speed.
    /// Without keyframes the object stands at the origin.
    MotionTransform(const Quenza::Matrix3d& linear, const Quenza::Vector<Quenza::KeyFrame>& keyframes);

    /// `time` is 0 to 1.
    Affine at(float time) const;
    bool moves() const { return steps_.size() > 1; }
    /// At even times from 0 to 1; between two of them the map is interpolated linearly.
    const std::vector<Affine>& steps() const { return steps_; }

private:
    std::vector<Affine> steps_;
};

} // namespace engine
