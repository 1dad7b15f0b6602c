// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/vec.h"
#include "foundation/vector.h"
#include "scene/keyframe.h"

namespace Quenza {

class SceneVisitor;

class TransformPathExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// The way of an object through the frame: a point p of the object is at pos + turn * rotation * scale * p,
/// where pos and turn come from the keyframes.
class TransformPath {
public:
    /// Throws TransformPathExcep when there are no keyframes, when the rotation can't be inverted, or when
    /// several keyframes don't span the times 0 to 1 in strictly rising order. One keyframe may have any
    /// time.
    TransformPath(const Matrix3d& rotation, double scale, const Vector<KeyFrame>& keyframes);

    /// A box that holds the object box at all times. It is tight where the turn stays the same from key to
    /// key; between keys of different turns it holds the sphere about the object's origin.
    void getSweptBox(const Vec3d& object_min, const Vec3d& object_max, Vec3d& swept_min,
                     Vec3d& swept_max) const;

    /// Grows the box of the visitor's bounding box mode.
    void growVisitorBox(SceneVisitor& visitor, const Vec3d& object_min, const Vec3d& object_max) const;

private:
    void checkTimes() const;

    Matrix3d object_matrix_;
    Vector<KeyFrame> keyframes_;
};

} // namespace Quenza
