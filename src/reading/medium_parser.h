// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_medium.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// A `medium`: `uid`, `name`, `precedence` and one of `basic`, `dermis`, `epidermis` and `atmosphere`. Enters
/// the state's table of media; adds nothing to the scene. Throws QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
Ref<SceneNodeMedium> parseMedium(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
