// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "foundation/vector.h"

#include <limits>

namespace Quenza {

/// 28 bytes, as they stand in a mesh file.
struct MeshTriangle {
    u32 vertex_indices[3];
    u32 uv_indices[3];
    u32 tri_mat_index;
    friend bool operator==(const MeshTriangle&, const MeshTriangle&) = default;
};

/// 36 bytes, as they stand in a mesh file.
struct MeshQuad {
    u32 vertex_indices[4];
    u32 uv_indices[4];
    u32 mat_index;
    friend bool operator==(const MeshQuad&, const MeshQuad&) = default;
};

static_assert(sizeof(Vec2f) == 8 && sizeof(Vec3f) == 12 && sizeof(MeshTriangle) == 28 &&
                  sizeof(MeshQuad) == 36,
              "these records are written as they lie in memory");

class MeshMeasure;

/// Triangles and quads with shared vertices and UVs, in the form in which the renderer takes them. Positions
/// are in object space, metres. Failures are QuenzaExceptions.
///
/// A mesh file is little-endian, nothing is padded, and arrays are whole blocks of their records:
///
///     u32 magic 0x0053436F        u32 version 3              u32 num_uv_mappings
///     used_materials: u32 count, per name u32 length and the bytes
///     UV set names: u32 count (written as 0), per entry a string as above and a u32, ignored
///     vert_positions, vert_normals: u32 count, 3 f32 each
///     u32 uv_layout               from version 3 on
///     uv_pairs: u32 count, 2 f32 each
///     triangles: u32 count, 28 bytes each
///     quads: u32 count, 36 bytes each             from version 2 on
class Mesh : public RefCounted {
public:
    /// UV sets per UV entry: the larger of the present number and `n`.
    void setMaxNumTexcoordSets(u32 n);
    void addVertex(const Vec3f& position) { vert_positions.push_back(position); }
    /// Normalises the normal; throws "Invalid normal" when that isn't finite.
    void addVertex(const Vec3f& position, const Vec3f& normal);
    /// Names are unique.
    void addMaterialUsed(const String& material_name);
    /// Adds one UV entry: a pair for each of the sets, (0, 0) where the argument is too short.
    void addUVs(const Vector<Vec2f>& uvs);
    /// Indices are checked. A triangle with an area below 1e-20 is left out without a word.
    void addTriangle(const u32 vertex_indices[3], const u32 uv_indices[3], u32 material_index);
    void addQuad(const u32 vertex_indices[4], const u32 uv_indices[4], u32 material_index);

    /// Checks the invariants and works out the bounds and the number of materials, which it returns.
    u32 endOfModel();
    /// What endOfModel and the writer of mesh files require: whole UV entries, and no normals or one a
    /// vertex.
    void checkInvariants() const;

    /// UV entries; the mesh must have UV sets.
    u64 getNumUVs() const { return uv_pairs.size() / num_uv_mappings; }
    /// `box` receives minimum and maximum. Valid after endOfModel.
    void getBoundingBoxAndRadius(f32 box[6], f32& radius) const;
    /// Polygons are the triangles, then each quad twice.
    u32 getMaterialIndexOfPolygon(u32 index) const;

    /// CRC-32 (zlib's) of all data in the order of the fields, names without their lengths. `num_bytes`
    /// leaves out the four bytes of `uv_layout`: file names are made of it.
    u32 checksum(u64& num_bytes) const;

    /// Writes to "<path>.partial" and renames, so that a file of that name is whole. After a failed write the
    /// partial file stays. The invariants are checked first.
    static void writeToFile(const String& path, const Mesh& mesh);

    /// Reads into a new mesh. Counts are checked against the size of the file before memory is taken; bytes
    /// behind the last array are ignored. Indices are not checked, see checkAllIndices, and endOfModel is not
    /// called. A mesh of which the reading failed is to be dropped.
    static void readFromFile(const String& path, Mesh& mesh);

    /// readFromFile of a file that nobody trusts, its positions multiplied by `factor`, with checkAllIndices
    /// and endOfModel in the same pass over the data.
    static void readCheckedFromFile(const String& path, Mesh& mesh, f32 factor);

    /// Throws what addTriangle and addQuad would have thrown for a face with an index out of bounds.
    void checkAllIndices() const;

    u32 num_uv_mappings = 0;
    Vector<String> used_materials;
    Vector<Vec3f> vert_positions;
    Vector<Vec3f> vert_normals; ///< Unit length; empty, or one per vertex.
    u32 uv_layout = 0;          ///< 0 or 1; 0 is what addUVs makes.
    Vector<Vec2f> uv_pairs;     ///< `num_uv_mappings` pairs per UV entry, side by side.
    Vector<MeshTriangle> triangles;
    Vector<MeshQuad> quads;
    Vec3f aabb_min = {INFINITE, INFINITE, INFINITE};
    Vec3f aabb_max = {-INFINITE, -INFINITE, -INFINITE};
    f32 max_radius = 0;               ///< Largest distance of a vertex from the origin.
    u32 num_materials_referenced = 0; ///< 1 + the largest material index; 0 until endOfModel.

private:
    static constexpr f32 INFINITE = std::numeric_limits<f32>::infinity();

    void checkIndices(const char* face, const u32* vertex_indices, const u32* uv_indices, u32 corners) const;
    u32 endOfUncheckedModel(const MeshMeasure& measure);
    void takeMeasure(const MeshMeasure& measure);
};

} // namespace Quenza
