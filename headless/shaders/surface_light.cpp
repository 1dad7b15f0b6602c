// SPDX-License-Identifier: MIT
#include "headless/shaders/surface_light.h"

#include <algorithm>
#include <cmath>

namespace headless {

void lightFromViewer(const VolumeData& volume, Vector* diffuse, Vector* highlights) {
    constexpr float POLISH = 25.0f;
    const float cosine = volume.ray ? std::min(std::abs(Dot(volume.ray->v, volume.n)), 1.0f) : 1.0f;
    if (diffuse) {
        *diffuse = Vector(cosine, cosine, cosine);
    }
    if (highlights) {
        // The direction half way between light and viewer is that of both.
        const float highlight = std::pow(cosine, POLISH);
        *highlights = Vector(highlight, highlight, highlight);
    }
}

} // namespace headless
