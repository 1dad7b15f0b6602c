// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

namespace headless {

/// The object with all below it as plain objects: generators become the geometry of their caches, deformed
/// objects what they look like, inputs of generators and deformers are left out. Polygons keep the tags of
/// the object that made them. Stands outside any document, at the object's local matrix. Builds the caches
/// that it needs.
std::unique_ptr<Object> currentStateToObject(Object& object);

} // namespace headless
