// SPDX-License-Identifier: MIT
#include "materials/channel_export.h"

#include "host/general.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/bake_shader.h"
#include "materials/file_names.h"
#include "materials/qsl_shader.h"
#include "materials/shader_text.h"
#include "materials/spectrum_export.h"
#include "materials/texture_factory.h"
#include "scene/displacement_param.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "shared/export_context.h"
#include "shared/spectra.h"
#include "shared/temporary_file.h"

#include <algorithm>
#include <cassert>

using namespace Quenza;

namespace {

/// The classes of a family of parameters, and what a channel without a shader becomes in it.
template <class Family>
struct Forms;

template <>
struct Forms<WavelengthDependentParam> {
    using Texture = TextureWavelengthDependentParam;
    using Shader = ShaderWavelengthDependentParam;
    static Ref<WavelengthDependentParam> constant(const Channel& channel, const BaseContainer& data) {
        switch (channel.constant) {
        case ConstantForm::COLOUR:
            return constantParam(makeRGBSpectrum(data.GetVector(channel.colour), data.GetReal(channel.gamma),
                                                 data.GetReal(channel.brightness)));
        case ConstantForm::SPECTRUM:
            return constantParam(makeSpectrum(data, channelSpectrum(channel.base)));
        default:
            return nullptr;
        }
    }
};

template <>
struct Forms<WavelengthIndependentParam> {
    using Texture = TextureWavelengthIndependentParam;
    using Shader = ShaderWavelengthIndependentParam;
    static Ref<WavelengthIndependentParam> constant(const Channel& channel, const BaseContainer& data) {
        return new ConstantWavelengthIndependentParam(double(data.GetReal(channel.value)));
    }
};

template <>
struct Forms<DisplacementParam> {
    using Texture = TextureDisplacementParam;
    using Shader = ShaderDisplacementParam;
    static Ref<DisplacementParam> constant(const Channel& channel, const BaseContainer& data) {
        if (channel.constant == ConstantForm::NONE) {
            return nullptr;
        }
        return new ConstantDisplacementParam(double(data.GetReal(channel.value)));
    }
};

template <>
struct Forms<Vec3Param> {
    using Texture = TextureVec3Param;
    using Shader = ShaderVec3Param;
    static Ref<Vec3Param> constant(const Channel&, const BaseContainer&) { return nullptr; }
};

TextureMapping textureMapping(const Channel& channel, const BaseContainer& data) {
    TextureMapping mapping;
    mapping.gamma = data.GetReal(channel.textureGamma);
    mapping.a = data.GetReal(channel.a);
    mapping.b = data.GetReal(channel.b);
    mapping.c = data.GetReal(channel.c);
    mapping.smooth = channel.smooth != 0 && data.GetBool(channel.smooth);
    return mapping;
}

} // namespace

/// A name that no bake of this export has, and no file of another one.
Filename ChannelExporter::nextBakedFile(const Channel& channel) {
    Filename file;
    uint32_t number = std::max(GeGetMilliSeconds(), context_.lastBakeNumber + 1);
    for (;; ++number) {
        const ::String tail = ::String("_") + LongToString(number) + channel.bakeSuffix;
        file = context_.textureDirectory + Filename(legalFileName(name_, tail));
        const bool isTaken =
            context_.extraFiles ? claimTemporaryFile(file, context_) == Claim::TAKEN : GeFExist(file);
        if (!isTaken) {
            break;
        }
    }
    context_.lastBakeNumber = number;
    return file;
}

/// Any shader but the plug-in's own: an image, or what can be made one. False when the bake fails.
bool ChannelExporter::appendTexture(const Channel& channel, BaseShader* shader) {
    const TextureMapping mapping = textureMapping(channel, data_);
    if (shader->GetType() == Xbitmap) {
        textures_.push_back(makeTextureFromLink(shader, mapping, context_));
        return true;
    }
    const Filename file = nextBakedFile(channel);
    if (!bakeShaderToFile(shader, file, &data_, channel.saveFlags(), context_)) {
        return false;
    }
    textures_.push_back(makeTextureFromFile(file, mapping));
    return true;
}

template <class Family>
Ref<Family> ChannelExporter::makeParameter(ChannelFamily family, ChannelId id) {
    const Channel& source = channel(id);
    assert(source.family == family);
    (void)family;
    if (!context_.document || !data_.GetBool(source.enable)) {
        return nullptr;
    }
    auto* const shader = static_cast<BaseShader*>(data_.GetLink(source.shader, context_.document, Xbase));
    if (shader && isKnownShader(shader)) {
        return new typename Forms<Family>::Shader(
            makeShaderInfo(shader, textures_, source.programHeader(), source.valueType()));
    }
    if (shader && appendTexture(source, shader)) {
        return new typename Forms<Family>::Texture(static_cast<i32>(textures_.size() - 1));
    }
    return Forms<Family>::constant(source, data_);
}

void ChannelExporter::fill(Ref<WavelengthDependentParam>& parameter, ChannelId id) {
    parameter = makeParameter<WavelengthDependentParam>(ChannelFamily::WAVELENGTH_DEPENDENT, id);
}

void ChannelExporter::fill(Ref<WavelengthIndependentParam>& parameter, ChannelId id) {
    parameter = makeParameter<WavelengthIndependentParam>(ChannelFamily::WAVELENGTH_INDEPENDENT, id);
}

void ChannelExporter::fill(Ref<DisplacementParam>& parameter, ChannelId id) {
    parameter = makeParameter<DisplacementParam>(ChannelFamily::DISPLACEMENT, id);
}

void ChannelExporter::fill(Ref<Vec3Param>& parameter, ChannelId id) {
    parameter = makeParameter<Vec3Param>(ChannelFamily::VEC3, id);
}
