// SPDX-License-Identifier: MIT
#pragma once

#include "engine/random.h"
#include "engine/vec.h"

namespace engine {

/// The GGX distribution of microfacets (Walter et al., "Microfacet Models for Refraction through Rough
/// Surfaces", EGSR 2007), isotropic, with the Smith shadowing that belongs to it. Directions are in the frame
/// of the surface, z along its normal.
class Microfacets {
public:
    explicit Microfacets(float alpha) : alpha_(alpha) {}

    float density(const Vec& half) const;
    /// Share of the facets that is seen from both directions, for which heights are correlated.
    float shadowing(const Vec& a, const Vec& b) const;
    /// A facet's normal, as often as it is seen from `out` (z above 0): Heitz, "Sampling the GGX Distribution
    /// of Visible Normals", JCGT 2018.
    Vec sample(const Vec& out, Random& random) const;
    /// Density of sample(), per steradian of `half`.
    float samplePdf(const Vec& out, const Vec& half) const;

private:
    float lambda(const Vec& v) const;

    float alpha_;
};

/// GGX roughness that gives a highlight as narrow as that of a Phong exponent.
float roughnessOfExponent(float exponent);

} // namespace engine
