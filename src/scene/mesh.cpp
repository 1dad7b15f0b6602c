// SPDX-License-Identifier: MIT
#include "scene/mesh.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"
#include "scene/mesh_measure.h"

#include <algorithm>
#include <cmath>
#include <zlib.h>

namespace Quenza {

namespace {

constexpr f32 MIN_TRIANGLE_AREA = 1e-20f;

Vec3f difference(const Vec3f& a, const Vec3f& b) {
    return Vec3f{a.x - b.x, a.y - b.y, a.z - b.z};
}

f32 squaredLength(const Vec3f& v) {
    return v.x * v.x + v.y * v.y + v.z * v.z;
}

f32 triangleArea(const Vec3f& a, const Vec3f& b, const Vec3f& c) {
    const Vec3f u = difference(b, a);
    const Vec3f v = difference(c, a);
    const Vec3f cross{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    return std::sqrt(squaredLength(cross)) * 0.5f;
}

/// A running CRC-32 with the number of bytes that went in.
class Hash {
public:
    void add(const void* data, u64 size) {
        // zlib counts bytes in 32 bits, and takes a null pointer as the wish to start anew.
        const Bytef* bytes = static_cast<const Bytef*>(data);
        num_bytes_ += size;
        while (size > 0) {
            const uInt part = uInt(std::min(size, MAX_PART));
            crc_ = crc32(crc_, bytes, part);
            bytes += part;
            size -= part;
        }
    }
    template <class T>
    void addAll(const Vector<T>& values) {
        add(values.data(), values.size() * sizeof(T));
    }
    u32 value() const { return u32(crc_); }
    u64 numBytes() const { return num_bytes_; }

private:
    static constexpr u64 MAX_PART = u64(1) << 30;

    uLong crc_ = crc32(0, nullptr, 0);
    u64 num_bytes_ = 0;
};

} // namespace

void Mesh::setMaxNumTexcoordSets(u32 n) {
    num_uv_mappings = std::max(num_uv_mappings, n);
}

void Mesh::addVertex(const Vec3f& position, const Vec3f& normal) {
    const f32 factor = 1.0f / std::sqrt(squaredLength(normal));
    const Vec3f unit{normal.x * factor, normal.y * factor, normal.z * factor};
    if (!std::isfinite(unit.x) || !std::isfinite(unit.y) || !std::isfinite(unit.z))
        throw QuenzaException("Invalid normal");
    vert_positions.push_back(position);
    vert_normals.push_back(unit);
}

void Mesh::addMaterialUsed(const String& material_name) {
    if (std::find(used_materials.begin(), used_materials.end(), material_name) == used_materials.end())
        used_materials.push_back(material_name);
}

void Mesh::addUVs(const Vector<Vec2f>& uvs) {
    for (u32 i = 0; i < num_uv_mappings; ++i)
        uv_pairs.push_back(i < uvs.size() ? uvs[i] : Vec2f{0, 0});
}

void Mesh::checkIndices(const char* face, const u32* vertex_indices, const u32* uv_indices,
                        u32 corners) const {
    for (u32 i = 0; i < corners; ++i)
        if (vertex_indices[i] >= vert_positions.size())
            throw QuenzaException(String(face) + " vertex index is out of bounds. (vertex index=" +
                                  toString(vertex_indices[i]) + ")");
    if (num_uv_mappings == 0)
        return;
    for (u32 i = 0; i < corners; ++i)
        if (uv_indices[i] >= getNumUVs())
            throw QuenzaException(String(face) +
                                  " uv index is out of bounds. (uv index=" + toString(uv_indices[i]) + ")");
}

void Mesh::addTriangle(const u32 vertex_indices[3], const u32 uv_indices[3], u32 material_index) {
    checkIndices("Triangle", vertex_indices, uv_indices, 3);
    const f32 area = triangleArea(vert_positions[vertex_indices[0]], vert_positions[vertex_indices[1]],
                                  vert_positions[vertex_indices[2]]);
    if (!(area >= MIN_TRIANGLE_AREA))
        return;
    MeshTriangle triangle;
    std::copy_n(vertex_indices, 3, triangle.vertex_indices);
    std::copy_n(uv_indices, 3, triangle.uv_indices);
    triangle.tri_mat_index = material_index;
    triangles.push_back(triangle);
}

void Mesh::addQuad(const u32 vertex_indices[4], const u32 uv_indices[4], u32 material_index) {
    checkIndices("Quad", vertex_indices, uv_indices, 4);
    MeshQuad quad;
    std::copy_n(vertex_indices, 4, quad.vertex_indices);
    std::copy_n(uv_indices, 4, quad.uv_indices);
    quad.mat_index = material_index;
    quads.push_back(quad);
}

void Mesh::checkAllIndices() const {
    for (const MeshTriangle& triangle : triangles)
        checkIndices("Triangle", triangle.vertex_indices, triangle.uv_indices, 3);
    for (const MeshQuad& quad : quads)
        checkIndices("Quad", quad.vertex_indices, quad.uv_indices, 4);
}

void Mesh::checkInvariants() const {
    if (num_uv_mappings != 0 && uv_pairs.size() % num_uv_mappings != 0)
        throw QuenzaException("Mesh uv_pairs.size() must be a multiple of mesh.num_uv_mappings");
    if (!vert_normals.empty() && vert_normals.size() != vert_positions.size())
        throw QuenzaException("Must be zero normals, or normals.size() must equal verts.size()");
}

u32 Mesh::endOfModel() {
    checkInvariants();
    takeMeasure(measureMesh(*this));
    return num_materials_referenced;
}

u32 Mesh::endOfUncheckedModel(const MeshMeasure& measure) {
    checkInvariants();
    const bool uvs_exist = num_uv_mappings == 0 || measure.largest_uv < getNumUVs();
    if (measure.largest_vertex >= vert_positions.size() || !uvs_exist)
        checkAllIndices(); // an empty mesh comes here too, and has nothing to complain of
    takeMeasure(measure);
    return num_materials_referenced;
}

void Mesh::takeMeasure(const MeshMeasure& measure) {
    aabb_min = measure.min;
    aabb_max = measure.max;
    max_radius = std::sqrt(measure.squared_radius);
    num_materials_referenced = measure.largest_material + 1;
}

void Mesh::getBoundingBoxAndRadius(f32 box[6], f32& radius) const {
    const f32 values[6] = {aabb_min.x, aabb_min.y, aabb_min.z, aabb_max.x, aabb_max.y, aabb_max.z};
    std::copy_n(values, 6, box);
    radius = max_radius;
}

u32 Mesh::getMaterialIndexOfPolygon(u32 index) const {
    if (index < triangles.size())
        return triangles[index].tri_mat_index;
    return quads[(index - triangles.size()) / 2].mat_index;
}

u32 Mesh::checksum(u64& num_bytes) const {
    Hash hash;
    hash.add(&num_uv_mappings, sizeof num_uv_mappings);
    for (const String& material : used_materials)
        hash.add(material.data(), material.size());
    hash.addAll(vert_positions);
    hash.addAll(vert_normals);
    hash.add(&uv_layout, sizeof uv_layout);
    hash.addAll(uv_pairs);
    hash.addAll(triangles);
    hash.addAll(quads);
    num_bytes = hash.numBytes() - sizeof uv_layout;
    return hash.value();
}

} // namespace Quenza
