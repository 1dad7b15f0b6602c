// SPDX-License-Identifier: MIT
#include "engine/material_param.h"

#include "scene/displacement_param.h"
#include "scene/spectrum.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

namespace engine {

namespace {

using Quenza::Ref;

/// What stands for a value that can't be evaluated.
constexpr float MIDDLE = 0.5f;

template <class Texture, class Param>
const Texture* as(const Ref<Param>& param) {
    return dynamic_cast<const Texture*>(param.getPointer());
}

} // namespace

ParamReader::ParamReader(const Quenza::Material& material, ImageCache& images, Notices& notices)
    : notices_(notices) {
    for (const Quenza::Texture& texture : material.textures) {
        textures_.push_back(std::make_shared<TextureMap>(texture, images.load(texture.path)));
    }
}

std::shared_ptr<const TextureMap> ParamReader::textureAt(Quenza::i32 index) const {
    if (index < 0 || size_t(index) >= textures_.size()) {
        notices_.tell("A material selects a texture that it doesn't have; it is drawn in grey.");
        return nullptr;
    }
    return textures_[size_t(index)];
}

void ParamReader::tellShader() const {
    notices_.tell("Shaders (QSL) are not evaluated; what they control is drawn in grey.");
}

ColourParam ParamReader::factor(const Ref<Quenza::WavelengthDependentParam>& param, float absent) const {
    if (!param) {
        return {RGB{absent}, nullptr};
    }
    if (const auto* constant = as<Quenza::ConstantWavelengthDependentParam>(param)) {
        return {constant->spectrum ? reflectanceOf(*constant->spectrum) : RGB{absent}, nullptr};
    }
    if (const auto* textured = as<Quenza::TextureWavelengthDependentParam>(param)) {
        const auto map = textureAt(textured->texture_index);
        return {RGB{map ? 1.0f : MIDDLE}, map};
    }
    tellShader();
    return {RGB{MIDDLE}, nullptr};
}

ColourParam ParamReader::radiance(const Ref<Quenza::WavelengthDependentParam>& param) const {
    if (!param) {
        return {RGB{0.0f}, nullptr};
    }
    if (const auto* constant = as<Quenza::ConstantWavelengthDependentParam>(param)) {
        return {constant->spectrum ? radianceOf(*constant->spectrum) : RGB{0.0f}, nullptr};
    }
    // The image's colours, as an RGB spectrum has them.
    static const RGB WHITE = radianceOf(Quenza::RGBSpectrum({1, 1, 1}, 1.0));
    if (const auto* textured = as<Quenza::TextureWavelengthDependentParam>(param)) {
        const auto map = textureAt(textured->texture_index);
        return {map ? WHITE : WHITE * MIDDLE, map};
    }
    tellShader();
    return {WHITE * MIDDLE, nullptr};
}

NumberParam ParamReader::number(const Ref<Quenza::WavelengthIndependentParam>& param, float absent) const {
    if (!param) {
        return {absent, nullptr};
    }
    if (const auto* constant = as<Quenza::ConstantWavelengthIndependentParam>(param)) {
        return {float(constant->value), nullptr};
    }
    if (const auto* textured = as<Quenza::TextureWavelengthIndependentParam>(param)) {
        return {absent, textureAt(textured->texture_index)};
    }
    tellShader();
    return {absent, nullptr};
}

NumberParam ParamReader::number(const Ref<Quenza::DisplacementParam>& param, float absent) const {
    if (!param) {
        return {absent, nullptr};
    }
    if (const auto* constant = as<Quenza::ConstantDisplacementParam>(param)) {
        return {float(constant->value), nullptr};
    }
    if (const auto* textured = as<Quenza::TextureDisplacementParam>(param)) {
        return {MIDDLE, textureAt(textured->texture_index)};
    }
    tellShader();
    return {MIDDLE, nullptr};
}

std::shared_ptr<const TextureMap> ParamReader::texture(const Ref<Quenza::DisplacementParam>& param) const {
    if (const auto* textured = as<Quenza::TextureDisplacementParam>(param)) {
        return textureAt(textured->texture_index);
    }
    if (param && !as<Quenza::ConstantDisplacementParam>(param)) {
        tellShader();
    }
    return nullptr;
}

std::shared_ptr<const TextureMap> ParamReader::texture(const Ref<Quenza::Vec3Param>& param) const {
    if (const auto* textured = as<Quenza::TextureVec3Param>(param)) {
        return textureAt(textured->texture_index);
    }
    if (param) {
        tellShader();
    }
    return nullptr;
}

} // namespace engine
