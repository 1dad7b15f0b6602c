// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <assimp/scene.h>
#include <string>
#include <vector>

namespace headless {

/// Adds the model's materials to the document, each as the host's standard material under its name.
/// `modelFile` is where relative texture paths start; images from inside the model, and masks that are the
/// alpha of an image, become files of `textureFolder`, or are left out when that is "". Returns them in the
/// model's order.
std::vector<Material*> importMaterials(const aiScene& scene, const std::string& modelFile,
                                       const std::string& textureFolder, Document& document,
                                       std::vector<std::string>& warnings);

} // namespace headless
