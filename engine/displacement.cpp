// SPDX-License-Identifier: MIT
#include "engine/displacement.h"

#include "engine/subdivision.h"
#include "engine/surface_point.h"

#include <cmath>
#include <vector>

namespace engine {

namespace {

using Quenza::u32;
using Quenza::u64;

/// How much longer a length becomes in scene space: the mean over all directions.
float scaleOf(const Affine& place) {
    return std::cbrt(std::abs(place.determinant()));
}

} // namespace

void displace(Quenza::Mesh& mesh, const Instance& instance) {
    struct Move {
        Vec normal;
        float height = 0;
        u32 corners = 0;
    };
    const Affine place = instance.transform.at(0);
    const Shape& shape = *instance.shape;
    const std::vector<u32> places = firstAtSamePlace(mesh);
    std::vector<Move> moves(mesh.vert_positions.size());
    for (u64 i = 0; i < shape.countTriangles(); ++i) {
        const Shape::Corners t = shape.triangle(i);
        const Vec a = shape.vertex(t.vertices[0]);
        const Vec facet = cross(shape.vertex(t.vertices[1]) - a, shape.vertex(t.vertices[2]) - a);
        const SurfaceShader& shader = *instance.shaderOf(t.material);
        for (int corner = 0; corner < 3; ++corner) {
            Move& move = moves[places[t.vertices[corner]]];
            move.normal += facet;
            ++move.corners;
            if (shader.isDisplaced()) {
                const SurfacePoint point =
                    pointOnTriangle(instance, i, corner == 1 ? 1.0f : 0.0f, corner == 2 ? 1.0f : 0.0f, place);
                const float height = shader.displacement(point);
                move.height += std::isfinite(height) ? height : 0.0f;
            }
        }
    }
    const float scale = scaleOf(place);
    for (size_t i = 0; i < moves.size(); ++i) {
        const Move& move = moves[places[i]];
        if (move.corners > 0 && scale > 0.0f) {
            const float height = move.height / (float(move.corners) * scale);
            const Vec moved = toVec(mesh.vert_positions[i]) + normalise(move.normal) * height;
            mesh.vert_positions[i] = {moved.x, moved.y, moved.z};
        }
    }
}

} // namespace engine
