// SPDX-License-Identifier: MIT
#include "reading/obj_corner_merge.h"

#include "reading/format_decoder.h"

namespace Quenza {

namespace {

/// What a mesh file can hold.
constexpr u64 MAX_VERTICES = 0x7FFFFFFF;

u32 hashOf(const ObjCorner& corner) {
    return u32(mixWords(corner.position | u64(corner.tex_coord) << 32, corner.normal) >> 32);
}

} // namespace

u32 ObjCornerMerge::vertexFor(const ObjCorner& corner) {
    Position& position = positions_[corner.position];
    if (position.first_vertex == ObjCorner::NONE)
        return position.first_vertex = addVertex(corner);
    if (corners_[position.first_vertex] == corner)
        return position.first_vertex;
    return table_.findOrAppend(
        hashOf(corner), [&](u32 vertex) { return corners_[vertex] == corner; },
        [&] { return addVertex(corner); });
}

u32 ObjCornerMerge::addVertex(const ObjCorner& corner) {
    const u64 index = corners_.size();
    if (index >= MAX_VERTICES)
        throw ModelLoaderExcep("Vector too long.");
    const Vec3f& position = positions_[corner.position].position;
    if (corner.normal == ObjCorner::NONE)
        mesh_.addVertex(position);
    else
        mesh_.addVertex(position, normals[corner.normal]);
    const bool has_uv = corner.tex_coord != ObjCorner::NONE;
    if (has_uv && mesh_.num_uv_mappings == 0) {
        mesh_.setMaxNumTexcoordSets(1);
        mesh_.uv_pairs.resize(index, Vec2f{0, 0});
    }
    if (mesh_.num_uv_mappings != 0)
        mesh_.uv_pairs.push_back(has_uv ? tex_coords[corner.tex_coord] : Vec2f{0, 0});
    corners_.push_back(corner);
    return u32(index);
}

} // namespace Quenza
