// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "reading/parser_state.h"
#include "scene/scene_node_metadata.h"
#include "scene/scene_node_section_plane.h"

class TiXmlElement;

namespace Quenza {

/// All children are optional. These throw QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<SceneNodeMetaData> parseMetaData(const ParserState& state, const TiXmlElement& element);
Ref<SceneNodeSectionPlane> parseSectionPlane(const ParserState& state, const TiXmlElement& element);

/// Appends the text of a `layer_name` to the state's layer names.
void parseLayerName(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
