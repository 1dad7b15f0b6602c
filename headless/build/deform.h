// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/object.h"

#include <unordered_map>

namespace headless {

/// Deformers that are switched on, by the object that they act on with all below it: their parent.
using Deformers = std::unordered_map<const Object*, std::vector<const Object*>>;

/// Gives a polygon object the deform cache that the deformers make of it, or none. A deformer acts on its
/// parent's branch: geometry of the parent, siblings, what is below them, and all their caches. Those lowest
/// in the tree act first, and of one parent's the upper. In the cache of an instance those that act on the
/// linked object from above act first.
/// @param boundary  deformers from this object upwards are left out; null takes all
void deform(PolygonNode& mesh, const Deformers& deformers, const Object* boundary);

} // namespace headless
