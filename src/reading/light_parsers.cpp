// SPDX-License-Identifier: MIT
#include "reading/light_parsers.h"

#include "foundation/string_utils.h"
#include "reading/emission_parser.h"
#include "reading/mesh_parser.h"
#include "reading/older_model_parser.h"
#include "reading/rotation_parser.h"
#include "reading/spectrum_parser.h"
#include "reading/texture_parser.h"
#include "reading/xml_values.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/exit_portal_material.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_model.h"
#include "scene/wavelength_dependent_param.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

Ref<SceneNodeMaterial> makeMaterialNode(const Ref<Material>& material, const String& name) {
    material->name = name;
    return new SceneNodeMaterial(material);
}

Ref<DiffuseMaterial> parseEmitter(const TiXmlElement& element) {
    const Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->base_emission =
        new ConstantWavelengthDependentParam(parseSpectrum(xml::childElement(element, "spectrum")));
    return material;
}

u32 parseMeasure(const TiXmlElement& element) {
    const TiXmlElement* const measure = xml::optionalChildElement(element, "measure");
    if (!measure)
        return EmissionScale::LUMINOUS_FLUX;
    const std::string word = xml::elementText(*measure);
    const auto* const found = std::find(std::begin(MEASURE_WORDS), std::end(MEASURE_WORDS), word);
    if (found == std::end(MEASURE_WORDS))
        throwParserError("No such measure '" + word + "'", element);
    return static_cast<u32>(found - std::begin(MEASURE_WORDS));
}

void parseEfficacyScale(const TiXmlElement& light, SceneNodeModel& model,
                        const Ref<SceneNodeMaterial>& material) {
    static constexpr const char* NAMES[] = {"measure", "value"};
    const TiXmlElement* const element = xml::optionalChildElement(light, "efficacy_scale");
    if (!element)
        return;
    xml::checkChildrenAreInOnce(*element, NAMES);
    const Ref<EmissionScale> scale = new EmissionScale;
    scale->measure = parseMeasure(*element);
    scale->value = xml::parseDouble(*element, "value");
    scale->material = material;
    model.emission_scales.push_back(scale);
}

void parseIESFile(const ParserState& state, const TiXmlElement& light, SceneNodeModel& model,
                  const Ref<SceneNodeMaterial>& material) {
    static constexpr std::array NAMES{"ies_profile", "path"};
    if (!xml::firstChildOf(light, {NAMES[0], NAMES[1]}))
        return;
    const TiXmlElement& element = xml::checkOnlyOneOf(light, NAMES);
    Ref<IESProfile> profile;
    if (element.ValueStr() == "ies_profile") {
        profile = parseIESProfile(state, element);
    } else {
        profile = new IESProfile;
        profile->path = state.resolvePath(String(xml::elementText(element)));
    }
    profile->material = material;
    model.ies_profiles.push_back(profile);
}

/// A rectangle about the origin whose front is its underside.
Ref<Mesh> makeRectangle(double width, double height) {
    const f32 x = f32(width / 2);
    const f32 y = f32(height / 2);
    const Ref<Mesh> mesh = new Mesh;
    mesh->addVertex({-x, -y, 0});
    mesh->addVertex({-x, y, 0});
    mesh->addVertex({x, y, 0});
    mesh->addVertex({x, -y, 0});
    constexpr u32 CORNERS[4] = {0, 1, 2, 3};
    constexpr u32 NO_UVS[4] = {0, 0, 0, 0};
    mesh->addQuad(CORNERS, NO_UVS, 0);
    mesh->endOfModel();
    return mesh;
}

Ref<SceneNodeModel> makeModel(const TiXmlElement& element, const String& name, const Ref<SceneNodeMesh>& mesh,
                              const Ref<SceneNodeMaterial>& material) {
    Ref<SceneNodeModel> model = new SceneNodeModel;
    model->setName(name);
    model->geometry = mesh;
    const u32 num_materials = std::max(mesh->mesh->num_materials_referenced, 1u);
    for (u32 i = 0; i < num_materials; ++i)
        model->materials.push_back(material);
    parsePlacement(element, *model);
    model->keyframes.push_back(makeStaticKeyFrame(xml::parseVec3(element, "pos")));
    return model;
}

} // namespace

void readRectangleLight(ParserState& state, const TiXmlElement& element, NodeList& nodes) {
    static constexpr const char* NAMES[] = {"pos", "width", "height", "spectrum", "efficacy_scale", "layer"};
    xml::checkChildrenAreInOnce(element, NAMES);
    String number = toString(state.num_rectangle_lights++);
    while (state.findMesh("Rectangle Light Mesh " + number.toStdString()))
        number = toString(state.num_rectangle_lights++);

    const Ref<DiffuseMaterial> emitter = parseEmitter(element);
    emitter->layer = xml::parseOptionalInt(element, "layer", emitter->layer);
    const Ref<SceneNodeMaterial> material = makeMaterialNode(emitter, "Rectangle Light Material " + number);
    const Ref<SceneNodeMesh> mesh = new SceneNodeMesh;
    mesh->setName("Rectangle Light Mesh " + number);
    mesh->mesh = makeRectangle(xml::parseDouble(element, "width"), xml::parseDouble(element, "height"));
    state.enterMesh(mesh, element);
    const Ref<SceneNodeModel> model = makeModel(element, "Rectangle Light Object", mesh, material);
    parseEfficacyScale(element, *model, material);
    nodes.push_back(material);
    nodes.push_back(mesh);
    nodes.push_back(model);
}

void readMeshLight(ParserState& state, const TiXmlElement& element, NodeList& nodes) {
    static constexpr const char* NAMES[] = {"pos",     "rotation",       "spectrum",
                                            "texture", "efficacy_scale", "mesh_name",
                                            "scale",   "ies_profile",    "path"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const Ref<SceneNodeMesh> mesh = state.findMesh(xml::parseOptionalString(element, "mesh_name", ""));
    if (!mesh)
        throwParserError("Invalid mesh when parsing meshlight.", element);
    requireLoadedMesh(state, *mesh);

    const Ref<DiffuseMaterial> emitter = parseEmitter(element);
    if (const TiXmlElement* const texture = xml::optionalChildElement(element, "texture")) {
        emitter->textures.push_back(parseTexture(state, *texture));
        emitter->emission = new TextureWavelengthDependentParam(0);
    }
    const Ref<SceneNodeMaterial> material = makeMaterialNode(emitter, "Mesh Light Material");
    const Ref<SceneNodeModel> model = makeModel(element, "Mesh Light Object", mesh, material);
    parseEfficacyScale(element, *model, material);
    parseIESFile(state, element, *model, material);
    nodes.push_back(material);
    nodes.push_back(model);
}

void readExitPortal(ParserState& state, const TiXmlElement& element, NodeList& nodes) {
    static constexpr const char* NAMES[] = {"pos", "rotation", "mesh_name", "scale"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const Ref<SceneNodeMesh> mesh = parseMeshReference(state, element);
    requireLoadedMesh(state, *mesh);
    const Ref<SceneNodeMaterial> material = makeMaterialNode(new ExitPortalMaterial, "Exit Portal Material");
    nodes.push_back(material);
    nodes.push_back(makeModel(element, "Exit Portal Object", mesh, material));
}

} // namespace Quenza
