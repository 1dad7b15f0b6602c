// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/object.h"
#include "headless/model/view.h"

namespace headless {

/// Unit normals for the four corners of each polygon, by the object's phong tag and its broken edges; freed
/// with freeForHost. Null without a phong tag, and for polygons with points that don't exist.
Vector* createPhongNormals(const PolygonNode& mesh);

/// Texture coordinates that the projection of `tag` gives the polygons, without the tag's tiling. The
/// matrices lead to world space, that of the mesh and that of the object that carries the tag. Frontal and
/// camera mapping look through the scene camera of `view`, camera mapping through the tag's own camera when
/// it has one. Null when the projection can't be made.
std::unique_ptr<UVWTagNode> generateUVW(const PolygonNode& mesh, const Matrix& meshMatrix,
                                        const TextureTagNode& tag, const Matrix& ownerMatrix,
                                        const View* view);

} // namespace headless
