// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_sphere.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Reads a `sphere`: `radius`, any number of `keyframe`s, and `material_name` or `material_uid`; `uid` and
/// `name` are optional. Throws QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<SceneNodeSphere> parseSphere(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
