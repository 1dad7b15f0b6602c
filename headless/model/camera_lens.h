// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"

namespace headless {

/// Horizontal field of view in radians of a lens of `focus` millimetres before a film `aperture` millimetres
/// wide: 2 atan(aperture / (2 focus)).
float fieldOfView(float focus, float aperture);

/// Keeps the lens of a camera consistent after a change of the parameter `changed`. A new focal length or
/// film width changes the field of view, a new field of view the focal length. Values that no lens has, such
/// as a focal length of 0, leave the others as they are.
void settleLens(BaseContainer& camera, int32_t changed);

} // namespace headless
