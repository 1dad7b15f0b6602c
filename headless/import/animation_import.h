// SPDX-License-Identifier: MIT
#pragma once

#include "headless/import/node_import.h"

namespace headless {

/// Frames per second that the model's animation was made at, or the host's 30 when it tells none.
int32_t framesPerSecond(const aiScene& scene);

/// True when the model's first animation moves its root.
bool animatesRoot(const aiScene& scene);

/// Gives the objects the tracks of the model's first animation and the document its range.
void importAnimation(const aiScene& scene, const ModelSpace& space, const ImportedNodes& nodes,
                     Document& document, std::vector<std::string>& warnings);

} // namespace headless
