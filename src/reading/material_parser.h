// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/material.h"
#include "scene/scene_node_material.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// A `material`. Enters the state's table by name; adds nothing to the scene. Throws
/// QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<SceneNodeMaterial> parseMaterial(ParserState& state, const TiXmlElement& element);

/// The material within the element `material`: the type element with the name and the flags beside it. For
/// materials that are no node of the scene, such as the background's. Throws likewise.
Ref<Material> parseMaterialBody(const ParserState& state, const TiXmlElement& element);

} // namespace Quenza
