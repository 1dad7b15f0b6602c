// SPDX-License-Identifier: MIT
#pragma once

#include "export/exact_merge.h"
#include "export/mesh_arrays.h"
#include "export/scene_space.h"
#include "scene/mesh.h"

#include <algorithm>
#include <limits>

// What a polygon's corners carry, read from the host's arrays, in the form in which they stand in a mesh. A
// kind of corner tells how to read one, where its arrays are, and which indices of a face refer to them.

/// A corner normal of the host in the scene's axes, with unit length. One without a direction becomes (1, 0,
/// 0).
inline Quenza::Vec3f cornerNormal(const Vector& normal) {
    constexpr float tolerance = 1e-7f;
    const float length = normal.GetLength();
    if (!(length >= tolerance && length <= std::numeric_limits<float>::max())) {
        return {1.0f, 0.0f, 0.0f};
    }
    if (std::abs(length - 1.0f) <= tolerance) {
        return toSceneSpace(normal);
    }
    return toSceneSpace(normal * (1.0f / length));
}

/// Keeps what a growing array of corners has room for. Most meshes need little more than one record a point;
/// one that needs more may need one for each corner. Memory that isn't written to stays with the system.
class CornerCapacity {
public:
    CornerCapacity(uint64_t points, uint64_t corners)
        : corners_(corners), capacity_(std::min(corners, points + points / 4)) {}

    uint64_t get() const { return capacity_; }
    bool isFull(uint64_t size) const { return size == capacity_; }
    void raise() { capacity_ = corners_; }

private:
    uint64_t corners_;
    uint64_t capacity_;
};

/// Positions, for meshes without normals.
class PositionCorners {
public:
    using Record = Quenza::Vec3f;
    static constexpr bool writesSlot = true;

    PositionCorners(const MeshArrays& arrays, float scale, Quenza::Mesh& mesh)
        : arrays_(arrays), scale_(scale), positions_(mesh.vert_positions) {}

    void prefetch(uint32_t point) const { __builtin_prefetch(arrays_.points + point); }
    Record read(int32_t /*polygon*/, uint32_t /*corner*/, uint32_t point) const {
        return toSceneSpace(arrays_.points[point] * scale_);
    }
    static uint64_t hash(const Record& p) {
        return mixWords(numberBits(p.x) | numberBits(p.y) << 32, numberBits(p.z));
    }

    void resize(uint64_t size) { positions_.resize(size); }
    void write(uint64_t index, const Record& record) { positions_[index] = record; }
    void prefetchWritten(uint64_t /*index*/) const {}
    bool equals(uint64_t index, const Record& p) const {
        const Quenza::Vec3f& q = positions_[index];
        return sameNumber(p.x, q.x) && sameNumber(p.y, q.y) && sameNumber(p.z, q.z);
    }
    /// Whether a record that was read for the same point equals.
    bool equalsAtPoint(uint64_t /*index*/, const Record& /*record*/) const { return true; }

    static uint32_t* indices(Quenza::MeshTriangle& face) { return face.vertex_indices; }
    static uint32_t* indices(Quenza::MeshQuad& face) { return face.vertex_indices; }

private:
    const MeshArrays& arrays_;
    float scale_;
    Quenza::Vector<Quenza::Vec3f>& positions_;
};

/// Positions with normals.
class VertexCorners {
public:
    struct Record {
        Quenza::Vec3f position;
        Quenza::Vec3f normal;
    };
    static constexpr bool writesSlot = true;

    VertexCorners(const MeshArrays& arrays, float scale, Quenza::Mesh& mesh)
        : arrays_(arrays), positions_(arrays, scale, mesh), normals_(mesh.vert_normals) {}

    void prefetch(uint32_t point) const { positions_.prefetch(point); }
    Record read(int32_t polygon, uint32_t corner, uint32_t point) const {
        return {positions_.read(polygon, corner, point),
                cornerNormal(arrays_.normals[size_t(polygon) * 4 + corner])};
    }
    static uint64_t hash(const Record& record) {
        return mixWords(PositionCorners::hash(record.position), PositionCorners::hash(record.normal));
    }

    void resize(uint64_t size) {
        positions_.resize(size);
        normals_.resize(size);
    }
    void write(uint64_t index, const Record& record) {
        positions_.write(index, record.position);
        normals_[index] = record.normal;
    }
    void prefetchWritten(uint64_t index) const { __builtin_prefetch(normals_.data() + index); }
    bool equals(uint64_t index, const Record& record) const {
        return positions_.equals(index, record.position) && equalsAtPoint(index, record);
    }
    bool equalsAtPoint(uint64_t index, const Record& record) const {
        const Quenza::Vec3f& n = normals_[index];
        return sameNumber(record.normal.x, n.x) && sameNumber(record.normal.y, n.y) &&
               sameNumber(record.normal.z, n.z);
    }

    static uint32_t* indices(Quenza::MeshTriangle& face) { return face.vertex_indices; }
    static uint32_t* indices(Quenza::MeshQuad& face) { return face.vertex_indices; }

private:
    const MeshArrays& arrays_;
    PositionCorners positions_;
    Quenza::Vector<Quenza::Vec3f>& normals_;
};

/// UV pairs: v runs upwards in the scene.
class UvCorners {
public:
    using Record = Quenza::Vec2f;
    static constexpr bool writesSlot = false;

    UvCorners(const MeshArrays& arrays, Quenza::Mesh& mesh) : source_(arrays.uvs), pairs_(mesh.uv_pairs) {}

    void prefetch(uint32_t /*point*/) const {}
    Record read(int32_t polygon, uint32_t corner, uint32_t /*point*/) const {
        const Vector uv = source_.records ? (&source_.records[polygon].a)[corner] : Vector();
        return {uv.x * source_.scaleU - source_.shiftU, 1.0f - (uv.y * source_.scaleV - source_.shiftV)};
    }
    static uint64_t hash(const Record& uv) { return mixWords(numberBits(uv.x), numberBits(uv.y)); }

    void resize(uint64_t size) { pairs_.resize(size); }
    void write(uint64_t index, const Record& record) { pairs_[index] = record; }
    void prefetchWritten(uint64_t index) const { __builtin_prefetch(pairs_.data() + index); }
    bool equals(uint64_t index, const Record& uv) const {
        return sameNumber(uv.x, pairs_[index].x) && sameNumber(uv.y, pairs_[index].y);
    }
    bool equalsAtPoint(uint64_t index, const Record& uv) const { return equals(index, uv); }

    static uint32_t* indices(Quenza::MeshTriangle& face) { return face.uv_indices; }
    static uint32_t* indices(Quenza::MeshQuad& face) { return face.uv_indices; }

private:
    const UvSource source_;
    Quenza::Vector<Quenza::Vec2f>& pairs_;
};
