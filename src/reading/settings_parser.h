// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "reading/parser_state.h"
#include "scene/scene_node_render_settings.h"

class TiXmlElement;

namespace Quenza {

/// Reads a `renderer_settings` into a node that holds what the element sets and nothing else: filters and
/// white point are null where the element has none. Such a node is a layer for mergeSettings. Throws
/// QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<SceneNodeRenderSettings> parseRenderSettings(const ParserState& state, const TiXmlElement& element);

/// Sets in `base` all that `layer` holds: each row, filter and so on by itself, the light layers as one list.
/// UID and name of `base` stay. The nodes share nothing afterwards.
void mergeSettings(SceneNodeRenderSettings& base, const SceneNodeRenderSettings& layer);

} // namespace Quenza
