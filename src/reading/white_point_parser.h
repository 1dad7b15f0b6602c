// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/render_settings_parts.h"

class TiXmlElement;

namespace Quenza {

/// Reads a `white_point`: the child `chromaticity_coordinates` with x and y, or the two numbers as the text
/// of the element itself, or the name of an illuminant (see whitePointFromName). Throws
/// QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<WhitePoint> parseWhitePoint(const TiXmlElement& element);

} // namespace Quenza
