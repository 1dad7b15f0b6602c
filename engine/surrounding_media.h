// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/medium_stack.h"
#include "engine/vec.h"

namespace engine {

/// The media whose closed surfaces lie around a point at the beginning of the exposure, such as the water
/// around a camera. Rays in several directions must agree: a pane that is open at its sides is around
/// nothing.
MediumStack mediaAround(const Geometry& geometry, const Vec& point);

} // namespace engine
