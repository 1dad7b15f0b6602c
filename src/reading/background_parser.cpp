// SPDX-License-Identifier: MIT
#include "reading/background_parser.h"

#include "reading/emission_parser.h"
#include "reading/material_parser.h"
#include "reading/parser_state.h"
#include "reading/spectrum_parser.h"
#include "reading/texture_parser.h"
#include "reading/xml_values.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/spectrum.h"
#include "scene/tex_coord_generator.h"
#include "scene/wavelength_dependent_param.h"

#include <array>
#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

Ref<SceneNodeBackgroundSettings> makeNode(const Ref<Material>& material) {
    Ref<SceneNodeBackgroundSettings> node = new SceneNodeBackgroundSettings;
    node->setName("Background Settings");
    node->background_material = material;
    return node;
}

Texture parseImage(const ParserState& state, const TiXmlElement& element) {
    static constexpr std::array NAMES{"texture", "path"};
    const TiXmlElement& image = xml::checkOnlyOneOf(element, NAMES);
    Texture texture;
    if (image.ValueStr() == "texture")
        texture = parseTexture(state, image);
    else
        texture.path = state.resolvePath(String(xml::elementText(image)));
    if (!texture.tex_coord_generation) {
        const Ref<SphericalEnvTexCoordGenerator> generator = new SphericalEnvTexCoordGenerator;
        generator->rotation = new MatrixRotation;
        texture.tex_coord_generation = generator;
    }
    return texture;
}

} // namespace

Ref<SceneNodeBackgroundSettings> parseBackgroundSettings(ParserState& state, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"uid", "name", "emission_scale", "background_material"};
    static constexpr const char* HOLDER_NAMES[] = {"material"};
    xml::checkChildrenAreInOnce(element, NAMES);
    Ref<SceneNodeBackgroundSettings> node = new SceneNodeBackgroundSettings;
    parseUIDAndName(element, *node);
    if (const TiXmlElement* const scale = xml::optionalChildElement(element, "emission_scale"))
        node->emission_scale = parseEmissionScale(state, *scale);
    if (const TiXmlElement* const holder = xml::optionalChildElement(element, "background_material")) {
        xml::checkChildrenAreInOnce(*holder, HOLDER_NAMES);
        node->background_material = parseMaterialBody(state, xml::childElement(*holder, "material"));
    }
    return node;
}

Ref<SceneNodeBackgroundSettings> parseBackground(ParserState&, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"spectrum"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const TiXmlElement* const spectrum = xml::optionalChildElement(element, "spectrum");
    if (!spectrum)
        throwParserError("No 'spectrum' element found in background element. ", element);
    const Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->base_emission = new ConstantWavelengthDependentParam(parseSpectrum(*spectrum));
    return makeNode(material);
}

Ref<SceneNodeBackgroundSettings> parseEnvironmentMap(ParserState& state, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"texture", "path", "layer"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->textures.push_back(parseImage(state, element));
    material->base_emission = new ConstantWavelengthDependentParam(new UniformSpectrum(1.0));
    material->emission = new TextureWavelengthDependentParam(0);
    material->layer = xml::parseOptionalInt(element, "layer", material->layer);
    return makeNode(material);
}

Ref<SceneNodeBackgroundSettings> parseSkylight(ParserState&, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {
        "sundir", "turbidity", "extra_atmospheric", "enable_sky", "sky_layer", "sun_layer", "model"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const Ref<SunSkyMaterial> sky = new SunSkyMaterial;
    sky->sundir = xml::parseOptionalVec3(element, "sundir", sky->sundir);
    sky->turbidity = xml::parseOptionalDouble(element, "turbidity", sky->turbidity);
    sky->extra_atmospheric = xml::parseOptionalBool(element, "extra_atmospheric", sky->extra_atmospheric);
    sky->enable_sky = xml::parseOptionalBool(element, "enable_sky", sky->enable_sky);
    sky->sky_layer = xml::parseOptionalInt(element, "sky_layer", sky->sky_layer);
    sky->sun_layer = xml::parseOptionalInt(element, "sun_layer", sky->sun_layer);
    sky->model = String(xml::parseOptionalString(element, "model", sky->model.toStdString()));
    return makeNode(sky);
}

} // namespace Quenza
