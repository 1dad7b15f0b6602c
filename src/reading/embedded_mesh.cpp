// SPDX-License-Identifier: MIT
#include "reading/embedded_mesh.h"

#include "reading/embedded_mesh_attributes.h"
#include "reading/xml_values.h"

#include <algorithm>
#include <string_view>
#include <tinyxml.h>
#include <unordered_map>

namespace Quenza {

namespace {

/// Names of children, as they are looked at in all the passes.
constexpr std::string_view VERTEX = "vertex";
constexpr std::string_view UVS = "uvs";

template <class Action>
void forEachChild(const TiXmlElement& element, Action&& action) {
    for (const TiXmlElement* child = element.FirstChildElement(); child; child = child->NextSiblingElement())
        action(*child, child->ValueStr());
}

/// Adds all vertices and UV entries; the number of UV sets must be known before the first entry.
void addVertices(const TiXmlElement& element, Mesh& mesh, double scale) {
    u32 sets = 0;
    bool vertices_have_uvs = false;
    forEachChild(element, [&](const TiXmlElement& child, const std::string& name) {
        const u32 child_sets = name == VERTEX || name == UVS ? EmbeddedMesh::numUVSets(child) : 0;
        sets = std::max(sets, child_sets);
        vertices_have_uvs = vertices_have_uvs || (name == VERTEX && child_sets > 0);
    });
    mesh.setMaxNumTexcoordSets(sets);
    forEachChild(element, [&](const TiXmlElement& child, const std::string& name) {
        if (name == VERTEX)
            EmbeddedMesh::addVertex(child, mesh, scale);
        if (name == UVS || (name == VERTEX && vertices_have_uvs))
            EmbeddedMesh::addUVEntry(child, mesh);
    });
}

[[noreturn]] void failUnexpected(const TiXmlElement& child) {
    EmbeddedMesh::fail("Unexpected element '" + child.ValueStr() + "'", child);
}

/// Gives each name its index in the mesh's used materials.
class MaterialIndices {
public:
    explicit MaterialIndices(Mesh& mesh) : mesh_(mesh) {}

    u32 indexOf(const std::string& name) {
        const auto [entry, is_new] = indices_.try_emplace(name, u32(mesh_.used_materials.size()));
        if (is_new)
            mesh_.used_materials.push_back(name);
        return entry->second;
    }

private:
    Mesh& mesh_;
    std::unordered_map<std::string, u32> indices_;
};

void addTri(const TiXmlElement& tri, Mesh& mesh, u32 material_index) {
    const std::string text = SceneParseUtils::elementText(tri);
    if (text.empty())
        EmbeddedMesh::fail("Found 'tri' element with no text child.", tri);
    u32 v[3];
    if (!EmbeddedMesh::parseIndices(text.c_str(), v, 3))
        EmbeddedMesh::fail("syntax error while parsing 'tri' element.", tri);
    const u32 none[3] = {0, 0, 0};
    mesh.addTriangle(v, mesh.num_uv_mappings != 0 ? v : none, material_index);
}

void addTriangleSet(const TiXmlElement& set, Mesh& mesh, MaterialIndices& materials) {
    const u32 material_index = materials.indexOf(SceneParseUtils::parseString(set, "material_name"));
    forEachChild(set, [&](const TiXmlElement& child, const std::string& name) {
        if (name == "tri")
            addTri(child, mesh, material_index);
        else if (name != "material_name")
            failUnexpected(child);
    });
}

void addTriangle(const TiXmlElement& element, Mesh& mesh) {
    const EmbeddedMesh::Face face = EmbeddedMesh::readFace(element, 3, mesh);
    mesh.addTriangle(face.vertex_indices, face.uv_indices, face.material_index);
}

void addQuad(const TiXmlElement& element, Mesh& mesh) {
    const EmbeddedMesh::Face face = EmbeddedMesh::readFace(element, 4, mesh);
    mesh.addQuad(face.vertex_indices, face.uv_indices, face.material_index);
}

} // namespace

void readEmbeddedMesh(const TiXmlElement& element, Mesh& mesh, double scale) {
    addVertices(element, mesh, scale);
    MaterialIndices materials(mesh);
    forEachChild(element, [&](const TiXmlElement& child, const std::string& name) {
        if (name == "triangle_set")
            addTriangleSet(child, mesh, materials);
        else if (name != VERTEX)
            failUnexpected(child);
    });
    mesh.endOfModel();
}

void readEmbedded2Mesh(const TiXmlElement& element, Mesh& mesh, double scale) {
    addVertices(element, mesh, scale);
    MaterialIndices materials(mesh);
    forEachChild(element, [&](const TiXmlElement& child, const std::string& name) {
        if (name == "triangle")
            addTriangle(child, mesh);
        else if (name == "quad")
            addQuad(child, mesh);
        else if (name == "used_material_name")
            materials.indexOf(SceneParseUtils::elementText(child));
        else if (name != VERTEX && name != UVS && name != "expose_uv_set")
            failUnexpected(child);
    });
    mesh.endOfModel();
}

} // namespace Quenza
