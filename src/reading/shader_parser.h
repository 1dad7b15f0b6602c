// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/shader_info.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// The shader whose params, includes, textures and source are the children of `element`; null without any.
/// `flag` is a further child that the caller reads, or null. Throws QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
Ref<ShaderInfo> parseShaderInfo(const ParserState& state, const TiXmlElement& element,
                                const char* flag = nullptr);

} // namespace Quenza
