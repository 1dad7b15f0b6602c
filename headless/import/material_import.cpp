// SPDX-License-Identifier: MIT
#include "headless/import/material_import.h"

#include "foundation/file_utils.h"
#include "headless/import/model_text.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace headless {

namespace {

std::string findTexture(std::string path, const std::string& modelFile) {
    std::replace(path.begin(), path.end(), '\\', '/');
    const Quenza::String folder = Quenza::FileUtils::getDirectory(modelFile);
    // Files often name a place on the computer of whoever made them: the texture then lies beside the model.
    const size_t lastSlash = path.rfind('/');
    for (const std::string& candidate :
         {path, lastSlash == std::string::npos ? path : path.substr(lastSlash + 1)}) {
        const Quenza::String joined = Quenza::FileUtils::join(folder, candidate);
        if (Quenza::FileUtils::fileExists(joined)) {
            return std::filesystem::path(joined.view()).lexically_normal().string();
        }
    }
    return {};
}

aiString colourTexture(const aiMaterial& source) {
    aiString path;
    for (const aiTextureType type : {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE}) {
        if (source.GetTexture(type, 0, &path) == aiReturn_SUCCESS) {
            break;
        }
    }
    return path;
}

void addColourTexture(Material& material, const aiMaterial& source, const aiScene& scene,
                      const std::string& modelFile, std::vector<std::string>& warnings) {
    const aiString reference = colourTexture(source);
    if (reference.length == 0) {
        return;
    }
    const bool embedded = scene.GetEmbeddedTexture(reference.C_Str()) != nullptr;
    const std::string path = modelText(reference);
    const std::string found = embedded ? std::string() : findTexture(path, modelFile);
    if (found.empty()) {
        warnings.push_back("material \"" + material.name + "\": " +
                           (embedded ? "its texture lies inside the model file and is left out"
                                     : "there is no texture \"" + path + "\""));
        return;
    }
    Shader& shader = material.insertShader(createShader(Xbitmap));
    shader.data.SetFilename(BITMAPSHADER_FILENAME, Filename(String(found)));
    material.data.SetLink(MATERIAL_COLOR_SHADER, toHost(static_cast<Node*>(&shader)));
}

void setColour(Material& material, const aiMaterial& source) {
    aiColor4D colour;
    if (source.Get(AI_MATKEY_BASE_COLOR, colour) != aiReturn_SUCCESS &&
        source.Get(AI_MATKEY_COLOR_DIFFUSE, colour) != aiReturn_SUCCESS) {
        return;
    }
    if (std::isfinite(colour.r) && std::isfinite(colour.g) && std::isfinite(colour.b)) {
        material.data.SetVector(MATERIAL_COLOR_COLOR, Vector(colour.r, colour.g, colour.b));
    }
}

} // namespace

std::vector<Material*> importMaterials(const aiScene& scene, const std::string& modelFile, Document& document,
                                       std::vector<std::string>& warnings) {
    std::vector<Material*> materials;
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        const aiMaterial& source = *scene.mMaterials[i];
        Material& material = document.appendMaterial(createMaterial(Mmaterial));
        aiString name;
        if (source.Get(AI_MATKEY_NAME, name) == aiReturn_SUCCESS && name.length > 0) {
            material.name = modelText(name);
        }
        setColour(material, source);
        addColourTexture(material, source, scene, modelFile, warnings);
        materials.push_back(&material);
    }
    return materials;
}

} // namespace headless
