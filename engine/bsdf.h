// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/geometry.h"
#include "engine/random.h"
#include "engine/vec.h"

namespace engine {

/// One way in which a surface sends light on.
struct Lobe {
    enum class Kind {
        DIFFUSE,
        OREN_NAYAR,       ///< `roughness` is the slopes' deviation in radians.
        COATED_DIFFUSE,   ///< Under a smooth dielectric layer.
        DIFFUSE_TRANSMIT, ///< To the other side.
        GLOSSY,           ///< A rough dielectric's reflection.
        METAL,            ///< A rough metal of the weight's colour.
        ROUGH_GLASS,      ///< Reflection and refraction.
        GLASS,            ///< The same of a smooth surface.
        MIRROR,
        PASS, ///< Straight on, as if nothing was there.
    };

    Kind kind = Kind::DIFFUSE;
    RGB weight{1.0f};
    float roughness = 0;
    float eta = 1;           ///< Refractive index behind the surface over that before it.
    float fresnel_scale = 1; ///< Of GLOSSY and COATED_DIFFUSE.
    float average = 0;       ///< Mean reflectance of the layer of COATED_DIFFUSE.
    RGB transmittance{1.0f}; ///< Colours what a GLASS or ROUGH_GLASS lets in.

    /// Has a density: light can be evaluated for any pair of directions.
    bool isSmooth() const { return kind < Kind::GLASS; }
};

/// How light is scattered at one point, seen from one direction.
class BSDF {
public:
    /// `out` points to the viewer.
    BSDF(const SurfacePoint& point, const Vec& out);

    void add(const Lobe& lobe);
    bool empty() const { return count_ == 0; }
    bool hasSmooth() const { return smooth_ > 0; }
    /// Between the shading normal and the viewer; above 0.
    float viewCosine() const { return out_.z; }

    /// Scattering of light from `in` to the viewer, times the cosine to the shading normal; without what
    /// isn't smooth. `pdf` is the density per steradian with which sample() takes `in`.
    RGB evaluate(const Vec& in, float& pdf) const;

    struct Sample {
        Vec in;
        RGB weight;               ///< Scattering times cosine over density.
        float pdf = 0;            ///< Infinite for what isn't smooth.
        bool passed = false;      ///< Straight on through nothing.
        bool transmitted = false; ///< To the other side.
    };
    /// False when the light is absorbed.
    bool sample(Random& random, Sample& sample) const;

private:
    RGB evaluateLobe(const Lobe& lobe, const Vec& in, float& pdf) const;
    RGB evaluateRoughGlass(const Lobe& lobe, const Vec& in, float& pdf) const;
    bool sampleDirection(const Lobe& lobe, Random& random, Vec& in) const;
    bool sampleRoughGlass(const Lobe& lobe, Random& random, Vec& in) const;
    bool sampleSharp(const Lobe& lobe, float share, Random& random, Sample& sample) const;
    float share(int index) const;

    static constexpr int MAX_LOBES = 16;
    Lobe lobes_[MAX_LOBES];
    float picks_[MAX_LOBES];
    int count_ = 0;
    int smooth_ = 0;
    float pick_sum_ = 0;
    Frame frame_; ///< The normal is on the viewer's side.
    Vec facet_;   ///< Likewise.
    Vec out_;     ///< In the frame.
    Vec world_out_;
};

} // namespace engine
