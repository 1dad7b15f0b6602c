// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_background_settings.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// What surrounds the scene, in the writer's form and in three short ones. The short ones make a node called
/// "Background Settings". These throw QuenzaModelParserExcep or SceneParseUtilsExcep.

/// `background_settings`: all children are optional.
Ref<SceneNodeBackgroundSettings> parseBackgroundSettings(ParserState& state, const TiXmlElement& element);

/// `background`: shines with its `spectrum` from everywhere.
Ref<SceneNodeBackgroundSettings> parseBackground(ParserState& state, const TiXmlElement& element);

/// `env_map`: shines with an image, a `texture` or the `path` of one, on light layer `layer` (0). A texture
/// without coordinates of its own is laid around the scene by longitude and latitude.
Ref<SceneNodeBackgroundSettings> parseEnvironmentMap(ParserState& state, const TiXmlElement& element);

/// `skylight`: sun and sky. All children are optional.
Ref<SceneNodeBackgroundSettings> parseSkylight(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
