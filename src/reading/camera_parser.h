// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "reading/parser_state.h"
#include "scene/scene_node_camera.h"

class TiXmlElement;

namespace Quenza {

/// Reads a `camera`. Every child is optional and takes the default of a new node, but for `autofocus`: a
/// camera without that child has its focus where it says. A `white_point` goes to the state, as the settings'
/// override. Throws QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<SceneNodeCamera> parseCamera(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
