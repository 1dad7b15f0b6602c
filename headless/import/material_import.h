// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <assimp/scene.h>
#include <string>
#include <vector>

namespace headless {

/// Adds the model's materials to the document, each as the host's standard material with its name, colour and
/// colour texture. `modelFile` is where relative texture paths start. Returns them in the model's order.
std::vector<Material*> importMaterials(const aiScene& scene, const std::string& modelFile, Document& document,
                                       std::vector<std::string>& warnings);

} // namespace headless
