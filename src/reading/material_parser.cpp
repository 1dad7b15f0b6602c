// SPDX-License-Identifier: MIT
#include "reading/material_parser.h"

#include "reading/element_table.h"
#include "reading/material_reader.h"
#include "reading/parameter_parser.h"
#include "reading/parser_state.h"
#include "reading/shader_parser.h"
#include "reading/texture_parser.h"
#include "reading/xml_values.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/coating_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/double_sided_thin_material.h"
#include "scene/materials/exit_portal_material.h"
#include "scene/materials/glossy_transparent.h"
#include "scene/materials/null_material.h"
#include "scene/materials/oren_nayar_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/plugin_material.h"
#include "scene/materials/specular_material.h"
#include "scene/materials/sum_material.h"
#include "scene/materials/sun_sky_material.h"

#include <array>
#include <iterator>
#include <string>
#include <tinyxml.h>
#include <vector>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

template <class M>
Ref<Material> create() {
    return new M;
}

/// Appends the entries `mat` of a sum.
void readSumEntries(const ParserState& state, const TiXmlElement& element, Material& material) {
    SumMaterial& sum = static_cast<SumMaterial&>(material);
    for (const TiXmlElement* entry = element.FirstChildElement("mat"); entry;
         entry = entry->NextSiblingElement("mat")) {
        checkChildrenAreInOnce(*entry, std::array{"mat_uid", "mat_name", "weight"});
        Ref<SceneNodeMaterial> node;
        SceneNodeUID uid;
        MaterialReader(state, *entry, material).material({"mat_uid", "mat_name"}, node, uid);
        sum.materials.push_back(node);
        sum.mat_uids.push_back(uid);
        sum.weights.push_back(
            parseWavelengthIndependentParam(state, childElement(*entry, "weight"), sum.textures.size()));
    }
}

struct MaterialType {
    const char* element;
    Ref<Material> (*create)(); ///< Null where this library has no class.
    /// Children beside the fields that may repeat; null without any.
    const char* entry = nullptr;
    void (*readEntries)(const ParserState& state, const TiXmlElement& element, Material& material) = nullptr;
};

constexpr MaterialType MATERIAL_TYPES[] = {
    {"diffuse", create<DiffuseMaterial>},
    {"diffuse_transmitter", create<DiffuseTransmitter>},
    {"phong", create<PhongMaterial>},
    {"specular", create<SpecularMaterial>},
    {"null_material", create<NullMaterial>},
    {"blend", create<BlendMaterial>},
    {"glossy_transparent", create<GlossyTransparent>},
    {"fast_sss", nullptr},
    {"ABg", nullptr},
    {"oren_nayar", create<OrenNayarMaterial>},
    {"measured", nullptr},
    {"exit_portal", create<ExitPortalMaterial>},
    {"sum", create<SumMaterial>, "mat", readSumEntries},
    {"sunsky", create<SunSkyMaterial>},
    // The params are for the renderer's plug-in; the class has no place for them.
    {"plugin", create<PluginMaterial>, "param"},
    {"coating", create<CoatingMaterial>},
    {"double_sided_thin", create<DoubleSidedThinMaterial>},
};

void checkTypeElement(const TiXmlElement& element, const MaterialType& type, Material& material) {
    MaterialElementNames fields;
    material.presentFields(fields);
    fields.names.push_back("texture");
    fields.names.push_back("shared_shader_info");
    if (type.entry)
        fields.names.push_back(type.entry);
    checkChildrenAreIn(element, fields.names);
}

void readSharedShader(const ParserState& state, const TiXmlElement& parent, Material& material) {
    if (const TiXmlElement* const shader = optionalChildElement(parent, "shared_shader_info"))
        material.shared_shader_info = parseShaderInfo(state, *shader);
}

Ref<Material> parseTypeElement(const ParserState& state, const TiXmlElement& element) {
    const MaterialType& type = *rowOf(MATERIAL_TYPES, element);
    if (!type.create)
        throwParserError(std::string("Material type '") + type.element + "' is not supported.", element);
    const Ref<Material> material = type.create();
    checkTypeElement(element, type, *material);
    material->textures = parseTextures(state, element);
    readSharedShader(state, element, *material);
    MaterialReader reader(state, element, *material);
    material->presentFields(reader);
    if (type.readEntries)
        type.readEntries(state, element, *material);
    return material;
}

/// The children of `material` beside the type element; `scatter_uids` may repeat.
constexpr const char* COMMON_ELEMENTS[] = {"uid",          "name",          "shared_shader_info",
                                           "scatter_uids", "backface_emit", "shadow_catcher"};

void checkMaterialElement(const TiXmlElement& element) {
    std::vector<const char*> names(std::begin(COMMON_ELEMENTS), std::end(COMMON_ELEMENTS));
    for (const char* const name : elementNames(MATERIAL_TYPES))
        names.push_back(name);
    checkChildrenAreIn(element, names);
}

Vector<SceneNodeUID> parseScatterUIDs(const TiXmlElement& element) {
    Vector<SceneNodeUID> uids;
    for (const TiXmlElement* scatter = element.FirstChildElement("scatter_uids"); scatter;
         scatter = scatter->NextSiblingElement("scatter_uids")) {
        checkChildrenAreIn(*scatter, std::array{"uid"});
        for (const TiXmlElement* uid = scatter->FirstChildElement(); uid; uid = uid->NextSiblingElement())
            uids.push_back(SceneNodeUID(parseUIntText(*uid)));
    }
    return uids;
}

} // namespace

Ref<Material> parseMaterialBody(const ParserState& state, const TiXmlElement& element) {
    checkMaterialElement(element);
    if (!firstChildInTable(MATERIAL_TYPES, element))
        throwParserError("no material element of any type found ", element);
    const TiXmlElement& type_element = checkOnlyOneOf(element, elementNames(MATERIAL_TYPES));
    const Ref<Material> material = parseTypeElement(state, type_element);
    material->name = parseOptionalString(element, "name", "");
    readSharedShader(state, element, *material);
    material->backface_emit = parseOptionalBool(element, "backface_emit", false);
    material->shadow_catcher = parseOptionalBool(element, "shadow_catcher", false);
    return material;
}

Ref<SceneNodeMaterial> parseMaterial(ParserState& state, const TiXmlElement& element) {
    const Ref<SceneNodeMaterial> node = new SceneNodeMaterial(parseMaterialBody(state, element));
    parseUIDAndName(element, *node);
    node->scatter_uids = parseScatterUIDs(element);
    if (optionalChildElement(element, "name"))
        state.materials[node->getName().toStdString()] = node;
    return node;
}

} // namespace Quenza
