// SPDX-License-Identifier: MIT
#include "engine/texturing.h"
#include "foundation/mapped_file.h"
#include "foundation/string.h"
#include "scene/displacement_param.h"
#include "scene/spectrum.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

#include <exception>

namespace engine {

namespace {

using Quenza::Ref;

/// The colour of an image that can't be read.
constexpr float GREY = 0.5f;

/// Of an included file: more than any program may be long.
constexpr size_t MAX_FILE = size_t(1) << 21;

constexpr QSLEntry VEC3_AT_POSITION{true, QSLType::VEC3};
constexpr QSLEntry REAL_AT_POSITION{true, QSLType::REAL};
/// Heights and masks run without a position.
constexpr QSLEntry REAL_ANYWHERE{false, QSLType::REAL};

template <class Form, class Param>
const Form* as(const Ref<Param>& param) {
    return dynamic_cast<const Form*>(param.getPointer());
}

/// The radiance of an image's white, as an RGB spectrum has it.
const RGB& whiteRadiance() {
    static const RGB white = radianceOf(Quenza::RGBSpectrum({1, 1, 1}, 1.0));
    return white;
}

/// "line 2, column 5", with the file where it isn't the shader itself.
std::string described(const QSLPlace& place, const std::vector<QSLText>& texts) {
    const std::string name = place.text < texts.size() ? texts[place.text].name : std::string();
    return (name.empty() ? "" : name + ", ") + "line " + std::to_string(place.line) + ", column " +
           std::to_string(place.column);
}

} // namespace

InputBuilder::InputBuilder(const Quenza::Material& material, ImageCache& images, Notices& notices)
    : material_(material), images_(images), notices_(notices) {
    for (const Quenza::Texture& texture : material.textures) {
        textures_.push_back(makeMap(texture));
    }
}

std::shared_ptr<const TextureMap> InputBuilder::makeMap(const Quenza::Texture& texture) const {
    return std::make_shared<const TextureMap>(texture, images_.find(texture.path).image);
}

std::string InputBuilder::owner(const char* channel) const {
    return "'" + std::string(channel) + "' of the material '" + material_.name.toStdString() + "'";
}

void InputBuilder::tellUnreadable(const Quenza::Texture& texture, const char* channel) const {
    const ImageCache::Entry& entry = images_.find(texture.path);
    if (!entry.image) {
        notices_.tell("The image '" + texture.path.toStdString() + "' in " + owner(channel) +
                      " can't be read (" + entry.fault + "); it is drawn in grey.");
    }
}

Input InputBuilder::textureAt(Quenza::i32 index, const char* channel) const {
    if (index < 0 || size_t(index) >= textures_.size()) {
        notices_.tell("There is no texture " + std::to_string(index) + " for " + owner(channel) +
                      "; it is drawn in grey.");
        return Input();
    }
    tellUnreadable(material_.textures[Quenza::u64(index)], channel);
    const auto& map = textures_[size_t(index)];
    return map->isReadable() ? Input(map) : Input();
}

/// The values of the parameters, the included files, then the shader itself.
void InputBuilder::addTexts(const Quenza::ShaderInfo& info, std::vector<QSLText>& texts) const {
    for (const Ref<Quenza::ShaderParam>& param : info.params) {
        Quenza::String definition;
        param->getShaderFunction(definition);
        texts.push_back({"parameter '" + param->name.toStdString() + "'", definition.toStdString()});
    }
    for (const Quenza::String& include : info.includes) {
        const Quenza::MappedFile file(images_.resolve(include));
        texts.push_back(
            {"file '" + include.toStdString() + "'", std::string(file.bytes().substr(0, MAX_FILE))});
    }
    texts.push_back({"", info.shader.toStdString()});
}

void InputBuilder::tellFaulty(const char* channel, const std::string& reason) const {
    failed_ = true;
    notices_.tell("The shader in " + owner(channel) + " doesn't compile (" + reason +
                  "); the material is drawn in magenta.");
}

/// A program's textures are the material's, followed by those that the shader brings along itself.
Input InputBuilder::program(const Ref<Quenza::ShaderInfo>& info, const QSLEntry& entry,
                            const char* channel) const {
    std::vector<QSLText> texts;
    try {
        if (material_.shared_shader_info) {
            addTexts(*material_.shared_shader_info, texts);
            texts.back().name = "the shared shader";
        }
        if (info) {
            addTexts(*info, texts);
        }
        std::vector<std::shared_ptr<const TextureMap>> textures = textures_;
        for (Quenza::u64 i = 0; info && i < info->textures.size(); ++i) {
            textures.push_back(makeMap(info->textures[i]));
        }
        auto program = std::make_shared<const QSLProgram>(texts, entry, textures);
        for (const size_t index : program->texturesUsed()) {
            tellUnreadable(index < textures_.size() ? material_.textures[index]
                                                    : info->textures[index - textures_.size()],
                           channel);
        }
        return Input(std::move(program));
    } catch (const QSLFault& fault) {
        tellFaulty(channel, described(fault.place, texts) + ": " + fault.reason);
    } catch (const std::exception& e) {
        tellFaulty(channel, e.what());
    }
    return Input();
}

ColourInput InputBuilder::colour(const Ref<Quenza::WavelengthDependentParam>& param, const char* channel,
                                 float absent) const {
    return colourOf(param, channel, RGB{absent}, RGB{1.0f}, reflectanceOf);
}

ColourInput InputBuilder::radiance(const Ref<Quenza::WavelengthDependentParam>& param,
                                   const char* channel) const {
    return colourOf(param, channel, RGB{0.0f}, whiteRadiance(), radianceOf);
}

/// `white` is what the value 1 of an image or program stands for.
ColourInput InputBuilder::colourOf(const Ref<Quenza::WavelengthDependentParam>& param, const char* channel,
                                   const RGB& absent, const RGB& white,
                                   RGB (*ofSpectrum)(const Quenza::Spectrum&)) const {
    if (const auto* constant = as<Quenza::ConstantWavelengthDependentParam>(param)) {
        return ColourInput(constant->spectrum ? ofSpectrum(*constant->spectrum) : absent);
    }
    if (const auto* textured = as<Quenza::TextureWavelengthDependentParam>(param)) {
        const Input source = textureAt(textured->texture_index, channel);
        return ColourInput(source.isConstant() ? white * GREY : white, source);
    }
    if (const auto* shaded = as<Quenza::ShaderWavelengthDependentParam>(param)) {
        const Input source = program(shaded->shader_info, VEC3_AT_POSITION, channel);
        return ColourInput(source.isConstant() ? white * WARNING_COLOUR : white, source);
    }
    return ColourInput(absent, Input(), false);
}

ScalarInput InputBuilder::scalar(const Ref<Quenza::WavelengthIndependentParam>& param, const char* channel,
                                 float absent) const {
    Input source;
    if (const auto* constant = as<Quenza::ConstantWavelengthIndependentParam>(param)) {
        return ScalarInput(float(constant->value));
    }
    if (const auto* textured = as<Quenza::TextureWavelengthIndependentParam>(param)) {
        source = textureAt(textured->texture_index, channel);
    } else if (const auto* shaded = as<Quenza::ShaderWavelengthIndependentParam>(param)) {
        source = program(shaded->shader_info, REAL_AT_POSITION, channel);
    }
    return source.isConstant() ? ScalarInput(absent, param.nonNull()) : ScalarInput(source);
}

ScalarInput InputBuilder::displacement(const Ref<Quenza::DisplacementParam>& param, const char* channel,
                                       float absent) const {
    Input source;
    if (const auto* constant = as<Quenza::ConstantDisplacementParam>(param)) {
        return ScalarInput(float(constant->value));
    }
    if (const auto* textured = as<Quenza::TextureDisplacementParam>(param)) {
        source = textureAt(textured->texture_index, channel);
    } else if (const auto* shaded = as<Quenza::ShaderDisplacementParam>(param)) {
        source = program(shaded->shader_info, REAL_ANYWHERE, channel);
    }
    return source.isConstant() ? ScalarInput(absent, param.nonNull()) : ScalarInput(source);
}

VectorInput InputBuilder::vector(const Ref<Quenza::Vec3Param>& param, const char* channel) const {
    if (const auto* textured = as<Quenza::TextureVec3Param>(param)) {
        return VectorInput(textureAt(textured->texture_index, channel));
    }
    if (const auto* shaded = as<Quenza::ShaderVec3Param>(param)) {
        return VectorInput(program(shaded->shader_info, VEC3_AT_POSITION, channel));
    }
    return VectorInput();
}

} // namespace engine
