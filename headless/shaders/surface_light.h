// SPDX-License-Identifier: MIT
#pragma once

#include "host/shading.h"

namespace headless {

/// Light on a point that is shaded without a scene: a single distant light of strength 1 that shines where
/// the viewer looks. `diffuse` is the cosine of its angle to the surface, of either side; `highlights` that
/// of a polished surface's mirror. Without a ray the light stands on the normal. Either may be null.
void lightFromViewer(const VolumeData& volume, Vector* diffuse, Vector* highlights);

} // namespace headless
