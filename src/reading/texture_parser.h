// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/vector.h"
#include "scene/tex_coord_generator.h"
#include "scene/texture.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// The texture whose elements are the children of `element`; all but the path are optional. Throws
/// QuenzaModelParserExcep or SceneParseUtilsExcep.
Texture parseTexture(const ParserState& state, const TiXmlElement& element);

/// All `texture` children of `parent`, in order.
Vector<Texture> parseTextures(const ParserState& state, const TiXmlElement& parent);

/// The one generator within `holder`: `uv`, `spherical` or `spherical_environment`. Throws likewise.
Ref<TexCoordGenerator> parseTexCoordGenerator(const TiXmlElement& holder);

} // namespace Quenza
