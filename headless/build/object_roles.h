// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/object.h"

namespace headless {

/// True for an object that may have a cache: a primitive, an array, a symmetry, an instance that isn't a
/// render instance, an object of a plug-in; unless it's switched off.
bool isGenerator(const Object& object);
/// True for bend, twist, taper and bulge, switched on or not.
bool isDeformer(const Object& object);
/// The child that an array or symmetry works on: the first one that is no deformer; null for other objects,
/// and for generators that are switched off.
Object* inputOf(const Object& generator);
/// True for the input of the generator above it.
bool isInput(const Object& object);
/// The object that an instance shows, of any document; null for other objects.
Object* instanceTarget(const Object& object);

/// The matrix that brings points of an object's space into that of `outer`, which is above it, also out of
/// caches; into world space when `outer` is null.
Matrix matrixTo(const Object& object, const Object* outer);

} // namespace headless
