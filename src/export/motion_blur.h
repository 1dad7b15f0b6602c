// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/vector.h"
#include "host/vector.h"
#include "scene/keyframe.h"

#include <vector>

class BaseObject;
struct ExportContext;

/// The way of an object through the exposure, as keyframes in scene space. True when the object, or one above
/// it, has the host's motion blur tag and keyframes were appended: their times rise strictly from 0 to 1.
///
/// `matrix` is the object's world matrix at the exported frame. `chain` is the path to the object from the
/// top: the product of its local matrices is the world matrix at other times. `shift` is subtracted from
/// positions: metres, in host axes.
bool exportMotionBlur(Quenza::Vector<Quenza::KeyFrame>& keyframes, BaseObject* object, const Matrix& matrix,
                      ExportContext& context, const std::vector<BaseObject*>& chain, const Vector& shift);
