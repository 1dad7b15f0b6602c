// SPDX-License-Identifier: MIT
#include "headless/import/surface_import.h"

#include "headless/shaders/shader_ids.h"
#include "host/ids.h"
#include "host/vector.h"

#include <algorithm>
#include <assimp/GltfMaterial.h>
#include <cmath>
#include <optional>

namespace headless {

namespace {

/// A number of the material by the first of its keys that it has.
std::optional<float> numberOf(const aiMaterial& source, std::initializer_list<const char*> keys) {
    for (const char* const key : keys) {
        float number = 0.0f;
        if (source.Get(key, 0, 0, number) == aiReturn_SUCCESS && std::isfinite(number)) {
            return number;
        }
    }
    return std::nullopt;
}

std::optional<Vector> colourOf(const aiMaterial& source, std::initializer_list<const char*> keys) {
    for (const char* const key : keys) {
        aiColor4D colour;
        if (source.Get(key, 0, 0, colour) == aiReturn_SUCCESS && std::isfinite(colour.r) &&
            std::isfinite(colour.g) && std::isfinite(colour.b)) {
            return Vector(colour.r, colour.g, colour.b);
        }
    }
    return std::nullopt;
}

const Vector WHITE(1.0f, 1.0f, 1.0f);

// Keys of the importers: their own, and those of a modeller's physical material that they pass on as they
// are.
constexpr const char* METALNESS = "$mat.metallicFactor";
constexpr const char* METALNESS_OF_MAX = "$raw.3dsMax|main|metalness";
constexpr const char* ROUGHNESS = "$mat.roughnessFactor";
constexpr const char* ROUGHNESS_OF_MAX = "$raw.3dsMax|main|roughness";
constexpr const char* GLOSSINESS = "$mat.glossinessFactor";
constexpr const char* GLOSSINESS_OF_MAX = "$raw.3dsMax|main|glossiness";
constexpr const char* SPECULAR_OF_MAX = "$raw.3dsMax|main|Specular";

bool isGltf(const aiMaterial& source) {
    aiString mode;
    return source.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == aiReturn_SUCCESS;
}

/// Colours of glTF are linear, the host's are for a display.
Vector displayColour(const aiMaterial& source, const Vector& colour) {
    const auto encoded = [&source](float value) {
        constexpr float DISPLAY_GAMMA = 2.2f;
        const float inRange = std::clamp(value, 0.0f, 1.0f);
        return isGltf(source) ? std::pow(inRange, 1.0f / DISPLAY_GAMMA) : inRange;
    };
    return {encoded(colour.x), encoded(colour.y), encoded(colour.z)};
}

float brightnessOf(const Vector& colour) {
    return std::clamp(0.2126f * colour.x + 0.7152f * colour.y + 0.0722f * colour.z, 0.0f, 1.0f);
}

/// The host's blurriness for a roughness. Each stands for an exponent of a cosine lobe: 5025 - 5000
/// blurriness, and 2 / roughness^4 - 2.
float blurrinessOf(float roughness) {
    const float exponent = 2.0f / std::pow(std::max(roughness, 0.05f), 4.0f) - 2.0f;
    return std::clamp((5025.0f - exponent) / 5000.0f, 0.0f, 1.0f);
}

/// The host's brightness of a reflection for a reflectance straight on: the index of refraction with that
/// reflectance is 1 + 10 brightness^2.
float reflectionOf(float reflectance) {
    const float root = std::sqrt(std::clamp(reflectance, 0.0f, 0.9f));
    const float index = (1.0f + root) / (1.0f - root);
    return std::min(std::sqrt((index - 1.0f) / 10.0f), 1.0f);
}

float squareOf(float value) {
    return value * value;
}

struct Physical {
    float metalness = 0.0f;
    float roughness = 1.0f;
    /// Reflectance straight on, of what isn't metal.
    float reflectance = 0.04f;
};

Physical physicalOf(const aiMaterial& source) {
    Physical physical;
    const auto metalness = numberOf(source, {METALNESS, METALNESS_OF_MAX});
    const auto glossiness = numberOf(source, {GLOSSINESS, GLOSSINESS_OF_MAX});
    // With a texture the factor alone, mostly 1, would make everything a metal.
    const bool isTextured = source.GetTextureCount(aiTextureType_METALNESS) > 0;
    physical.metalness = isTextured ? 0.0f : std::clamp(metalness.value_or(0.0f), 0.0f, 1.0f);
    physical.roughness =
        glossiness ? 1.0f - *glossiness : numberOf(source, {ROUGHNESS_OF_MAX, ROUGHNESS}).value_or(1.0f);
    physical.roughness = std::clamp(physical.roughness, 0.0f, 1.0f);
    if (glossiness) {
        const auto specular = colourOf(source, {SPECULAR_OF_MAX, "$clr.specular"});
        physical.reflectance = specular ? brightnessOf(*specular) : physical.reflectance;
        return physical;
    }
    if (const auto index = numberOf(source, {"$mat.refracti"}); index && *index > 1.0f) {
        physical.reflectance = squareOf((*index - 1.0f) / (*index + 1.0f));
    }
    physical.reflectance *= std::clamp(numberOf(source, {"$mat.specularFactor"}).value_or(1.0f), 0.0f, 1.0f);
    return physical;
}

void setPhysical(Material& material, const aiMaterial& source) {
    const Physical physical = physicalOf(source);
    const Vector base = colourOf(source, {"$clr.base", "$clr.diffuse"}).value_or(WHITE);
    material.data.SetBool(MATERIAL_USE_SPECULAR, false);
    // Rough and no metal: it looks matt.
    constexpr float MATT = 0.8f;
    if (physical.roughness >= MATT && physical.metalness < 0.5f) {
        return;
    }
    const float metal = physical.metalness;
    material.data.SetBool(MATERIAL_USE_REFLECTION, true);
    material.data.SetReal(MATERIAL_REFLECTION_BRIGHTNESS,
                          reflectionOf(physical.reflectance * (1.0f - metal) + brightnessOf(base) * metal));
    material.data.SetVector(MATERIAL_REFLECTION_COLOR,
                            WHITE * (1.0f - metal) + displayColour(source, base) * metal);
    material.data.SetReal(MATERIAL_REFLECTION_DISPERSION, blurrinessOf(physical.roughness));
}

void setHighlight(Material& material, const aiMaterial& source) {
    const Vector colour = colourOf(source, {"$clr.specular"}).value_or(Vector());
    const float strength = std::clamp(numberOf(source, {"$mat.shinpercent"}).value_or(1.0f), 0.0f, 1.0f);
    const float exponent = numberOf(source, {"$mat.shininess"}).value_or(0.0f);
    const float height = brightnessOf(colour) * strength;
    const bool isShiny = height > 0.0f && exponent > 1.0f;
    material.data.SetBool(MATERIAL_USE_SPECULAR, isShiny);
    if (isShiny) {
        // The exponent that stands for a width is (100 width)^2 / 40.
        constexpr float WIDEST = 2.0f;
        material.data.SetReal(MATERIAL_SPECULAR_WIDTH,
                              std::min(std::sqrt(exponent * 40.0f) / 100.0f, WIDEST));
        material.data.SetReal(MATERIAL_SPECULAR_HEIGHT, height);
    }
}

void setTransmission(Material& material, const aiMaterial& source) {
    const float factor = numberOf(source, {"$mat.transmission.factor"}).value_or(0.0f);
    if (factor <= 0.0f) {
        return;
    }
    material.data.SetBool(MATERIAL_USE_TRANSPARENCY, true);
    material.data.SetVector(
        MATERIAL_TRANSPARENCY_COLOR,
        displayColour(source, colourOf(source, {"$clr.base", "$clr.diffuse"}).value_or(WHITE)));
    material.data.SetReal(MATERIAL_TRANSPARENCY_BRIGHTNESS, std::min(factor, 1.0f));
    material.data.SetReal(MATERIAL_TRANSPARENCY_REFRACTION,
                          std::clamp(numberOf(source, {"$mat.refracti"}).value_or(1.5f), 1.0f, 4.0f));
    const float roughness = physicalOf(source).roughness;
    material.data.SetReal(MATERIAL_TRANSPARENCY_DISPERSION,
                          roughness > 0.0f ? blurrinessOf(roughness) : 0.0f);
}

void setEmission(Material& material, const aiMaterial& source) {
    const auto emitted = colourOf(source, {"$clr.emissive"});
    const float intensity = std::max(numberOf(source, {"$mat.emissiveIntensity"}).value_or(1.0f), 0.0f);
    if (!emitted) {
        return;
    }
    const float brightest = std::max({emitted->x, emitted->y, emitted->z});
    if (brightest * intensity <= 0.0f) {
        return;
    }
    // What is beyond a colour's range goes into the brightness.
    const float scale = std::max(brightest, 1.0f);
    material.data.SetBool(MATERIAL_USE_LUMINANCE, true);
    material.data.SetVector(MATERIAL_LUMINANCE_COLOR, displayColour(source, *emitted * (1.0f / scale)));
    material.data.SetReal(MATERIAL_LUMINANCE_BRIGHTNESS, intensity * scale);
}

} // namespace

bool isPhysical(const aiMaterial& source) {
    return numberOf(source, {METALNESS, METALNESS_OF_MAX, GLOSSINESS, GLOSSINESS_OF_MAX}).has_value();
}

float opacityOf(const aiMaterial& source) {
    const float opacity = numberOf(source, {"$mat.opacity"}).value_or(1.0f);
    // Some importers tell 0 for want of an answer. What is wholly invisible isn't worth a model.
    return opacity > 0.0f && opacity < 1.0f ? opacity : 1.0f;
}

void setSurface(Material& material, const aiMaterial& source) {
    if (const auto colour = colourOf(source, {"$clr.base", "$clr.diffuse"})) {
        material.data.SetVector(MATERIAL_COLOR_COLOR, displayColour(source, *colour));
    }
    if (isPhysical(source)) {
        setPhysical(material, source);
    } else {
        setHighlight(material, source);
    }
    setTransmission(material, source);
    setEmission(material, source);
}

} // namespace headless
