// SPDX-License-Identifier: MIT
#include "engine/texturing.h"

#include "scene/displacement_param.h"
#include "scene/spectrum.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

namespace engine {

namespace {

using Quenza::Ref;

/// The colour of an image that can't be read.
constexpr float GREY = 0.5f;

template <class Form, class Param>
const Form* as(const Ref<Param>& param) {
    return dynamic_cast<const Form*>(param.getPointer());
}

/// The radiance of an image's white, as an RGB spectrum has it.
const RGB& whiteRadiance() {
    static const RGB white = radianceOf(Quenza::RGBSpectrum({1, 1, 1}, 1.0));
    return white;
}

} // namespace

float ScalarInput::at(const SurfacePoint& point) const {
    return isConstant() ? constant_ : luminance(valueAt(point));
}

float ScalarInput::average() const {
    return isConstant() ? constant_ : luminance(averageValue());
}

ScalarInput::Slope ScalarInput::slopeAt(const SurfacePoint& point) const {
    if (isConstant()) {
        return {0, 0};
    }
    const TextureMap::Slope slope = texture_->slopeAt(point);
    return {slope.along_u, slope.along_v};
}

Vec VectorInput::at(const SurfacePoint& point) const {
    if (isConstant()) {
        return {0, 0, 1};
    }
    const RGB value = valueAt(point);
    return {value.r * 2 - 1, value.g * 2 - 1, value.b * 2 - 1};
}

InputBuilder::InputBuilder(const Quenza::Material& material, ImageCache& images, Notices& notices)
    : material_(material), notices_(notices) {
    for (const Quenza::Texture& texture : material.textures) {
        textures_.push_back(std::make_shared<TextureMap>(texture, images.load(texture.path)));
    }
}

Input InputBuilder::textureAt(Quenza::i32 index, const char* channel) const {
    if (index < 0 || size_t(index) >= textures_.size()) {
        notices_.tell("The material '" + material_.name.toStdString() + "' has no texture " +
                      std::to_string(index) + ", which '" + channel + "' asks for; it is drawn in grey.");
        return Input();
    }
    return Input(textures_[size_t(index)]);
}

void InputBuilder::tellShader() const {
    notices_.tell("Shaders (QSL) are not evaluated; what they control is drawn in grey.");
}

ColourInput InputBuilder::colour(const Ref<Quenza::WavelengthDependentParam>& param, const char* channel,
                                 float absent) const {
    if (!param) {
        return ColourInput(RGB{absent}, Input(), false);
    }
    if (const auto* constant = as<Quenza::ConstantWavelengthDependentParam>(param)) {
        return ColourInput(constant->spectrum ? reflectanceOf(*constant->spectrum) : RGB{absent});
    }
    if (const auto* textured = as<Quenza::TextureWavelengthDependentParam>(param)) {
        const Input source = textureAt(textured->texture_index, channel);
        return ColourInput(RGB{source.isConstant() ? GREY : 1.0f}, source);
    }
    tellShader();
    return ColourInput(RGB{GREY});
}

ColourInput InputBuilder::radiance(const Ref<Quenza::WavelengthDependentParam>& param,
                                   const char* channel) const {
    if (!param) {
        return ColourInput();
    }
    if (const auto* constant = as<Quenza::ConstantWavelengthDependentParam>(param)) {
        return ColourInput(constant->spectrum ? radianceOf(*constant->spectrum) : RGB{0.0f});
    }
    if (const auto* textured = as<Quenza::TextureWavelengthDependentParam>(param)) {
        const Input source = textureAt(textured->texture_index, channel);
        return ColourInput(whiteRadiance() * (source.isConstant() ? GREY : 1.0f), source);
    }
    tellShader();
    return ColourInput(whiteRadiance() * GREY);
}

ScalarInput InputBuilder::scalar(const Ref<Quenza::WavelengthIndependentParam>& param, const char* channel,
                                 float absent) const {
    if (const auto* constant = as<Quenza::ConstantWavelengthIndependentParam>(param)) {
        return ScalarInput(float(constant->value));
    }
    if (const auto* textured = as<Quenza::TextureWavelengthIndependentParam>(param)) {
        const Input source = textureAt(textured->texture_index, channel);
        return source.isConstant() ? ScalarInput(absent) : ScalarInput(source);
    }
    if (param) {
        tellShader();
    }
    return ScalarInput(absent, param.nonNull());
}

ScalarInput InputBuilder::displacement(const Ref<Quenza::DisplacementParam>& param, const char* channel,
                                       float absent) const {
    if (const auto* constant = as<Quenza::ConstantDisplacementParam>(param)) {
        return ScalarInput(float(constant->value));
    }
    if (const auto* textured = as<Quenza::TextureDisplacementParam>(param)) {
        const Input source = textureAt(textured->texture_index, channel);
        return source.isConstant() ? ScalarInput(absent) : ScalarInput(source);
    }
    if (param) {
        tellShader();
    }
    return ScalarInput(absent, param.nonNull());
}

VectorInput InputBuilder::vector(const Ref<Quenza::Vec3Param>& param, const char* channel) const {
    if (const auto* textured = as<Quenza::TextureVec3Param>(param)) {
        return VectorInput(textureAt(textured->texture_index, channel));
    }
    if (param) {
        tellShader();
    }
    return VectorInput();
}

} // namespace engine
