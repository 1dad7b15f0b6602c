// SPDX-License-Identifier: MIT
#pragma once

#include "engine/coat.h"
#include "engine/colour.h"
#include "engine/geometry.h"
#include "engine/lobe.h"
#include "engine/random.h"
#include "engine/vec.h"

namespace engine {

/// How light is scattered at one point, seen from one direction: a sum of lobes, some of them under coats.
class BSDF {
public:
    /// `out` points to the viewer.
    BSDF(const SurfacePoint& point, const Vec& out);

    /// At most MAX_LOBES; more are lost.
    void add(const Lobe& lobe);
    bool empty() const { return count_ == 0; }
    bool hasSmooth() const { return smooth_ > 0; }
    /// Between the shading normal and the viewer; above 0.
    float viewCosine() const { return out_.z; }

    /// The lobes that are added while it lives lie below a coat.
    class Under {
    public:
        Under(BSDF& bsdf, const Coat& coat);
        ~Under();
        Under(const Under&) = delete;
        Under& operator=(const Under&) = delete;

    private:
        BSDF& bsdf_;
        int above_;
    };

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

    /// Also of the coats: each has a lobe of its own.
    static constexpr int MAX_LOBES = 24;

private:
    struct Placed {
        Lobe lobe;
        float pick = 0;
        int coat = -1; ///< The one right above it; negative for none.
    };
    struct PlacedCoat {
        Coat coat;
        RGB out;        ///< What this and all above it let out to the viewer.
        int above = -1; ///< Likewise.
    };

    RGB evaluateLobe(const Lobe& lobe, const Vec& in, float& pdf) const;
    RGB evaluateGlossy(const Lobe& lobe, const Vec& in, float& pdf) const;
    RGB evaluateRoughGlass(const Lobe& lobe, const Vec& in, float& pdf) const;
    bool sampleDirection(const Lobe& lobe, Random& random, Vec& in) const;
    bool sampleRoughGlass(const Lobe& lobe, Random& random, Vec& in) const;
    bool sampleSharp(const Placed& placed, Random& random, Sample& sample) const;
    RGB throughCoats(int coat, const Vec& in) const;
    float gainUnderCoats(int coat, bool to_near) const;

    /// Unions, so that a point with few of them doesn't set up all.
    union {
        Placed lobes_[MAX_LOBES];
    };
    union {
        PlacedCoat coats_[MAX_LOBES];
    };
    int count_ = 0;
    int coat_count_ = 0;
    int coat_ = -1; ///< What is added now lies under this one.
    int smooth_ = 0;
    float pick_sum_ = 0;
    Frame frame_; ///< The normal is on the viewer's side.
    Vec facet_;   ///< Likewise.
    Vec out_;     ///< In the frame.
    Vec world_out_;
};

} // namespace engine
