// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/medium.h"
#include "engine/random.h"
#include "engine/vec.h"

namespace engine {

/// Density per steradian of light that goes on at the angle to its way whose cosine is given: Henyey and
/// Greenstein, "Diffuse Radiation in the Galaxy" (1941), by the mean cosine of that angle.
float henyeyGreenstein(float cosine, float mean_cosine);

/// A direction drawn with that density; `direction` is the way before.
Vec sampleHenyeyGreenstein(const Vec& direction, float mean_cosine, Random& random);

/// Share of the light that is left after a way through a medium; `distance` is in metres. Null is empty
/// space. What is infinitely far is seen through no medium, since its surface must lie before.
RGB transmittance(const InternalMedium* medium, float distance);

/// A flight through a medium that scatters, up to its end after `distance` metres, which may be infinite.
struct Flight {
    bool scattered = false;
    float distance = 0; ///< Where it scattered.
    RGB weight;         ///< What is left of the light, over the density.
};
/// The channels' distances differ: one is chosen by the path's `throughput`, and the densities of all are
/// counted (the balance heuristic of Veach 1997).
Flight sampleFlight(const InternalMedium& medium, float distance, const RGB& throughput, Random& random);

} // namespace engine
