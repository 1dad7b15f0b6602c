// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "reading/parser_state.h"
#include "scene/scene_node_tonemapping.h"

class TiXmlElement;

namespace Quenza {

/// Reads a `tonemapping`. A node without a `name` is called "Tone Mapping". Values of the methods that the
/// element doesn't choose take the defaults of a new node. Throws QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
Ref<SceneNodeTonemapping> parseToneMapping(const ParserState& state, const TiXmlElement& element);

} // namespace Quenza
