// SPDX-License-Identifier: MIT
#include "headless/import/material_import.h"

#include "headless/import/model_text.h"
#include "headless/import/surface_import.h"
#include "headless/import/texture_import.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/shaders/shader_ids.h"

#include <assimp/GltfMaterial.h>
#include <cmath>
#include <stdexcept>

namespace headless {

namespace {

/// A channel of the standard material that takes a texture of the model's, the first type that there is.
struct TextureChannel {
    const char* name;
    std::initializer_list<aiTextureType> types;
    int32_t link;
    /// The channel's switch; 0 for one that is always in use.
    int32_t use;
};
const TextureChannel CHANNELS[] = {
    {"color", {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE}, MATERIAL_COLOR_SHADER, 0},
    {"luminance",
     {aiTextureType_EMISSION_COLOR, aiTextureType_EMISSIVE},
     MATERIAL_LUMINANCE_SHADER,
     MATERIAL_USE_LUMINANCE},
    {"normal",
     {aiTextureType_NORMAL_CAMERA, aiTextureType_NORMALS},
     MATERIAL_NORMAL_SHADER,
     MATERIAL_USE_NORMAL},
    {"bump", {aiTextureType_HEIGHT}, MATERIAL_BUMP_SHADER, MATERIAL_USE_BUMP},
    {"alpha", {aiTextureType_OPACITY}, MATERIAL_ALPHA_SHADER, MATERIAL_USE_ALPHA}};

struct UnusedTexture {
    const char* name;
    aiTextureType type;
};
/// Textures that no channel of a standard material stands for.
constexpr UnusedTexture UNUSED[] = {{"metalness", aiTextureType_METALNESS},
                                    {"roughness", aiTextureType_DIFFUSE_ROUGHNESS},
                                    {"metalness and roughness", aiTextureType_UNKNOWN},
                                    {"specular", aiTextureType_SPECULAR},
                                    {"shininess", aiTextureType_SHININESS},
                                    {"occlusion", aiTextureType_AMBIENT_OCCLUSION},
                                    {"light", aiTextureType_LIGHTMAP},
                                    {"reflection", aiTextureType_REFLECTION},
                                    {"displacement", aiTextureType_DISPLACEMENT},
                                    {"transmission", aiTextureType_TRANSMISSION},
                                    {"coat", aiTextureType_CLEARCOAT},
                                    {"sheen", aiTextureType_SHEEN}};

std::optional<aiTextureType> firstTexture(const aiMaterial& source,
                                          std::initializer_list<aiTextureType> types) {
    for (const aiTextureType type : types) {
        if (source.GetTextureCount(type) > 0) {
            return type;
        }
    }
    return std::nullopt;
}

aiString textureOf(const aiMaterial& source, aiTextureType type) {
    aiString path;
    source.GetTexture(type, 0, &path);
    return path;
}

/// One material of the model.
class MaterialImport {
public:
    MaterialImport(Material& material, const aiMaterial& source, TextureImport& textures,
                   std::vector<std::string>& warnings)
        : material_(material), source_(source), textures_(textures), warnings_(warnings) {}

    void run() {
        setSurface(material_, source_);
        for (const TextureChannel& channel : CHANNELS) {
            importChannel(channel);
        }
        importAlpha();
        tellUnused();
    }

private:
    void warn(const std::string& text) {
        warnings_.push_back("material \"" + material_.name + "\": " + text);
    }

    void importChannel(const TextureChannel& channel) {
        const std::optional<aiTextureType> type = firstTexture(source_, channel.types);
        // The opacity is often the alpha of the colour's own image.
        if (!type || (*type == aiTextureType_OPACITY && textureOf(source_, *type) == colourTexture()) ||
            (*type == aiTextureType_EMISSIVE && isDark())) {
            return;
        }
        try {
            addBitmap(channel.link, channel.use, textures_.fileOf(textureOf(source_, *type)));
        } catch (const std::runtime_error& error) {
            warn("its " + std::string(channel.name) + " texture " + error.what());
            return;
        }
        if (*type == aiTextureType_HEIGHT) {
            setBumpStrength();
        }
        tellPlacement(channel.name, *type);
    }

    void addBitmap(int32_t link, int32_t use, const std::string& file) {
        Shader& shader = material_.insertShader(createShader(Xbitmap), material_.shaders().last());
        shader.data.SetFilename(BITMAPSHADER_FILENAME, Filename(String(file)));
        connect(shader, link, use);
    }

    void connect(Shader& shader, int32_t link, int32_t use) {
        material_.data.SetLink(link, toHost(static_cast<Node*>(&shader)));
        if (use != 0) {
            material_.data.SetBool(use, true);
        }
    }

    aiString colourTexture() const {
        const auto type = firstTexture(source_, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE});
        return type ? textureOf(source_, *type) : aiString();
    }

    /// An emission of no brightness goes with a texture in many files, which then gives no light.
    bool isDark() const {
        aiColor4D colour;
        return source_.Get(AI_MATKEY_COLOR_EMISSIVE, colour) == aiReturn_SUCCESS && colour.r <= 0.0f &&
               colour.g <= 0.0f && colour.b <= 0.0f && isPhysical(source_);
    }

    void setBumpStrength() {
        float scale = 1.0f;
        if (source_.Get(AI_MATKEY_BUMPSCALING, scale) == aiReturn_SUCCESS && std::isfinite(scale) &&
            scale != 1.0f) {
            const float strength = material_.data.GetReal(MATERIAL_BUMP_STRENGTH);
            material_.data.SetReal(MATERIAL_BUMP_STRENGTH, strength * scale);
        }
    }

    bool wantsAlpha() const {
        aiString mode;
        if (source_.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == aiReturn_SUCCESS) {
            return std::string_view(mode.C_Str()) != "OPAQUE";
        }
        const auto opacity = firstTexture(source_, {aiTextureType_OPACITY});
        return opacity && textureOf(source_, *opacity) == colourTexture();
    }

    void importAlpha() {
        if (material_.data.GetBool(MATERIAL_USE_ALPHA)) {
            return;
        }
        if (wantsAlpha() && colourTexture().length > 0) {
            try {
                if (const std::optional<std::string> file = textures_.alphaOf(colourTexture())) {
                    addBitmap(MATERIAL_ALPHA_SHADER, MATERIAL_USE_ALPHA, *file);
                    return;
                }
            } catch (const std::runtime_error& error) {
                warn("the alpha of its color texture " + std::string(error.what()));
            }
        }
        const float opacity = opacityOf(source_);
        if (opacity < 1.0f) {
            addEvenMask(opacity);
        }
    }

    /// The alpha channel knows no number of its own.
    void addEvenMask(float opacity) {
        Shader& shader = material_.insertShader(createShader(Xgradient), material_.shaders().last());
        shader.data.SetVector(GRADIENT_COLOR1, Vector(opacity, opacity, opacity));
        shader.data.SetVector(GRADIENT_COLOR2, Vector(opacity, opacity, opacity));
        connect(shader, MATERIAL_ALPHA_SHADER, MATERIAL_USE_ALPHA);
    }

    void tellPlacement(const char* name, aiTextureType type) {
        aiUVTransform transform;
        if (source_.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) == aiReturn_SUCCESS &&
            (transform.mTranslation != aiVector2D(0.0f, 0.0f) ||
             transform.mScaling != aiVector2D(1.0f, 1.0f) || transform.mRotation != 0.0f)) {
            warn("its " + std::string(name) + " texture is shown without its offset, scale and rotation");
        }
        int set = 0;
        if (source_.Get(AI_MATKEY_UVWSRC(type, 0), set) == aiReturn_SUCCESS && set != 0) {
            warn("its " + std::string(name) +
                 " texture is shown by the first texture coordinates, not by set " + std::to_string(set + 1));
        }
    }

    void tellUnused() {
        std::string names;
        for (const UnusedTexture& unused : UNUSED) {
            if (source_.GetTextureCount(unused.type) > 0) {
                names += (names.empty() ? "" : ", ") + std::string(unused.name);
            }
        }
        if (!names.empty()) {
            warn("left out are its textures of " + names);
        }
    }

    Material& material_;
    const aiMaterial& source_;
    TextureImport& textures_;
    std::vector<std::string>& warnings_;
};

} // namespace

std::vector<Material*> importMaterials(const aiScene& scene, const std::string& modelFile,
                                       const std::string& textureFolder, Document& document,
                                       std::vector<std::string>& warnings) {
    TextureImport textures(scene, modelFile, textureFolder);
    std::vector<Material*> materials;
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        const aiMaterial& source = *scene.mMaterials[i];
        Material& material = document.appendMaterial(createMaterial(Mmaterial));
        aiString name;
        if (source.Get(AI_MATKEY_NAME, name) == aiReturn_SUCCESS && name.length > 0) {
            material.name = modelText(name);
        }
        MaterialImport(material, source, textures, warnings).run();
        materials.push_back(&material);
    }
    return materials;
}

} // namespace headless
