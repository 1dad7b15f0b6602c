// SPDX-License-Identifier: MIT
#include "reading/emission_parser.h"

#include "foundation/types.h"
#include "reading/parser_state.h"
#include "reading/xml_values.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

/// Reads `material_name` or `material_uid`; neither leaves the emission without a material.
template <class Emission>
void parseEmitter(const TiXmlElement& element, Emission& emission) {
    static constexpr std::array NAMES{"material_name", "material_uid"};
    if (!firstChildOf(element, {NAMES[0], NAMES[1]}))
        return;
    checkOnlyOneOf(element, NAMES);
    emission.material_name = parseOptionalString(element, "material_name", "");
    emission.material_uid =
        SceneNodeUID(parseOptionalUInt(element, "material_uid", SceneNodeUID::INVALID_VALUE));
}

} // namespace

Ref<EmissionScale> parseEmissionScale(const ParserState&, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"measure", "value", "material_name", "material_uid"});
    Ref<EmissionScale> scale = new EmissionScale;
    const std::string word = parseString(element, "measure");
    const auto* const found = std::find(std::begin(MEASURE_WORDS), std::end(MEASURE_WORDS), word);
    if (found == std::end(MEASURE_WORDS))
        throwParserError("No such measure '" + word + "'", element);
    scale->measure = static_cast<u32>(found - std::begin(MEASURE_WORDS));
    scale->value = parseDouble(element, "value");
    parseEmitter(element, *scale);
    return scale;
}

Ref<IESProfile> parseIESProfile(const ParserState& state, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"path", "material_name", "material_uid"});
    Ref<IESProfile> profile = new IESProfile;
    profile->path = state.resolvePath(parseString(element, "path"));
    parseEmitter(element, *profile);
    return profile;
}

} // namespace Quenza
