// SPDX-License-Identifier: MIT
#pragma once

#include "headless/geometry/poly_mesh.h"
#include "headless/model/object.h"

#include <optional>

namespace headless {

bool isPrimitive(int32_t type);
/// The mesh of a primitive with the parameters that it has; nothing for other objects.
std::optional<geometry::PolyMesh> makePrimitive(const Object& object);

/// A polygon object that takes over the mesh, with a UVW tag when it has UVWs.
std::unique_ptr<PolygonNode> toPolygons(geometry::PolyMesh&& mesh);

} // namespace headless
