// SPDX-License-Identifier: MIT
#pragma once

#include "export/mesh_arrays.h"
#include "export/mesh_corners.h"
#include "scene/mesh.h"

#include <map>
#include <tuple>
#include <vector>

/// The conversion in its plainest form: corner by corner, merging through ordered maps.
class ReferenceConversion {
public:
    ReferenceConversion(const MeshArrays& arrays, const PolygonRuns& runs, float scale, bool merge)
        : arrays_(arrays), scale_(scale), merge_(merge) {
        for (const PolygonRun& run : runs) {
            for (int32_t i = run.from; i < run.to; ++i) {
                addPolygon(i, run.slot);
            }
        }
    }

    std::vector<Quenza::Vec3f> positions;
    std::vector<Quenza::Vec3f> normals;
    std::vector<Quenza::Vec2f> uvs;
    std::vector<Quenza::MeshTriangle> triangles;
    std::vector<Quenza::MeshQuad> quads;

private:
    void addPolygon(int32_t i, uint32_t slot) {
        const CPolygon& p = arrays_.polygons[i];
        uint32_t v[4];
        uint32_t t[4];
        const uint32_t corners = p.c == p.d ? 3 : 4;
        for (uint32_t c = 0; c < corners; ++c) {
            v[c] = vertex(i, c);
            t[c] = uv(i, c);
        }
        if (corners == 3) {
            triangles.push_back({{v[2], v[1], v[0]}, {t[2], t[1], t[0]}, slot});
        } else {
            quads.push_back({{v[3], v[2], v[1], v[0]}, {t[3], t[2], t[1], t[0]}, slot});
        }
    }
    uint32_t vertex(int32_t polygon, uint32_t corner) {
        const Vector p = arrays_.points[(&arrays_.polygons[polygon].a)[corner]] * scale_;
        const Quenza::Vec3f position{p.x, p.z, p.y};
        Quenza::Vec3f normal{0, 0, 0};
        if (arrays_.normals) {
            normal = cornerNormal(arrays_.normals[polygon * 4 + int32_t(corner)]);
        }
        const auto next = static_cast<uint32_t>(positions.size());
        if (merge_) {
            const auto key =
                std::make_tuple(position.x, position.y, position.z, normal.x, normal.y, normal.z);
            const auto [entry, isNew] = vertexIndices_.emplace(key, next);
            if (!isNew) {
                return entry->second;
            }
        }
        positions.push_back(position);
        if (arrays_.normals) {
            normals.push_back(normal);
        }
        return next;
    }
    uint32_t uv(int32_t polygon, uint32_t corner) {
        const UvSource& source = arrays_.uvs;
        const Vector raw = source.records ? (&source.records[polygon].a)[corner] : Vector();
        const float u = raw.x * source.scaleU - source.shiftU;
        const float v = raw.y * source.scaleV - source.shiftV;
        const Quenza::Vec2f pair{u, 1.0f - v};
        const auto next = static_cast<uint32_t>(uvs.size());
        if (merge_) {
            const auto [entry, isNew] = uvIndices_.emplace(std::make_pair(pair.x, pair.y), next);
            if (!isNew) {
                return entry->second;
            }
        }
        uvs.push_back(pair);
        return next;
    }

    const MeshArrays& arrays_;
    float scale_;
    bool merge_;
    std::map<std::tuple<float, float, float, float, float, float>, uint32_t> vertexIndices_;
    std::map<std::pair<float, float>, uint32_t> uvIndices_;
};
