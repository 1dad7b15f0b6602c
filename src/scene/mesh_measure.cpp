// SPDX-License-Identifier: MIT
#include "scene/mesh_measure.h"

#include "foundation/parallel.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <mutex>

namespace Quenza {

namespace {

/// Elements that are worth a thread.
constexpr std::size_t PARALLEL_GRAIN = 1 << 18;

/// Vertices side by side, enough for a compiler to make loops of vectors of them instead of single steps.
constexpr u64 VERTEX_LANES = 16;
/// Faces side by side: their records are then whole vectors of four fields.
constexpr u64 FACE_LANES = 4;

/// std::min and std::max in a form that becomes one vector instruction: `value` where it isn't a number.
f32 smaller(f32 value, f32 candidate) {
    return candidate < value ? candidate : value;
}
f32 larger(f32 value, f32 candidate) {
    return candidate > value ? candidate : value;
}

Vec3f smaller(const Vec3f& a, const Vec3f& b) {
    return {smaller(a.x, b.x), smaller(a.y, b.y), smaller(a.z, b.z)};
}
Vec3f larger(const Vec3f& a, const Vec3f& b) {
    return {larger(a.x, b.x), larger(a.y, b.y), larger(a.z, b.z)};
}

/// Takes in `count` records of 2 * `corners` + 1 fields: vertex indices, as many UV indices, the material.
template <u64 corners, class Face>
void takeLargest(const Face* faces, u64 count, MeshMeasure& measure) {
    constexpr u64 FIELDS = 2 * corners + 1;
    static_assert(sizeof(Face) == FIELDS * sizeof(u32));
    u32 largest[FACE_LANES * FIELDS] = {};
    u64 i = 0;
    for (; i + FACE_LANES <= count; i += FACE_LANES) {
        u32 fields[FACE_LANES * FIELDS];
        std::memcpy(fields, faces + i, sizeof fields);
        for (u64 j = 0; j < FACE_LANES * FIELDS; ++j)
            largest[j] = std::max(largest[j], fields[j]);
    }
    for (; i < count; ++i) {
        u32 fields[FIELDS];
        std::memcpy(fields, faces + i, sizeof fields);
        for (u64 j = 0; j < FIELDS; ++j)
            largest[j] = std::max(largest[j], fields[j]);
    }
    for (const u32* face = largest; face != largest + FACE_LANES * FIELDS; face += FIELDS) {
        measure.largest_vertex = std::max(measure.largest_vertex, *std::max_element(face, face + corners));
        measure.largest_uv =
            std::max(measure.largest_uv, *std::max_element(face + corners, face + 2 * corners));
        measure.largest_material = std::max(measure.largest_material, face[2 * corners]);
    }
}

/// Calls `take(part, begin, count)` for ranges of the array, each with a measure of its own.
template <class T, class Take>
void measureArray(const Vector<T>& values, MeshMeasure& measure, const Take& take) {
    std::mutex mutex;
    parallelFor(values.size(), PARALLEL_GRAIN, [&](std::size_t begin, std::size_t end) {
        MeshMeasure part;
        take(part, values.data() + begin, u64(end - begin));
        const std::lock_guard lock(mutex);
        measure.take(part);
    });
}

} // namespace

void MeshMeasure::takePositions(const Vec3f* positions, u64 count) {
    constexpr u64 NUMBERS = 3 * VERTEX_LANES;
    f32 mins[NUMBERS];
    f32 maxs[NUMBERS];
    f32 squares[VERTEX_LANES] = {};
    std::fill_n(mins, NUMBERS, INFINITE);
    std::fill_n(maxs, NUMBERS, -INFINITE);
    u64 i = 0;
    for (; i + VERTEX_LANES <= count; i += VERTEX_LANES) {
        const f32* const v = reinterpret_cast<const f32*>(positions + i);
        for (u64 j = 0; j < NUMBERS; ++j) {
            mins[j] = smaller(mins[j], v[j]);
            maxs[j] = larger(maxs[j], v[j]);
        }
        for (u64 j = 0; j < VERTEX_LANES; ++j)
            squares[j] = larger(squares[j], v[3 * j] * v[3 * j] + v[3 * j + 1] * v[3 * j + 1] +
                                                v[3 * j + 2] * v[3 * j + 2]);
    }
    for (; i < count; ++i) {
        const Vec3f v = positions[i];
        min = smaller(min, v);
        max = larger(max, v);
        squared_radius = larger(squared_radius, v.x * v.x + v.y * v.y + v.z * v.z);
    }
    for (u64 j = 0; j < VERTEX_LANES; ++j) {
        min = smaller(min, {mins[3 * j], mins[3 * j + 1], mins[3 * j + 2]});
        max = larger(max, {maxs[3 * j], maxs[3 * j + 1], maxs[3 * j + 2]});
        squared_radius = larger(squared_radius, squares[j]);
    }
}

void MeshMeasure::takeFaces(const MeshTriangle* triangles, u64 count) {
    takeLargest<3>(triangles, count, *this);
}

void MeshMeasure::takeFaces(const MeshQuad* quads, u64 count) {
    takeLargest<4>(quads, count, *this);
}

void MeshMeasure::take(const MeshMeasure& other) {
    min = smaller(min, other.min);
    max = larger(max, other.max);
    squared_radius = larger(squared_radius, other.squared_radius);
    largest_vertex = std::max(largest_vertex, other.largest_vertex);
    largest_uv = std::max(largest_uv, other.largest_uv);
    largest_material = std::max(largest_material, other.largest_material);
}

MeshMeasure measureMesh(const Mesh& mesh) {
    MeshMeasure measure;
    const auto take_faces = [](MeshMeasure& part, const auto* faces, u64 count) {
        part.takeFaces(faces, count);
    };
    measureArray(mesh.vert_positions, measure, [](MeshMeasure& part, const Vec3f* positions, u64 count) {
        part.takePositions(positions, count);
    });
    measureArray(mesh.triangles, measure, take_faces);
    measureArray(mesh.quads, measure, take_faces);
    return measure;
}

} // namespace Quenza
