// SPDX-License-Identifier: MIT
#include "reading/mesh_parser.h"

#include "foundation/file_utils.h"
#include "reading/element_table.h"
#include "reading/embedded_mesh.h"
#include "reading/model_loader.h"
#include "reading/parser_state.h"
#include "reading/xml_values.h"

#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

using Child = const TiXmlElement&;

/// What the children of a `mesh` set, but for the source of its data. A later child of the same name counts:
/// the writer has one of them twice.
struct OptionReader {
    const char* element;
    void (*read)(SceneNodeMesh& node, Child child);
};

template <double SceneNodeMesh::*FIELD>
void readDouble(SceneNodeMesh& node, Child child) {
    node.*FIELD = xml::parseDoubleText(child);
}

template <bool SceneNodeMesh::*FIELD>
void readBool(SceneNodeMesh& node, Child child) {
    node.*FIELD = xml::parseBoolText(child);
}

constexpr OptionReader OPTION_READERS[] = {
    {"uid", [](SceneNodeMesh& node, Child child) { node.setUID(SceneNodeUID(xml::parseUIntText(child))); }},
    {"name", [](SceneNodeMesh& node, Child child) { node.setName(String(xml::elementText(child))); }},
    {"max_num_subdivisions",
     [](SceneNodeMesh& node, Child child) { node.max_num_subdivisions = xml::parseIntText(child); }},
    {"subdivide_pixel_threshold", readDouble<&SceneNodeMesh::subdivide_pixel_threshold>},
    {"subdivide_curvature_threshold", readDouble<&SceneNodeMesh::subdivide_curvature_threshold>},
    {"displacement_error_threshold", readDouble<&SceneNodeMesh::displacement_error_threshold>},
    {"view_dependent_subdivision", readBool<&SceneNodeMesh::view_dependent_subdivision>},
    {"subdivision_smoothing", readBool<&SceneNodeMesh::subdivision_smoothing>},
    {"normal_smoothing", readBool<&SceneNodeMesh::normal_smoothing>},
    {"merge_vertices_with_same_pos_and_normal",
     readBool<&SceneNodeMesh::merge_vertices_with_same_pos_and_normal>},
    {"wrap_u", readBool<&SceneNodeMesh::wrap_u>},
    {"wrap_v", readBool<&SceneNodeMesh::wrap_v>},
    {"scale", readDouble<&SceneNodeMesh::scale>},
};

template <void (*READ)(Child, Mesh&, double)>
void readEmbedded(const ParserState&, Child child, SceneNodeMesh& node) {
    const Ref<Mesh> mesh = new Mesh;
    READ(child, *mesh, node.scale);
    node.mesh = mesh;
    node.scale_in_mesh = node.scale;
}

void readExternal(const ParserState& state, Child child, SceneNodeMesh& node) {
    static constexpr const char* NAMES[] = {"path"};
    xml::checkChildrenAreInOnce(child, NAMES);
    node.path = state.resolvePath(String(xml::parseString(child, "path")));
}

struct SourceReader {
    const char* element;
    void (*read)(const ParserState& state, Child child, SceneNodeMesh& node);
};

constexpr SourceReader SOURCE_READERS[] = {
    {"embedded", readEmbedded<readEmbeddedMesh>},
    {"embedded_2", readEmbedded<readEmbedded2Mesh>},
    {"external", readExternal},
};

} // namespace

Ref<SceneNodeMesh> parseMesh(ParserState& state, const TiXmlElement& element) {
    static constexpr auto SOURCES = elementNames(SOURCE_READERS);
    const Ref<SceneNodeMesh> node = new SceneNodeMesh;
    bool has_source = false;
    for (const TiXmlElement* child = element.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        if (const OptionReader* const option = rowOf(OPTION_READERS, *child))
            option->read(*node, *child);
        else if (rowOf(SOURCE_READERS, *child))
            has_source = true;
        else
            throwParserError("Found unexpected element '" + child->ValueStr() + "'", *child);
    }
    if (!has_source)
        throwParserError("Mesh not created. (missing 'embedded', 'embedded_2' or 'external' element) ",
                         element);
    const TiXmlElement& source = xml::checkOnlyOneOf(element, SOURCES);
    rowOf(SOURCE_READERS, source)->read(state, source, *node); // scale may stand behind it
    // Only then: nodes name themselves by a counter of the process, which must not meet names of the file.
    if (xml::optionalChildElement(element, "name"))
        state.enterMesh(node, element);
    return node;
}

const Mesh& requireLoadedMesh(const ParserState& state, SceneNodeMesh& node) {
    if (!node.mesh) {
        const Ref<Mesh> mesh = new Mesh;
        ModelLoader().streamModel(FileUtils::join(state.scene_dir, node.path), *mesh, node.scale);
        node.mesh = mesh;
        node.scale_in_mesh = node.scale;
    }
    return *node.mesh;
}

} // namespace Quenza
