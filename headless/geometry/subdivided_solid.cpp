// SPDX-License-Identifier: MIT
#include "headless/geometry/subdivided_solid.h"

#include "foundation/trigonometry.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

namespace headless::geometry {

namespace {

/// `count` unit vectors at the height y, turning from +X to +Z after `turn` (in steps of the ring).
void addRing(std::vector<Vec3>& vertices, int count, double y, double turn) {
    const double radius = std::sqrt(1.0 - y * y);
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * (i + turn) / count;
        vertices.emplace_back(radius * Quenza::cosine(angle), y, radius * Quenza::sine(angle));
    }
}

class Subdivision {
public:
    Subdivision(const Solid& solid, int divisions) : solid_(solid), divisions_(divisions) {
        const auto cells = static_cast<std::size_t>(divisions) * static_cast<std::size_t>(divisions);
        mesh_.polygons.reserve(solid.faces.size() * cells);
        mesh_.points.reserve(solid.faces.size() * cells / 2 + 2);
        for (const Vec3& vertex : solid.vertices) {
            mesh_.points.push_back(vertex.toVector());
        }
        for (const auto& face : solid.faces) {
            addFace(face);
        }
    }

    PolyMesh take() { return std::move(mesh_); }

private:
    int32_t addPoint(const Vec3& direction) {
        mesh_.points.push_back(direction.normalized().toVector());
        return static_cast<int32_t>(mesh_.points.size()) - 1;
    }

    const Vec3& vertex(int32_t index) const { return solid_.vertices[static_cast<std::size_t>(index)]; }

    /// Point number `step` (0 to divisions) on the edge from `from` to `to`.
    int32_t edgePoint(int32_t from, int32_t to, int step) {
        if (step == 0 || step == divisions_) {
            return step == 0 ? from : to;
        }
        if (from > to) {
            return edgePoint(to, from, divisions_ - step);
        }
        const auto [entry, isNew] = edges_.try_emplace({from, to}, static_cast<int32_t>(mesh_.points.size()));
        if (isNew) {
            for (int i = 1; i < divisions_; ++i) {
                addPoint(vertex(from) * (divisions_ - i) + vertex(to) * i);
            }
        }
        return entry->second + step - 1;
    }

    int32_t facePoint(const std::array<int32_t, 3>& face, int row, int column) {
        const auto [a, b, c] = face;
        if (column == 0) {
            return edgePoint(a, b, row);
        }
        if (column == row) {
            return edgePoint(a, c, row);
        }
        if (row == divisions_) {
            return edgePoint(b, c, column);
        }
        return addPoint(vertex(a) * (divisions_ - row) + vertex(b) * (row - column) + vertex(c) * column);
    }

    /// Rows run from the first vertex to the opposite edge; each row has one point more than the one before.
    void addFace(const std::array<int32_t, 3>& face) {
        std::vector<int32_t> above{face[0]};
        for (int row = 1; row <= divisions_; ++row) {
            std::vector<int32_t> below;
            for (int column = 0; column <= row; ++column) {
                below.push_back(facePoint(face, row, column));
            }
            for (std::size_t i = 0; i < above.size(); ++i) {
                mesh_.polygons.emplace_back(above[i], below[i], below[i + 1]);
                if (i + 1 < above.size()) {
                    mesh_.polygons.emplace_back(above[i], below[i + 1], above[i + 1]);
                }
            }
            above = std::move(below);
        }
    }

    const Solid& solid_;
    int divisions_;
    std::map<std::pair<int32_t, int32_t>, int32_t> edges_;
    PolyMesh mesh_;
};

} // namespace

Solid tetrahedron() {
    Solid solid{{{0, 1, 0}}, {{0, 2, 1}, {0, 3, 2}, {0, 1, 3}, {1, 2, 3}}};
    addRing(solid.vertices, 3, -1.0 / 3.0, 0.0);
    return solid;
}

Solid octahedron() {
    Solid solid{{{0, 1, 0}, {1, 0, 0}, {0, 0, 1}, {-1, 0, 0}, {0, 0, -1}, {0, -1, 0}}, {}};
    for (int32_t i = 0; i < 4; ++i) {
        const int32_t left = 1 + i;
        const int32_t right = 1 + (i + 1) % 4;
        solid.faces.push_back({0, right, left});
        solid.faces.push_back({left, right, 5});
    }
    return solid;
}

Solid icosahedron() {
    const double height = 1.0 / std::sqrt(5.0);
    Solid solid{{{0, 1, 0}}, {}};
    addRing(solid.vertices, 5, height, 0.0);
    addRing(solid.vertices, 5, -height, 0.5);
    solid.vertices.emplace_back(0.0, -1.0, 0.0);
    for (int32_t i = 0; i < 5; ++i) {
        const int32_t next = (i + 1) % 5;
        solid.faces.push_back({0, 1 + next, 1 + i});
        solid.faces.push_back({1 + i, 1 + next, 6 + i});
        solid.faces.push_back({1 + next, 6 + next, 6 + i});
        solid.faces.push_back({6 + i, 6 + next, 11});
    }
    return solid;
}

PolyMesh subdivideOnSphere(const Solid& solid, int divisions) {
    return Subdivision(solid, divisions).take();
}

} // namespace headless::geometry
