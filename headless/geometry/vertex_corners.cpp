// SPDX-License-Identifier: MIT
#include "headless/geometry/vertex_corners.h"

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

VertexCorners::VertexCorners(std::size_t pointCount, std::span<const CPolygon> polygons)
    : offsets_(pointCount + 1) {
    const auto forEachCorner = [&](const auto& visit) {
        for (std::size_t i = 0; i < polygons.size(); ++i) {
            const std::array<int32_t, 4> indices = cornersOf(polygons[i]);
            const auto count = static_cast<std::size_t>(cornerCount(polygons[i]));
            for (std::size_t c = 0; c < count; ++c) {
                visit(static_cast<std::size_t>(indices[c]), static_cast<Corner>(i * 4 + c));
            }
        }
    };
    // Counts first; then each offset is the end of its point's corners and moves down as they are placed.
    forEachCorner([&](std::size_t point, Corner) { ++offsets_[point]; });
    uint32_t sum = 0;
    for (uint32_t& offset : offsets_) {
        sum += offset;
        offset = sum;
    }
    corners_.resize(sum);
    for (std::size_t i = polygons.size(); i-- > 0;) {
        const std::array<int32_t, 4> indices = cornersOf(polygons[i]);
        for (auto c = static_cast<std::size_t>(cornerCount(polygons[i])); c-- > 0;) {
            corners_[--offsets_[static_cast<std::size_t>(indices[c])]] = static_cast<Corner>(i * 4 + c);
        }
    }
}

} // namespace headless::geometry
