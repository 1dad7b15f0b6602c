// SPDX-License-Identifier: MIT
#pragma once

#include "export/exact_merge.h"
#include "export/mesh_arrays.h"
#include "scene/mesh.h"
#include "shared/scene_space.h"

#include <limits>

// What a polygon's corners carry, in the form in which it stands in a mesh. A kind of corner says how it's
// read from the host's arrays, where it's written to, and which indices of a face refer to it. It has two
// parts: what the corner's point decides (the place), and what is the corner's own (the detail).

/// A corner normal of the host in the scene's axes, with unit length. One without a direction, be it too
/// short or not finite, becomes (1, 0, 0).
inline Quenza::Vec3f cornerNormal(const Vector& normal) {
    constexpr float tolerance = 1e-7f;
    const float length = normal.GetLength();
    if (std::abs(length - 1.0f) <= tolerance) {
        return toSceneSpace(normal);
    }
    if (!(length >= tolerance && length <= std::numeric_limits<float>::max())) {
        return {1.0f, 0.0f, 0.0f};
    }
    return toSceneSpace(normal * (1.0f / length));
}

/// Positions, for meshes without normals. No corner has a detail.
class PositionCorners {
public:
    struct Detail {};
    static constexpr bool writesSlot = true;

    PositionCorners(const MeshArrays& arrays, float scale, Quenza::Mesh& mesh)
        : arrays_(arrays), scale_(scale), positions_(mesh.vert_positions) {}

    void prefetchPlace(uint32_t point) const { __builtin_prefetch(arrays_.points + point); }
    Detail readDetail(int32_t /*polygon*/, uint32_t /*corner*/) const { return {}; }
    static bool sameDetail(const Detail& /*a*/, const Detail& /*b*/) { return true; }
    uint64_t hash(uint32_t point, const Detail& /*detail*/) const { return hashNumbers(place(point)); }

    void resize(uint64_t size) { positions_.resize(size); }
    void write(uint64_t index, uint32_t point, const Detail& /*detail*/) { positions_[index] = place(point); }
    bool equals(uint64_t index, uint32_t point, const Detail& /*detail*/) const {
        return sameNumbers(positions_[index], place(point));
    }

    static uint32_t* indices(Quenza::MeshTriangle& face) { return face.vertex_indices; }
    static uint32_t* indices(Quenza::MeshQuad& face) { return face.vertex_indices; }

private:
    Quenza::Vec3f place(uint32_t point) const { return toSceneSpace(arrays_.points[point] * scale_); }

    const MeshArrays& arrays_;
    float scale_;
    Quenza::Vector<Quenza::Vec3f>& positions_;
};

/// Positions with normals; the normal is the detail.
class VertexCorners {
public:
    using Detail = Quenza::Vec3f;
    static constexpr bool writesSlot = true;

    VertexCorners(const MeshArrays& arrays, float scale, Quenza::Mesh& mesh)
        : arrays_(arrays), positions_(arrays, scale, mesh), normals_(mesh.vert_normals) {}

    void prefetchPlace(uint32_t point) const { positions_.prefetchPlace(point); }
    Detail readDetail(int32_t polygon, uint32_t corner) const {
        return cornerNormal(arrays_.normals[size_t(polygon) * 4 + corner]);
    }
    static bool sameDetail(const Detail& a, const Detail& b) { return sameNumbers(a, b); }
    uint64_t hash(uint32_t point, const Detail& normal) const {
        return mixWords(positions_.hash(point, {}), hashNumbers(normal));
    }

    void resize(uint64_t size) {
        positions_.resize(size);
        normals_.resize(size);
    }
    void write(uint64_t index, uint32_t point, const Detail& normal) {
        positions_.write(index, point, {});
        normals_[index] = normal;
    }
    bool equals(uint64_t index, uint32_t point, const Detail& normal) const {
        return positions_.equals(index, point, {}) && sameNumbers(normals_[index], normal);
    }

    static uint32_t* indices(Quenza::MeshTriangle& face) { return face.vertex_indices; }
    static uint32_t* indices(Quenza::MeshQuad& face) { return face.vertex_indices; }

private:
    const MeshArrays& arrays_;
    PositionCorners positions_;
    Quenza::Vector<Quenza::Vec3f>& normals_;
};

/// UV pairs, which are all detail; v runs upwards in the scene.
class UvCorners {
public:
    using Detail = Quenza::Vec2f;
    static constexpr bool writesSlot = false;

    UvCorners(const MeshArrays& arrays, Quenza::Mesh& mesh) : source_(arrays.uvs), pairs_(mesh.uv_pairs) {}

    void prefetchPlace(uint32_t /*point*/) const {}
    Detail readDetail(int32_t polygon, uint32_t corner) const {
        const Vector uv = source_.records ? (&source_.records[polygon].a)[corner] : Vector();
        return {uv.x * source_.scaleU - source_.shiftU, 1.0f - (uv.y * source_.scaleV - source_.shiftV)};
    }
    static bool sameDetail(const Detail& a, const Detail& b) { return sameNumbers(a, b); }
    uint64_t hash(uint32_t /*point*/, const Detail& uv) const { return hashNumbers(uv); }

    void resize(uint64_t size) { pairs_.resize(size); }
    void write(uint64_t index, uint32_t /*point*/, const Detail& uv) { pairs_[index] = uv; }
    bool equals(uint64_t index, uint32_t /*point*/, const Detail& uv) const {
        return sameNumbers(pairs_[index], uv);
    }

    static uint32_t* indices(Quenza::MeshTriangle& face) { return face.uv_indices; }
    static uint32_t* indices(Quenza::MeshQuad& face) { return face.uv_indices; }

private:
    const UvSource source_;
    Quenza::Vector<Quenza::Vec2f>& pairs_;
};
