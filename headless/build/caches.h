// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

class BaseThread;

namespace headless {

/// Brings the caches of a document up to date: those of generators, with generators inside them, and the
/// deform caches of what deformers act on; also sets the bit of objects that are input of a generator. A
/// cache whose sources didn't change stays as it is, pointers to it stay valid. Returns false when `thread`
/// was asked to end before all was done; the caches are right then as far as they were built.
bool buildCaches(Document& document, BaseThread* thread = nullptr);

/// The same for one object with all below it. The object needn't be in a document.
void buildCaches(Object& object);

/// The object's bounding box in its own space, from its caches as they are, its points, or what its plug-in
/// tells. Without children.
struct ObjectBounds {
    Vector centre;
    Vector radius;
};
ObjectBounds objectBounds(Object& object);

/// Generators inside the caches of generators, and instances of instances, end at this depth. What a limit
/// leaves out is told by a warning.
inline constexpr int maxCacheDepth = 64;
/// No more objects than these come into the caches of one document.
inline constexpr size_t maxCacheObjects = 2'000'000;

} // namespace headless
