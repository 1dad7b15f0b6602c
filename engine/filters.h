// SPDX-License-Identifier: MIT
#pragma once

#include "scene/image_filters.h"

#include <vector>

namespace engine {

/// A reconstruction filter: symmetrical, zero from `radius` on, not normalised. Separable filters are the
/// product of their values along x and y; a radial one takes the distance.
struct FilterKernel {
    enum class Shape { ONE_CELL, BOX, CUBIC, GAUSSIAN };

    float operator()(float distance) const;
    /// The weight of a point that lies (dx, dy) away.
    float operator()(float dx, float dy) const;

    Shape shape = Shape::ONE_CELL;
    bool radial = false;
    float radius = 0.5f;
    float b = 0, c = 0;  ///< Of the cubic, which is stretched from [-2, 2] to the radius.
    float deviation = 0; ///< Of the Gaussian.
};

/// In cells of the film's finer grid:
/// - fast box: the one cell that the sample falls in;
/// - box: one cell wide around the sample, so spread over up to four cells;
/// - radial: a Gaussian of the distance, deviation 0.6, up to 1.5;
/// - cubic: that of Mitchell and Netravali, "Reconstruction Filters in Computer Graphics", SIGGRAPH 1988, up
/// to 2.
FilterKernel splatKernel(const Quenza::SplatFilter& filter);

/// In pixels of the image:
/// - Gaussian: deviation 0.5, up to 1.5;
/// - cubic: as above, stretched to the filter's radius (kept within 0.5 and 16);
/// - sharp: the cubic with B = 0, C = 0.75, up to 2, whose negative lobes raise the contrast of edges.
FilterKernel downsizeKernel(const Quenza::DownsizeFilter& filter);

} // namespace engine
