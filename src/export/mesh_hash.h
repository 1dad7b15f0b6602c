// SPDX-License-Identifier: MIT
#pragma once

#include "host/object.h"
#include "host/tag.h"

#include <vector>

/// CRC-32 over all that changes the converted form of a mesh: raw texture coordinates, points and polygons,
/// the tiling and projection of the texture tags (not their materials), the phong tag, whether it's a light's
/// shape, and the scene's scale.
uint32_t meshHash(const PolygonObject* object, const std::vector<TextureTag*>& tags, bool isLightGeometry,
                  float sceneScale);
