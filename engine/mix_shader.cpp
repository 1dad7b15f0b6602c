// SPDX-License-Identifier: MIT
#include "engine/mix_shader.h"

#include <algorithm>

namespace engine {

void PassShader::shade(const SurfacePoint&, const ShadeContext&, const RGB& weight, BSDF& bsdf) const {
    Lobe lobe;
    lobe.kind = Lobe::Kind::PASS;
    lobe.weight = weight;
    bsdf.add(lobe);
}

float MixShader::weightOf(size_t part, float value) const {
    if (!blends) {
        return std::clamp(value, 0.0f, 1.0f);
    }
    const float share = steps ? (value < 0.5f ? 0.0f : 1.0f) : std::clamp(value, 0.0f, 1.0f);
    return part == 0 ? 1.0f - share : share;
}

float MixShader::shareAt(size_t part, const SurfacePoint& point) const {
    return weightOf(part, parts[blends ? 0 : part].weight.at(point));
}

void MixShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                      BSDF& bsdf) const {
    for (size_t i = 0; i < parts.size(); ++i) {
        const float share = shareAt(i, point);
        if (share > 0.0f) {
            parts[i].shader->shade(point, context, weight * share, bsdf);
        }
    }
}

void MixShader::emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const {
    for (size_t i = 0; i < parts.size(); ++i) {
        const float share = shareAt(i, point);
        if (share > 0.0f) {
            parts[i].shader->emit(point, front, weight * share, sum);
        }
    }
}

void MixShader::emitAverage(bool front, float weight, LayeredRadiance& sum) const {
    for (size_t i = 0; i < parts.size(); ++i) {
        parts[i].shader->emitAverage(front, weight * weightOf(i, parts[blends ? 0 : i].weight.average()),
                                     sum);
    }
}

RGB MixShader::passing(const SurfacePoint& point, const ShadeContext& context) const {
    RGB sum{0.0f};
    for (size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].shader->mayPass()) {
            sum += parts[i].shader->passing(point, context) * shareAt(i, point);
        }
    }
    return sum;
}

bool MixShader::mayPass() const {
    return std::any_of(parts.begin(), parts.end(), [](const Part& part) { return part.shader->mayPass(); });
}

const InternalMedium* MixShader::medium() const {
    for (const Part& part : parts) {
        if (const InternalMedium* const found = part.shader->medium()) {
            return found;
        }
    }
    return nullptr;
}

/// At least 1, so that a tree of empty sums counts too.
int MixShader::countLobes() const {
    int sum = 0;
    for (const Part& part : parts) {
        sum = std::min(sum + part.shader->countLobes(), BSDF::MAX_LOBES + 1);
    }
    return std::max(1, sum);
}

float MixShader::displacement(const SurfacePoint& point) const {
    float sum = 0;
    for (size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].shader->isDisplaced()) {
            sum += parts[i].shader->displacement(point) * shareAt(i, point);
        }
    }
    return sum;
}

bool MixShader::isDisplaced() const {
    return std::any_of(parts.begin(), parts.end(),
                       [](const Part& part) { return part.shader->isDisplaced(); });
}

/// One normal serves all parts: that of the greatest.
void MixShader::bump(SurfacePoint& point) const {
    size_t greatest = 0;
    float most = -1;
    for (size_t i = 0; i < parts.size(); ++i) {
        const float share = shareAt(i, point);
        if (share > most) {
            most = share;
            greatest = i;
        }
    }
    if (!parts.empty()) {
        parts[greatest].shader->bump(point);
    }
}

} // namespace engine
