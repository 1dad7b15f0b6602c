// SPDX-License-Identifier: MIT
#pragma once

#include "headless/import/model_space.h"
#include "headless/model/document.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace headless {

/// Why a mesh can't be imported; empty when it can. A mesh of points and lines alone is no fault.
std::string faultOf(const aiMesh& mesh, const ModelSpace& space);
bool hasPolygons(const aiMesh& mesh);

/// One polygon object of the meshes of a node, which must be without fault: points at one place become one,
/// polygons keep the files' order, and UVW tags carry the texture coordinates. With normals that smooth any
/// edge there is a phong tag, and the edges that they don't smooth are broken. A mesh has one material: when
/// the meshes have several, each gets a polygon selection with a texture tag that is restricted to it.
/// `materials` are those of the model in its order.
std::unique_ptr<PolygonNode> importMeshes(std::span<const aiMesh* const> meshes, const ModelSpace& space,
                                          std::span<Material* const> materials);

} // namespace headless
