// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/material.h"

#include <assimp/material.h>

namespace headless {

/// Sets colour, highlight, reflection, transparency and emission of a standard material by the numbers of the
/// model's, as near as the host's material comes to them. Textures aren't looked at.
///
/// Metalness and roughness become a reflection: its brightness stands for the reflectance straight on, its
/// blurriness for the roughness. A material whose metalness is textured counts as none of metal. Older
/// materials keep their highlight.
void setSurface(Material& material, const aiMaterial& source);

/// How much of the material is there, 0 to 1; 1 where the model tells nothing that makes sense.
float opacityOf(const aiMaterial& source);

/// True for a material whose numbers are metalness and roughness, or specular and glossiness.
bool isPhysical(const aiMaterial& source);

} // namespace headless
