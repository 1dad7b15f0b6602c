// SPDX-License-Identifier: MIT
#pragma once

#include "engine/medium.h"

namespace engine {

/// Layers of the skin, after Donner and Jensen, "A Spectral BSSRDF for Shading Human Skin" (EGSR 2006).
/// Scattering is their reduced one, which turns light evenly to all sides. Fractions are from 0 to 1.

/// The outer layer: `melanin` is its share of the volume, `brown` that of the brown-black kind in it, the
/// rest being reddish yellow.
InternalMedium epidermis(float melanin, float brown);

/// The inner layer: `haemoglobin` is the blood's share of the volume.
InternalMedium dermis(float haemoglobin);

} // namespace engine
