// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/emission.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// An `emission_scale`: `measure`, `value`, and `material_name` or `material_uid`. Names are those of the
/// mesh's materials, so they are resolved when the model is bound. Throws QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
Ref<EmissionScale> parseEmissionScale(const ParserState& state, const TiXmlElement& element);

/// An `ies_profile`: `path`, and the material as above.
Ref<IESProfile> parseIESProfile(const ParserState& state, const TiXmlElement& element);

} // namespace Quenza
