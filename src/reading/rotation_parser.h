// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/vector.h"
#include "scene/keyframe.h"
#include "scene/rotation.h"

class TiXmlElement;

namespace Quenza {

/// The rotation that is a child of `holder`: `matrix`, `axis_rotation` or `rotation_quaternion`; the last two
/// have an `axis` and an `angle` in radians. Throws SceneParseUtilsExcep.
Ref<Rotation> parseRotation(const TiXmlElement& holder);

/// A `keyframe`: `time`, `pos` and, unless nothing is turned, `rotation_quaternion`.
KeyFrame parseKeyFrame(const TiXmlElement& element);

/// All `keyframe` children, in order.
Vector<KeyFrame> parseKeyFrames(const TiXmlElement& element);

/// An object that rests at `pos`, not turned.
KeyFrame makeStaticKeyFrame(const Vec3d& pos);

} // namespace Quenza
