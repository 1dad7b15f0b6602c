// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_parametric_surface.h"
#include "scene/scene_node_scatter.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Geometry that a shader makes: `shader`, with the source in a `shader` of its own, is required, and so is a
/// scatter's `geometry_uid`; the rest takes the defaults of a new node. These throw QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
Ref<SceneNodeParametricSurface> parseParametricSurface(ParserState& state, const TiXmlElement& element);
Ref<SceneNodeScatter> parseScatter(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
