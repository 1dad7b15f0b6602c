// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/object.h"

class BaseThread;

namespace headless {

// The caches of generators, as they are before generators inside them have caches of their own. The result is
// the generator's; null for none.

std::unique_ptr<Object> generatePrimitive(const Object& primitive);
/// The linked object with all below it, at the instance's place.
std::unique_ptr<Object> generateInstance(const Object& instance);
/// Copies of the input on a circle around Y, turned outwards, below a null object.
std::unique_ptr<Object> generateArray(const Object& array);
/// The polygons of a built copy of the input, each with its mirror image, in the symmetry's space: one
/// polygon object, or a null with several.
std::unique_ptr<Object> generateSymmetry(const Object& symmetry, const Object& builtInput);
/// What the plug-in's instance gives.
std::unique_ptr<Object> generateVirtualObjects(Object& object, BaseThread* thread);

} // namespace headless
