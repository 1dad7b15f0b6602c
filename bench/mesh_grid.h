// SPDX-License-Identifier: MIT
#pragma once

#include "export/mesh_arrays.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

/// A hilly square of quads with UVs and corner normals, as the host would hand it over.
struct Grid {
    enum Kind { SMOOTH, SHUFFLED, FLAT };

    std::vector<Vector> points;
    std::vector<CPolygon> polygons;
    std::vector<Vector> normals;
    std::vector<UVWStruct> uvs;
    PolygonRuns runs;

    /// `side` quads along each edge. SHUFFLED has its faces in random order, FLAT one normal a face.
    Grid(Kind kind, int32_t side) : runs{{0, side * side, 0}} {
        makePoints(side);
        for (int32_t y = 0; y < side; ++y) {
            for (int32_t x = 0; x < side; ++x) {
                const int32_t a = y * (side + 1) + x;
                polygons.emplace_back(a, a + 1, a + side + 2, a + side + 1);
            }
        }
        if (kind == SHUFFLED) {
            std::shuffle(polygons.begin(), polygons.end(), std::mt19937(1));
        }
        makeCorners(kind, side);
    }

    MeshArrays arrays() const {
        MeshArrays arrays;
        arrays.points = points.data();
        arrays.polygons = polygons.data();
        arrays.normals = normals.data();
        arrays.pointCount = static_cast<int32_t>(points.size());
        arrays.polygonCount = static_cast<int32_t>(polygons.size());
        arrays.uvs.records = uvs.data();
        return arrays;
    }

private:
    void makePoints(int32_t side) {
        std::mt19937 random(7);
        std::uniform_real_distribution<float> height(0.0f, 1.0f);
        for (int32_t y = 0; y <= side; ++y) {
            for (int32_t x = 0; x <= side; ++x) {
                points.emplace_back(float(x), height(random), float(y));
            }
        }
    }
    void makeCorners(Kind kind, int32_t side) {
        const float step = 1.0f / float(side);
        for (const CPolygon& polygon : polygons) {
            const int32_t corners[4] = {polygon.a, polygon.b, polygon.c, polygon.d};
            const Vector& first = points[size_t(polygon.a)];
            const Vector edge = points[size_t(polygon.b)] - first;
            const Vector other = points[size_t(polygon.d)] - first;
            UVWStruct uvw;
            for (int32_t c = 0; c < 4; ++c) {
                const Vector& p = points[size_t(corners[c])];
                (&uvw.a)[c] = Vector(p.x * step, p.z * step, 0.0f);
                normals.push_back(
                    (kind == FLAT ? Cross(other, edge) : Vector(p.y, 1.0f, 0.3f)).GetNormalized());
            }
            uvs.push_back(uvw);
        }
    }
};
