// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/merge_table.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "foundation/vector.h"
#include "scene/mesh.h"

#include <limits>

namespace Quenza {

/// A corner of a face as the OBJ file has it: places in the three lists.
struct ObjCorner {
    static constexpr u32 NONE = std::numeric_limits<u32>::max();

    u32 position;
    u32 tex_coord; ///< NONE where the corner has none.
    u32 normal;    ///< NONE where the corner has none.
    friend bool operator==(const ObjCorner&, const ObjCorner&) = default;
};

/// The lists of an OBJ file, and the mesh's vertices, one for each distinct corner.
///
/// Most positions have one kind of corner, which is remembered with the position; only further kinds go to
/// the table.
class ObjCornerMerge {
public:
    explicit ObjCornerMerge(Mesh& mesh) : mesh_(mesh) { table_.reset(0); }

    void addPosition(const Vec3f& position) { positions_.push_back({position, ObjCorner::NONE}); }
    u64 numPositions() const { return positions_.size(); }

    /// The index of the mesh's vertex for a corner, whose places must be in the lists. Throws "Invalid
    /// normal" for a normal without a direction.
    u32 vertexFor(const ObjCorner& corner);

    Vector<Vec2f> tex_coords;
    Vector<Vec3f> normals;

private:
    struct Position {
        Vec3f position;
        u32 first_vertex; ///< The mesh's first vertex at this position, or NONE.
    };

    u32 addVertex(const ObjCorner& corner);

    Mesh& mesh_;
    Vector<Position> positions_;
    Vector<ObjCorner> corners_; ///< By vertex of the mesh.
    MergeTable table_;
};

} // namespace Quenza
