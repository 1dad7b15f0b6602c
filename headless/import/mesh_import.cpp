// SPDX-License-Identifier: MIT
#include "headless/import/mesh_import.h"

#include "headless/import/mesh_arrays.h"
#include "headless/model/node_types.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace headless {

namespace {

bool isFinite(const Vector& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

void addPhongTag(PolygonNode& object, const MeshArrays& arrays, std::span<const aiMesh* const> meshes) {
    if (std::none_of(meshes.begin(), meshes.end(), [](const aiMesh* mesh) { return mesh->HasNormals(); })) {
        return;
    }
    const EdgeShading shading = edgeShading(arrays, meshes);
    if (!shading.anySmooth) {
        return;
    }
    Tag& tag = object.appendTag(createTag(Tphong));
    // The broken edges say all; an angle would smooth too little or too much.
    tag.data.SetBool(PHONGTAG_PHONG_ANGLELIMIT, false);
    tag.data.SetBool(PHONGTAG_PHONG_USEEDGES, true);
    for (const int32_t edge : shading.broken) {
        object.brokenEdges.Select(edge);
    }
}

Vector textureCoordinate(const aiMesh& mesh, unsigned channel, uint32_t vertex) {
    if (!mesh.HasTextureCoords(channel)) {
        return {};
    }
    const aiVector3D& uvw = mesh.mTextureCoords[channel][vertex];
    const Vector coordinate(uvw.x, 1.0f - uvw.y, 0.0f);
    return isFinite(coordinate) ? coordinate : Vector();
}

void addUVWTags(PolygonNode& object, const MeshArrays& arrays, std::span<const aiMesh* const> meshes) {
    for (unsigned channel = 0; channel < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++channel) {
        if (std::none_of(meshes.begin(), meshes.end(),
                         [channel](const aiMesh* mesh) { return mesh->HasTextureCoords(channel); })) {
            return;
        }
        auto tag = createTag(Tuvw);
        auto& records = static_cast<UVWTagNode&>(*tag).records;
        records.reserve(arrays.corners.size());
        for (const auto& corners : arrays.corners) {
            const auto at = [&](size_t corner) {
                return textureCoordinate(*meshes[corners[corner].mesh], channel, corners[corner].vertex);
            };
            records.push_back({at(0), at(1), at(2), at(3)});
        }
        object.appendTag(std::move(tag));
    }
}

/// A name for the material's selection that no other on the object has.
std::string selectionName(const std::string& materialName, std::set<std::string>& taken) {
    const std::string base = materialName.empty() ? "Material" : materialName;
    std::string name = base;
    for (int count = 2; !taken.insert(name).second; ++count) {
        name = base + " " + std::to_string(count);
    }
    return name;
}

std::unique_ptr<Tag> makeTextureTag(Material* material, const std::string& selection) {
    auto tag = createTag(Ttexture);
    auto& texture = static_cast<TextureTagNode&>(*tag);
    texture.setMaterial(material);
    if (!selection.empty()) {
        texture.data.SetString(TEXTURETAG_RESTRICTION, String(selection));
    }
    return tag;
}

void addMaterials(PolygonNode& object, const MeshArrays& arrays, std::span<const aiMesh* const> meshes,
                  std::span<Material* const> materials) {
    std::vector<unsigned> used;
    for (const aiMesh* const mesh : meshes) {
        if (std::find(used.begin(), used.end(), mesh->mMaterialIndex) == used.end()) {
            used.push_back(mesh->mMaterialIndex);
        }
    }
    std::set<std::string> names;
    std::vector<std::unique_ptr<Tag>> textureTags;
    for (const unsigned index : used) {
        Material* const material = index < materials.size() ? materials[index] : nullptr;
        if (!material) {
            continue;
        }
        std::string selection;
        if (used.size() > 1) {
            selection = selectionName(material->name, names);
            auto& tag = static_cast<SelectionTagNode&>(object.appendTag(createTag(Tpolygonselection)));
            tag.name = selection;
            for (size_t i = 0; i < meshes.size(); ++i) {
                if (meshes[i]->mMaterialIndex == index) {
                    tag.selection.SelectRange(static_cast<int32_t>(arrays.firstPolygon[i]),
                                              static_cast<int32_t>(arrays.firstPolygon[i + 1]) - 1);
                }
            }
        }
        textureTags.push_back(makeTextureTag(material, selection));
    }
    for (std::unique_ptr<Tag>& tag : textureTags) {
        object.appendTag(std::move(tag));
    }
}

} // namespace

bool hasPolygons(const aiMesh& mesh) {
    return mesh.mFaces && std::any_of(mesh.mFaces, mesh.mFaces + mesh.mNumFaces,
                                      [](const aiFace& face) { return face.mNumIndices >= 3; });
}

std::string faultOf(const aiMesh& mesh, const ModelSpace& space) {
    // Edges are numbered polygon * 4 + edge.
    constexpr unsigned MAX_COUNT = INT32_MAX / 4;
    if (mesh.mNumVertices > MAX_COUNT || mesh.mNumFaces > MAX_COUNT) {
        return "it is too large";
    }
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const aiFace& face = mesh.mFaces[i];
        for (unsigned corner = 0; corner < face.mNumIndices; ++corner) {
            const unsigned vertex = face.mIndices[corner];
            if (vertex >= mesh.mNumVertices || !mesh.mVertices) {
                return "face " + std::to_string(i) + " has point " + std::to_string(vertex) + " of " +
                       std::to_string(mesh.mNumVertices);
            }
            if (!isFinite(space.point(mesh.mVertices[vertex]))) {
                return "the coordinates of point " + std::to_string(vertex) + " are no finite numbers";
            }
        }
    }
    return {};
}

std::unique_ptr<PolygonNode> importMeshes(std::span<const aiMesh* const> meshes, const ModelSpace& space,
                                          std::span<Material* const> materials) {
    MeshArrays arrays = collectPolygons(meshes, space);
    std::unique_ptr<PolygonNode> object = createPolygons(0, 0);
    addPhongTag(*object, arrays, meshes);
    addUVWTags(*object, arrays, meshes);
    addMaterials(*object, arrays, meshes, materials);
    object->points = std::move(arrays.points);
    object->polygons = std::move(arrays.polygons);
    return object;
}

} // namespace headless
