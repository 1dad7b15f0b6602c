// SPDX-License-Identifier: MIT
#include "reading/older_material_forms.h"

#include "foundation/types.h"
#include "reading/parameter_parser.h"
#include "reading/parser_state.h"
#include "reading/spectrum_parser.h"
#include "reading/texture_parser.h"
#include "reading/xml_values.h"
#include "scene/displacement_param.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

/// Forms of one parameter stand together.
constexpr OlderForm OLDER_FORMS[] = {
    {"albedo", "colour", OlderForm::COLOUR},
    {"albedo", "albedo_spectrum", OlderForm::SPECTRUM},
    {"albedo", "albedo_texture", OlderForm::TEXTURE},
    {"diffuse_albedo", "colour", OlderForm::COLOUR},
    {"diffuse_albedo", "albedo_spectrum", OlderForm::SPECTRUM},
    {"diffuse_albedo", "albedo_texture", OlderForm::TEXTURE},
    {"bump", "bump_map", OlderForm::TEXTURE},
    {"displacement", "displacement_map", OlderForm::TEXTURE},
    {"blend", "blend_factor", OlderForm::NUMBER},
    {"blend", "blend_map", OlderForm::TEXTURE},
};

/// Index of the texture that an element names or brings along.
i32 parseTextureForm(const ParserState& state, const TiXmlElement& element, Material& material) {
    if (optionalChildElement(element, "texture_index")) {
        checkChildrenAreInOnce(element, std::array{"texture_index"});
        return parseTextureIndex(element, material.textures.size());
    }
    material.textures.push_back(parseTexture(state, element));
    return static_cast<i32>(material.textures.size() - 1);
}

} // namespace

std::span<const OlderForm> olderFormsOf(const char* element) {
    const auto belongs = [element](const OlderForm& form) {
        return std::strcmp(form.parameter, element) == 0;
    };
    const OlderForm* const first = std::find_if(std::begin(OLDER_FORMS), std::end(OLDER_FORMS), belongs);
    return {first, std::find_if_not(first, std::end(OLDER_FORMS), belongs)};
}

void parseOlderForm(const ParserState& state, const TiXmlElement& element, OlderForm::Content content,
                    Material& material, Ref<WavelengthDependentParam>& param) {
    if (content == OlderForm::COLOUR)
        param = new ConstantWavelengthDependentParam(
            new RGBSpectrum(parseVec3Text(element), RGBSpectrum().gamma));
    else if (content == OlderForm::SPECTRUM)
        param = new ConstantWavelengthDependentParam(parseSpectrum(element));
    else
        param = new TextureWavelengthDependentParam(parseTextureForm(state, element, material));
}

void parseOlderForm(const ParserState& state, const TiXmlElement& element, OlderForm::Content content,
                    Material& material, Ref<DisplacementParam>& param) {
    if (content == OlderForm::NUMBER)
        param = new ConstantDisplacementParam(parseDoubleText(element));
    else
        param = new TextureDisplacementParam(parseTextureForm(state, element, material));
}

} // namespace Quenza
