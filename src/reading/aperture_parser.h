// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "reading/parser_state.h"
#include "scene/aperture_shape.h"

class TiXmlElement;

namespace Quenza {

/// Reads an `aperture_shape`: one of `circular`, `generated` and `image`. Throws QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
Ref<ApertureShape> parseApertureShape(const ParserState& state, const TiXmlElement& element);

} // namespace Quenza
