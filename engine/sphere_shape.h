// SPDX-License-Identifier: MIT
#pragma once

#include <embree3/rtcore.h>

namespace engine {

/// Adds the sphere of radius 1 about the origin, met from outside and inside. The normal of a hit is the
/// point itself.
void attachUnitSphere(RTCDevice device, RTCScene scene);

} // namespace engine
