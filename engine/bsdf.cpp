// SPDX-License-Identifier: MIT
#include "engine/bsdf.h"

#include "engine/fresnel.h"
#include "engine/microfacet.h"
#include "engine/reflectance.h"
#include "engine/sampling.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace engine {

namespace {

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

BSDF::Under::Under(BSDF& bsdf, const Coat& coat) : bsdf_(bsdf), above_(bsdf.coat_) {
    if (bsdf.coat_count_ == MAX_LOBES) {
        return;
    }
    PlacedCoat& placed = *std::construct_at(&bsdf.coats_[bsdf.coat_count_]);
    placed.coat = coat;
    placed.above = above_;
    placed.out = above_ < 0 ? RGB{1.0f} : bsdf.coats_[above_].out;
    if (coat.near) {
        placed.out *= coat.transmitted(std::min(1.0f, bsdf.out_.z));
    }
    bsdf.coat_ = bsdf.coat_count_++;
}

BSDF::Under::~Under() {
    bsdf_.coat_ = above_;
}

RGB BSDF::throughCoats(int coat, const Vec& in) const {
    RGB through{1.0f};
    const float cosine = std::min(1.0f, std::abs(in.z));
    for (; coat >= 0; coat = coats_[coat].above) {
        const Coat& layer = coats_[coat].coat;
        if (in.z > 0.0f ? layer.near : layer.far) {
            through *= layer.transmitted(cosine);
        }
    }
    return through;
}

float BSDF::gainUnderCoats(int coat, bool to_near) const {
    float gain = 1;
    for (; coat >= 0; coat = coats_[coat].above) {
        const Coat& layer = coats_[coat].coat;
        if (to_near ? layer.near : layer.far) {
            gain /= std::max(0.01f, 1.0f - layer.average);
        }
    }
    return gain;
}

void BSDF::add(const Lobe& lobe) {
    if (count_ == MAX_LOBES) {
        return;
    }
    Placed& placed = *std::construct_at(&lobes_[count_]);
    placed.lobe = lobe;
    placed.coat = coat_;
    if (coat_ >= 0) {
        placed.lobe.weight *= coats_[coat_].out;
        if (lobe.isDiffuse()) {
            placed.lobe.weight *= gainUnderCoats(coat_, lobe.kind != Lobe::Kind::DIFFUSE_TRANSMIT);
        }
    }
    placed.pick = luminance(placed.lobe.weight);
    if (lobe.kind == Lobe::Kind::GLOSSY) {
        const float cosine = std::min(1.0f, out_.z);
        placed.pick *=
            0.1f + 0.9f * luminance(layerReflectance(cosine, lobe.eta, lobe.fresnel_scale, lobe.film));
    }
    if (!(placed.pick > 0.0f) || !std::isfinite(placed.pick)) {
        return;
    }
    pick_sum_ += placed.pick;
    smooth_ += lobe.isSmooth() ? 1 : 0;
    ++count_;
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
        const Placed& placed = lobes_[i];
        if (placed.lobe.isSmooth()) {
            float lobe_pdf = 0;
            const RGB value = evaluateLobe(placed.lobe, in, lobe_pdf);
            sum += placed.coat < 0 ? value : value * throughCoats(placed.coat, in);
            pdf += placed.pick / pick_sum_ * lobe_pdf;
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
    if (!lobe.isDiffuse()) {
        return evaluateGlossy(lobe, in, pdf);
    }
    const float cosine = std::abs(in.z);
    pdf = cosine / PI;
    const float shape = lobe.kind == Lobe::Kind::OREN_NAYAR ? orenNayar(out_, in, lobe.roughness) : 1.0f;
    return lobe.weight * (shape * cosine / PI);
}

RGB BSDF::evaluateGlossy(const Lobe& lobe, const Vec& in, float& pdf) const {
    const Microfacets facets(lobe.roughness);
    const Vec half = normalise(out_ + in);
    const float toward = std::clamp(dot(out_, half), 1e-6f, 1.0f);
    const float level = facets.density(half) * facets.shadowing(out_, in) / (4.0f * out_.z);
    pdf = facets.samplePdf(out_, half) / (4.0f * toward);
    if (lobe.kind == Lobe::Kind::GLOSSY) {
        return lobe.weight * layerReflectance(toward, lobe.eta, lobe.fresnel_scale, lobe.film) * level;
    }
    if (lobe.curve) {
        return lobe.weight * lobe.curve->at(toward) * level;
    }
    const float white = schlickWeight(toward);
    return (lobe.weight * (1.0f - white) + RGB(maxComponent(lobe.weight) * white)) * level;
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
    if (count_ == 0) {
        return false;
    }
    float u = random.next() * pick_sum_;
    int index = 0;
    while (index + 1 < count_ && u >= lobes_[index].pick) {
        u -= lobes_[index].pick;
        ++index;
    }
    const Lobe& lobe = lobes_[index].lobe;
    if (!lobe.isSmooth()) {
        return sampleSharp(lobes_[index], random, sample);
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

bool BSDF::sampleSharp(const Placed& placed, Random& random, Sample& sample) const {
    const Lobe& lobe = placed.lobe;
    sample.pdf = INFINITY;
    sample.weight = lobe.weight * (pick_sum_ / placed.pick);
    if (lobe.kind == Lobe::Kind::PASS) {
        sample.in = -world_out_;
        sample.weight *= throughCoats(placed.coat, -out_);
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
    sample.weight *= throughCoats(placed.coat, in);
    sample.in = frame_.toWorld(in);
    // Smoothed normals can turn a direction through the facet; that light is lost.
    return (dot(sample.in, facet_) < 0.0f) == sample.transmitted;
}

} // namespace engine
