// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/object.h"

#include <functional>

namespace headless {

/// A polygon object as it is seen: deformed when something deforms it.
struct BuiltMesh {
    const PolygonNode* mesh;
    /// From the mesh's space to that of the object that was named as outer.
    Matrix matrix;
};

/// What is seen of one object without its children: its deform cache, else its cache, else itself.
const Object& shownObject(const Object& object);

/// Calls `visit` for the polygon objects that a branch with built caches shows. Inputs of generators inside
/// the branch are left out, and render instances aren't followed.
void forEachMesh(const Object& root, const Object* outer, const std::function<void(const BuiltMesh&)>& visit);

} // namespace headless
