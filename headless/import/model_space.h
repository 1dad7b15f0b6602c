// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

#include <assimp/scene.h>

#include <cmath>

namespace headless {

inline bool areAllFinite(const aiVector3D& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
inline bool areAllFinite(const aiQuaternion& q) {
    return std::isfinite(q.w) && std::isfinite(q.x) && std::isfinite(q.y) && std::isfinite(q.z);
}

/// From the space of a model as Assimp gives it, right-handed with Y up, to the host's, left-handed with Y up
/// in centimetres: lengths are scaled and Z is mirrored.
class ModelSpace {
public:
    /// For the model's root, which `rootMatrix` is the transform of: takes over its scale when that is the
    /// same along all axes and `keepScale` isn't set.
    ModelSpace(const aiScene& scene, bool keepScale);

    /// Centimetres per unit of the model below its root.
    double unit() const { return unit_; }
    /// The root's transform, with the file's own axes brought to Y up.
    Matrix rootMatrix() const;

    Vector point(const aiVector3D& p) const;
    /// For the transform of a node: from its space to its parent's.
    Matrix matrix(const aiMatrix4x4& m) const;

    static Vector direction(const aiVector3D& v) { return {v.x, v.y, 0.0f - v.z}; }
    static Matrix rotation(const aiQuaternion& q);

private:
    double unit_ = 1.0;
    /// Centimetres per unit outside the root.
    double outerUnit_ = 1.0;
    aiMatrix4x4 root_;
};

} // namespace headless
