// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/surface_shader.h"

namespace engine {

/// Moves the vertices of a mesh along its normals by what the materials say. Where faces of several materials
/// or UVs meet at a vertex, it goes by their mean, so that no gap opens. `instance` has the mesh as its
/// shape, its materials and its place, in which they are asked; the heights are metres there.
void displace(Quenza::Mesh& mesh, const Instance& instance);

} // namespace engine
