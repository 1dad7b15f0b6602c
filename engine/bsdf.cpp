// SPDX-License-Identifier: MIT
#include "engine/bsdf.h"

#include "engine/fresnel.h"
#include "engine/microfacet.h"
#include "engine/sampling.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

float scaledFresnel(const Lobe& lobe, float cosine) {
    return std::clamp(lobe.fresnel_scale * fresnelDielectric(cosine, lobe.eta), 0.0f, 1.0f);
}

/// The qualitative model of Oren and Nayar, "Generalization of Lambert's Reflectance Model", SIGGRAPH 1994.
float orenNayar(const Vec& out, const Vec& in, float sigma) {
    const float s2 = sigma * sigma;
    const float a = 1.0f - 0.5f * s2 / (s2 + 0.33f);
    const float b = 0.45f * s2 / (s2 + 0.09f);
    const float flat_out = std::sqrt(std::max(0.0f, 1.0f - out.z * out.z));
    const float flat_in = std::sqrt(std::max(0.0f, 1.0f - in.z * in.z));
    if (flat_out < 1e-4f || flat_in < 1e-4f) {
        return a;
    }
    const float cosine = std::max(0.0f, (out.x * in.x + out.y * in.y) / (flat_out * flat_in));
    const float sine = std::max(flat_out, flat_in);
    const float tangent = std::min(flat_out / out.z, flat_in / in.z);
    return a + b * cosine * sine * tangent;
}

/// Through a facet; false for total reflection. `eta` is that of Lobe.
bool refract(const Vec& out, const Vec& normal, float eta, Vec& in) {
    const float cosine = dot(out, normal);
    const float sine2 = std::max(0.0f, 1.0f - cosine * cosine) / (eta * eta);
    if (sine2 >= 1.0f) {
        return false;
    }
    in = normalise(-out / eta + normal * (cosine / eta - std::sqrt(1.0f - sine2)));
    return true;
}

} // namespace

BSDF::BSDF(const SurfacePoint& point, const Vec& out)
    : facet_(dot(point.normal, out) < 0.0f ? -point.normal : point.normal), world_out_(out) {
    const Vec shading = dot(point.normal, out) < 0.0f ? -point.shading_normal : point.shading_normal;
    // A smoothed normal may turn away from the viewer at the outline; there the facet's serves.
    frame_ = Frame(dot(shading, out) > 1e-3f ? shading : facet_);
    out_ = frame_.toLocal(out);
    out_.z = std::max(out_.z, 1e-5f);
}

void BSDF::add(const Lobe& lobe) {
    const float pick = lobe.kind == Lobe::Kind::GLOSSY
                           ? luminance(lobe.weight) * (0.1f + 0.9f * scaledFresnel(lobe, out_.z))
                           : luminance(lobe.weight);
    if (count_ == MAX_LOBES || !(pick > 0.0f) || !std::isfinite(pick)) {
        return;
    }
    lobes_[count_] = lobe;
    picks_[count_] = pick;
    pick_sum_ += pick;
    smooth_ += lobe.isSmooth() ? 1 : 0;
    ++count_;
}

float BSDF::share(int index) const {
    return picks_[index] / pick_sum_;
}

RGB BSDF::evaluate(const Vec& world_in, float& pdf) const {
    pdf = 0;
    RGB sum{0.0f};
    const Vec in = frame_.toLocal(world_in);
    // The facet says which side light comes from; where the shading normal disagrees there is no light.
    if ((dot(world_in, facet_) > 0.0f) != (in.z > 0.0f) || in.z == 0.0f) {
        return sum;
    }
    for (int i = 0; i < count_; ++i) {
        if (lobes_[i].isSmooth()) {
            float lobe_pdf = 0;
            sum += evaluateLobe(lobes_[i], in, lobe_pdf);
            pdf += share(i) * lobe_pdf;
        }
    }
    return sum;
}

RGB BSDF::evaluateLobe(const Lobe& lobe, const Vec& in, float& pdf) const {
    if (lobe.kind == Lobe::Kind::ROUGH_GLASS) {
        return evaluateRoughGlass(lobe, in, pdf);
    }
    if ((in.z < 0.0f) != (lobe.kind == Lobe::Kind::DIFFUSE_TRANSMIT)) {
        pdf = 0;
        return RGB{0.0f};
    }
    const float cosine = std::abs(in.z);
    pdf = cosine / PI;
    switch (lobe.kind) {
    case Lobe::Kind::OREN_NAYAR:
        return lobe.weight * (orenNayar(out_, in, lobe.roughness) * cosine / PI);
    case Lobe::Kind::COATED_DIFFUSE:
        // Kelemen and Szirmay-Kalos, "A Microfacet Based Coupled Specular-Matte BRDF Model", 2001.
        return lobe.weight * ((1 - scaledFresnel(lobe, out_.z)) * (1 - scaledFresnel(lobe, cosine)) /
                              std::max(0.01f, 1 - lobe.average) * cosine / PI);
    case Lobe::Kind::GLOSSY:
    case Lobe::Kind::METAL: {
        const Microfacets facets(lobe.roughness);
        const Vec half = normalise(out_ + in);
        const float toward = std::max(1e-6f, dot(out_, half));
        const float level = facets.density(half) * facets.shadowing(out_, in) / (4.0f * out_.z);
        pdf = facets.samplePdf(out_, half) / (4.0f * toward);
        if (lobe.kind == Lobe::Kind::GLOSSY) {
            return lobe.weight * (scaledFresnel(lobe, toward) * level);
        }
        const float white = schlickWeight(toward);
        return (lobe.weight * (1.0f - white) + RGB(maxComponent(lobe.weight) * white)) * level;
    }
    default:
        return lobe.weight * (cosine / PI);
    }
}

RGB BSDF::evaluateRoughGlass(const Lobe& lobe, const Vec& in, float& pdf) const {
    pdf = 0;
    const Microfacets facets(lobe.roughness);
    const bool reflected = in.z > 0.0f;
    Vec half = normalise(reflected ? out_ + in : out_ + in * lobe.eta);
    if (half.z < 0.0f) {
        half = -half;
    }
    const float out_half = dot(out_, half);
    const float in_half = dot(in, half);
    if (out_half <= 0.0f || (in_half > 0.0f) != reflected) {
        return RGB{0.0f};
    }
    const float fresnel = fresnelDielectric(out_half, lobe.eta);
    const float facet_pdf = facets.samplePdf(out_, half);
    const float level = facets.density(half) * facets.shadowing(out_, {in.x, in.y, std::abs(in.z)});
    if (reflected) {
        pdf = fresnel * facet_pdf / (4.0f * out_half);
        return lobe.weight * (fresnel * level / (4.0f * out_.z));
    }
    const float root = out_half + lobe.eta * in_half;
    const float jacobian = lobe.eta * lobe.eta * std::abs(in_half) / (root * root);
    pdf = (1.0f - fresnel) * facet_pdf * jacobian;
    // Radiance rises by the squared index in the denser side and falls again behind it; both are left out.
    return lobe.weight * lobe.transmittance * ((1.0f - fresnel) * level * out_half * jacobian / out_.z);
}

bool BSDF::sample(Random& random, Sample& sample) const {
    float u = random.next() * pick_sum_;
    int index = 0;
    while (index + 1 < count_ && u >= picks_[index]) {
        u -= picks_[index];
        ++index;
    }
    if (count_ == 0) {
        return false;
    }
    const Lobe& lobe = lobes_[index];
    if (!lobe.isSmooth()) {
        return sampleSharp(lobe, share(index), random, sample);
    }
    Vec in;
    if (!sampleDirection(lobe, random, in)) {
        return false;
    }
    sample.in = frame_.toWorld(in);
    const RGB value = evaluate(sample.in, sample.pdf);
    if (!(sample.pdf > 0.0f) || isBlack(value)) {
        return false;
    }
    sample.weight = value / sample.pdf;
    sample.transmitted = dot(sample.in, facet_) < 0.0f;
    return true;
}

bool BSDF::sampleDirection(const Lobe& lobe, Random& random, Vec& in) const {
    switch (lobe.kind) {
    case Lobe::Kind::GLOSSY:
    case Lobe::Kind::METAL: {
        const Vec half = Microfacets(lobe.roughness).sample(out_, random);
        in = half * (2.0f * dot(out_, half)) - out_;
        return in.z > 0.0f;
    }
    case Lobe::Kind::ROUGH_GLASS:
        return sampleRoughGlass(lobe, random, in);
    case Lobe::Kind::DIFFUSE_TRANSMIT:
        in = -sampleCosine(random);
        return true;
    default:
        in = sampleCosine(random);
        return true;
    }
}

bool BSDF::sampleRoughGlass(const Lobe& lobe, Random& random, Vec& in) const {
    const Vec half = Microfacets(lobe.roughness).sample(out_, random);
    const float cosine = dot(out_, half);
    if (cosine <= 0.0f) {
        return false;
    }
    if (random.next() < fresnelDielectric(cosine, lobe.eta)) {
        in = half * (2.0f * cosine) - out_;
        return in.z > 0.0f;
    }
    return refract(out_, half, lobe.eta, in) && in.z < 0.0f;
}

bool BSDF::sampleSharp(const Lobe& lobe, float share, Random& random, Sample& sample) const {
    sample.pdf = INFINITY;
    sample.weight = lobe.weight / share;
    if (lobe.kind == Lobe::Kind::PASS) {
        sample.in = -world_out_;
        sample.passed = sample.transmitted = true;
        return true;
    }
    Vec in{-out_.x, -out_.y, out_.z};
    if (lobe.kind == Lobe::Kind::GLASS && random.next() >= fresnelDielectric(out_.z, lobe.eta)) {
        if (!refract(out_, {0, 0, 1}, lobe.eta, in)) {
            return false;
        }
        sample.weight *= lobe.transmittance;
        sample.transmitted = true;
    }
    sample.in = frame_.toWorld(in);
    // Smoothed normals can turn a direction through the facet; that light is lost.
    return (dot(sample.in, facet_) < 0.0f) == sample.transmitted;
}

} // namespace engine
