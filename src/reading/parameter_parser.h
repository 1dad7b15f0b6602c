// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/param.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// The parameter within `holder`, in one of the forms of its family: `constant`, `texture` or `shader`; a
/// vector has no constant form. `num_textures` is how many textures the material has. Throw
/// QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<WavelengthDependentParam> parseWavelengthDependentParam(const ParserState& state,
                                                            const TiXmlElement& holder, u64 num_textures);
Ref<WavelengthIndependentParam> parseWavelengthIndependentParam(const ParserState& state,
                                                                const TiXmlElement& holder, u64 num_textures);
Ref<DisplacementParam> parseDisplacementParam(const ParserState& state, const TiXmlElement& holder,
                                              u64 num_textures);
Ref<Vec3Param> parseVec3Param(const ParserState& state, const TiXmlElement& holder, u64 num_textures);

/// Of a medium: `constant`, `shader` or `voxel`.
Ref<VolumeParam> parseVolumeParam(const ParserState& state, const TiXmlElement& holder);

/// The child `texture_index` of `element`, which must be below `num_textures`.
i32 parseTextureIndex(const TiXmlElement& element, u64 num_textures);

} // namespace Quenza
