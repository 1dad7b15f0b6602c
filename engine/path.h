// SPDX-License-Identifier: MIT
#pragma once

#include "engine/bsdf.h"
#include "engine/geometry.h"
#include "engine/medium_stack.h"
#include "engine/random.h"
#include "engine/vec.h"

#include <cmath>

namespace engine {

/// A path of light as far as it has been followed from the camera.
struct Path {
    Ray ray;
    RGB throughput{1.0f};
    MediumStack media;
    Vec from;             ///< Where it was scattered last.
    float pdf = INFINITY; ///< Density of the direction that it took there; infinite for the camera's.
    int depth = 0;        ///< Surfaces that scattered it.
    int scatterings = 0;  ///< Places in media that did.
    bool from_camera = true;
    /// In nanometres. Once the path met glass that splits colours it carries one channel alone, at one
    /// wavelength of its band.
    float wavelength = MEAN_WAVELENGTH;
    bool split = false;

    /// To be called before the path meets the boundary of a medium, which may be null.
    void splitAt(const InternalMedium* medium, Random& random);
};

/// Where light is scattered: on a surface or inside a medium.
struct Vertex {
    Vec position;
    const SurfacePoint* surface = nullptr; ///< Null inside a medium.
    const BSDF* bsdf = nullptr;            ///< Of the surface.
    Vec direction;                         ///< Inside a medium: the path's way there.
    float mean_cosine = 0;                 ///< Likewise: of the medium.

    /// Scattering of light from `in` to the path, with the cosine on a surface. `pdf` is the density with
    /// which the path goes on that way.
    RGB evaluate(const Vec& in, float& pdf) const;
    /// Where a ray in this direction starts.
    Vec leave(const Vec& in) const { return surface ? surface->leave(in) : position; }
};

} // namespace engine
