// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/mesh.h"

#include <vector>

namespace engine {

/// A copy of the mesh made of triangles alone, each cut into four `levels` times. `smooth` rounds the surface
/// as it is cut (Loop, "Smooth Subdivision Surfaces Based on Triangles", 1987); else it keeps its shape. UVs
/// lie on straight lines either way, materials are kept. When `smooth`, faces that meet at one position are
/// joined there, and normals are dropped, since they no longer belong to the surface; else they are
/// interpolated. The mesh's indices are within its arrays.
Quenza::Ref<Quenza::Mesh> subdivided(const Quenza::Mesh& mesh, int levels, bool smooth);

/// For each vertex the first one at the same position.
std::vector<Quenza::u32> firstAtSamePlace(const Quenza::Mesh& mesh);

/// How often a mesh may be cut, `wanted` at most, so that it has not more than `limit` triangles.
int affordableLevels(const Quenza::Mesh& mesh, int wanted, Quenza::u64 limit);

} // namespace engine
