// SPDX-License-Identifier: MIT
#include "reading/medium_parser.h"

#include "reading/element_table.h"
#include "reading/parameter_parser.h"
#include "reading/parser_state.h"
#include "reading/spectrum_parser.h"
#include "reading/xml_values.h"
#include "scene/medium.h"
#include "scene/phase_function.h"
#include "scene/volume_param.h"

#include <array>
#include <cstring>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

Ref<PhaseFunction> parsePhaseFunction(const ParserState& state, const TiXmlElement& holder) {
    static constexpr std::array NAMES{"uniform", "henyey_greenstein"};
    const TiXmlElement& element = checkOnlyOneOf(holder, NAMES);
    checkChildrenAreInOnce(holder, NAMES);
    if (std::strcmp(element.Value(), "uniform") == 0) {
        checkChildrenAreIn(element, {});
        return new UniformPhaseFunction;
    }
    checkChildrenAreInOnce(element, std::array{"g_spectrum"});
    Ref<HenyeyGreensteinPhaseFunction> function = new HenyeyGreensteinPhaseFunction;
    function->g_spectrum = parseVolumeParam(state, childElement(element, "g_spectrum"));
    return function;
}

Ref<SubsurfaceScattering> parseSubsurfaceScattering(const ParserState& state, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"scattering_coefficient", "phase_function"});
    Ref<SubsurfaceScattering> scattering = new SubsurfaceScattering;
    if (const TiXmlElement* const coefficient = optionalChildElement(element, "scattering_coefficient"))
        scattering->scattering_coefficient = parseVolumeParam(state, *coefficient);
    if (const TiXmlElement* const function = optionalChildElement(element, "phase_function"))
        scattering->phase_function = parsePhaseFunction(state, *function);
    return scattering;
}

/// `absorption_coefficient`, or the older `absorption_coefficient_spectrum`, which can only be constant.
Ref<VolumeParam> parseAbsorption(const ParserState& state, const TiXmlElement& element) {
    static constexpr std::array NAMES{"absorption_coefficient", "absorption_coefficient_spectrum"};
    if (!firstChildOf(element, {NAMES[0], NAMES[1]}))
        return nullptr;
    const TiXmlElement& absorption = checkOnlyOneOf(element, NAMES);
    if (std::strcmp(absorption.Value(), NAMES[0]) == 0)
        return parseVolumeParam(state, absorption);
    return new ConstantVolumeParam(parseSpectrum(absorption));
}

Ref<Medium> parseBasic(const ParserState& state, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"ior", "cauchy_b_coeff", "step_size", "absorption_coefficient",
                                               "absorption_coefficient_spectrum", "subsurface_scattering"});
    Ref<BasicMedium> medium = new BasicMedium;
    medium->ior = parseOptionalDouble(element, "ior", medium->ior);
    medium->cauchy_b_coeff = parseOptionalDouble(element, "cauchy_b_coeff", medium->cauchy_b_coeff);
    medium->step_size = parseOptionalDouble(element, "step_size", medium->step_size);
    medium->absorption_coefficient = parseAbsorption(state, element);
    if (const TiXmlElement* const scattering = optionalChildElement(element, "subsurface_scattering"))
        medium->subsurface_scattering = parseSubsurfaceScattering(state, *scattering);
    return medium;
}

Ref<Medium> parseDermis(const ParserState&, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"hemoglobin_fraction"});
    Ref<Dermis> medium = new Dermis;
    medium->hemoglobin_fraction =
        parseOptionalDouble(element, "hemoglobin_fraction", medium->hemoglobin_fraction);
    return medium;
}

Ref<Medium> parseEpidermis(const ParserState&, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"melanin_fraction", "melanin_type_blend"});
    Ref<Epidermis> medium = new Epidermis;
    medium->melanin_fraction = parseOptionalDouble(element, "melanin_fraction", medium->melanin_fraction);
    medium->melanin_type_blend =
        parseOptionalDouble(element, "melanin_type_blend", medium->melanin_type_blend);
    return medium;
}

Ref<Medium> parseAtmosphere(const ParserState&, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"center", "turbidity"});
    Ref<Atmosphere> medium = new Atmosphere;
    medium->center = parseOptionalVec3(element, "center", medium->center);
    medium->turbidity = parseOptionalDouble(element, "turbidity", medium->turbidity);
    return medium;
}

struct MediumReader {
    const char* element;
    Ref<Medium> (*parse)(const ParserState& state, const TiXmlElement& element);
};

constexpr MediumReader MEDIUM_READERS[] = {
    {"basic", parseBasic},
    {"dermis", parseDermis},
    {"epidermis", parseEpidermis},
    {"atmosphere", parseAtmosphere},
};

/// The one type element below `element`.
Ref<Medium> parseMediumBody(const ParserState& state, const TiXmlElement& element) {
    const TiXmlElement* const type_element = firstChildInTable(MEDIUM_READERS, element);
    if (!type_element)
        throwParserError("Medium type not found. ", element);
    checkOnlyOneOf(element, elementNames(MEDIUM_READERS));
    return rowOf(MEDIUM_READERS, *type_element)->parse(state, *type_element);
}

} // namespace

Ref<SceneNodeMedium> parseMedium(ParserState& state, const TiXmlElement& element) {
    Ref<SceneNodeMedium> node = new SceneNodeMedium(parseMediumBody(state, element));
    checkChildrenAreInOnce(
        element, std::array{"uid", "name", "precedence", "basic", "dermis", "epidermis", "atmosphere"});
    node->medium->precedence = parseOptionalInt(element, "precedence", node->medium->precedence);
    parseUIDAndName(element, *node);
    if (optionalChildElement(element, "name"))
        state.media[node->getName().toStdString()] = node;
    return node;
}

} // namespace Quenza
