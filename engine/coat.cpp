// SPDX-License-Identifier: MIT
#include "engine/coat.h"

#include "engine/fresnel.h"
#include "engine/reflectance.h"

#include <algorithm>
#include <cmath>

namespace engine {

RGB layerReflectance(float cosine, float eta, float fresnel_scale, float film) {
    const RGB plain = film > 0.0f ? filmReflectance(cosine, eta, film) : RGB{fresnelDielectric(cosine, eta)};
    const auto scaled = [&](float v) { return std::clamp(fresnel_scale * v, 0.0f, 1.0f); };
    return {scaled(plain.r), scaled(plain.g), scaled(plain.b)};
}

RGB Coat::reflected(float cosine) const {
    return layerReflectance(cosine, eta, fresnel_scale, film);
}

RGB Coat::transmitted(float cosine) const {
    const RGB through = RGB{1.0f} - reflected(cosine);
    if (isBlack(depth)) {
        return through;
    }
    const float inside = std::sqrt(std::max(0.0f, 1.0f - (1.0f - cosine * cosine) / (eta * eta)));
    const float way = 1.0f / std::max(0.1f, inside);
    return through * RGB{std::exp(-depth.r * way), std::exp(-depth.g * way), std::exp(-depth.b * way)};
}

} // namespace engine
