// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/vector.h"

namespace headless::geometry {

/// Which polygon corners meet at each point, in the order of the polygons, as two flat arrays.
class VertexCorners {
public:
    /// Polygon number times four plus the corner's place (0 to 3); a triangle has no corner 3.
    using Corner = uint32_t;

    /// The indices must be valid; there may be at most 2^30 polygons.
    VertexCorners(std::size_t pointCount, std::span<const CPolygon> polygons);

    std::size_t pointCount() const { return offsets_.size() - 1; }
    std::span<const Corner> at(std::size_t point) const {
        return std::span(corners_).subspan(offsets_[point], offsets_[point + 1] - offsets_[point]);
    }

private:
    std::vector<uint32_t> offsets_;
    std::vector<Corner> corners_;
};

} // namespace headless::geometry
