// SPDX-License-Identifier: MIT
#include "materials/import_channels.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/import_spectra.h"
#include "shared/plugin_ids.h"
#include "shared/text.h"

#include <algorithm>

using namespace Quenza;

namespace {

/// Names of the forms in the warnings of emission and albedo.
const char* spectrumName(const Spectrum& spectrum) {
    switch (spectrum.getType()) {
    case RGBSpectrum::TYPE:
        return "RGB";
    case BlackBodySpectrum::TYPE:
        return "blackbody";
    case UniformSpectrum::TYPE:
        return "uniform";
    case RegularSpectrum::TYPE:
        return "tabulated";
    default:
        return "peak";
    }
}

/// True for a path that starts at a drive of Windows, whatever the platform.
bool hasDrive(const Quenza::String& path) {
    const std::string_view text = path.view();
    return text.size() > 2 && text[1] == ':' && text[2] == '\\';
}

Filename resolveTexture(const Quenza::String& path, const Filename& directory) {
    if (hasDrive(path) || PlatformUtils::isAbsolutePath(path)) {
        return toFilename(path);
    }
    std::string relative(path.view());
    std::replace(relative.begin(), relative.end(), Filename::separator == '/' ? '\\' : '/',
                 Filename::separator);
    return directory + Filename(::String(relative));
}

} // namespace

void ChannelImporter::take(const Ref<WavelengthDependentParam>& parameter, ChannelId id) {
    const Channel& target = channel(id);
    if (parameter && !takeLinkedForm(*parameter, target)) {
        const auto& constant = static_cast<const ConstantWavelengthDependentParam&>(*parameter);
        takeSpectrum(constant.spectrum.getPointer(), target);
    }
}

void ChannelImporter::take(const Ref<WavelengthIndependentParam>& parameter, ChannelId id) {
    const Channel& target = channel(id);
    if (parameter && !takeLinkedForm(*parameter, target)) {
        takeNumber(static_cast<const ConstantWavelengthIndependentParam&>(*parameter).value, target);
    }
}

void ChannelImporter::take(const Ref<DisplacementParam>& parameter, ChannelId id) {
    const Channel& target = channel(id);
    if (!parameter || takeLinkedForm(*parameter, target)) {
        return;
    }
    if (target.constant == ConstantForm::VALUE) {
        takeNumber(static_cast<const ConstantDisplacementParam&>(*parameter).value, target);
    } else {
        warn(::String(target.name) + " constant");
    }
}

void ChannelImporter::take(const Ref<Vec3Param>& parameter, ChannelId id) {
    if (parameter) {
        takeLinkedForm(*parameter, channel(id));
    }
}

void ChannelImporter::takeBaseEmission(const Ref<WavelengthDependentParam>& parameter) {
    if (!parameter || parameter->getType() != WavelengthDependentParam::CONSTANT) {
        return;
    }
    const auto& constant = static_cast<const ConstantWavelengthDependentParam&>(*parameter);
    if (importSpectrum(*material_.GetDataInstance(), EMISSION_SPECTRUM, constant.spectrum.getPointer())) {
        enable(channel(ChannelId::EMISSION));
    }
}

/// False for the constant form.
template <class Family>
bool ChannelImporter::takeLinkedForm(const Family& parameter, const Channel& target) {
    if (parameter.getType() == Family::TEXTURE) {
        takeTexture(static_cast<const TextureForm<Family>&>(parameter).texture_index, target);
    } else if (parameter.getType() == Family::SHADER) {
        takeProgram(static_cast<const ShaderForm<Family>&>(parameter).shader_info.getPointer(), target);
    } else {
        return false;
    }
    return true;
}

void ChannelImporter::takeTexture(int32_t index, const Channel& target) {
    if (index < 0 || static_cast<size_t>(index) >= body_.textures.size()) {
        return;
    }
    const Texture& texture = body_.textures[static_cast<size_t>(index)];
    const Filename file = resolveTexture(texture.path, directory_);
    if (!GeFExist(file)) {
        GePrint(::String("Failed to load texture from: ") + file.GetString());
        return;
    }
    GePrint(::String("Loaded texture: ") + file.GetString());
    BaseShader* const bitmap = BaseShader::Alloc(Xbitmap);
    if (!bitmap) {
        return;
    }
    bitmap->GetDataInstance()->SetFilename(BITMAPSHADER_FILENAME, file);
    link(bitmap, target);
    BaseContainer& data = *material_.GetDataInstance();
    data.SetReal(target.textureGamma, float(texture.exponent));
    data.SetReal(target.a, float(texture.a));
    data.SetReal(target.b, float(texture.b));
    data.SetReal(target.c, float(texture.c));
    if (target.smooth != 0) {
        // Documents have known the exponent's flag as the bump's ever since.
        data.SetBool(target.id == ChannelId::EXPONENT ? MAT_BUMP_SMOOTH : target.smooth, texture.smooth);
    }
}

void ChannelImporter::takeProgram(const ShaderInfo* info, const Channel& target) {
    BaseShader* const program = BaseShader::Alloc(PLUGINID_QSL_SHADER);
    if (!program) {
        return;
    }
    program->GetDataInstance()->SetString(QSL_CODE, info ? toHostString(info->shader) : ::String());
    link(program, target);
}

void ChannelImporter::takeSpectrum(const Spectrum* spectrum, const Channel& target) {
    if (!spectrum) {
        return;
    }
    if (target.constant == ConstantForm::COLOUR) {
        takeColour(*spectrum, target);
    } else if (target.constant == ConstantForm::SPECTRUM) {
        if (importSpectrum(*material_.GetDataInstance(), channelSpectrum(target.base), spectrum)) {
            enable(target);
        }
    } else {
        warn(::String(target.name) + " " + spectrumName(*spectrum) + " spectrum");
    }
}

void ChannelImporter::takeColour(const Spectrum& spectrum, const Channel& target) {
    BaseContainer& data = *material_.GetDataInstance();
    const auto set = [&](const Vec3d& rgb, double gamma) {
        data.SetVector(target.colour, ::Vector(float(rgb.x), float(rgb.y), float(rgb.z)));
        data.SetReal(target.gamma, float(gamma));
        data.SetReal(target.brightness, 1.0f);
        enable(target);
    };
    if (spectrum.getType() == RGBSpectrum::TYPE) {
        const auto& colour = static_cast<const RGBSpectrum&>(spectrum);
        set(colour.rgb, colour.gamma);
    } else if (spectrum.getType() == UniformSpectrum::TYPE) {
        const double value = static_cast<const UniformSpectrum&>(spectrum).value;
        set({value, value, value}, 1.0);
    } else {
        // The absorption layer names the blackbody alone.
        const bool isNamed =
            target.id != ChannelId::ABSORPTION_LAYER || spectrum.getType() == BlackBodySpectrum::TYPE;
        warn(::String(target.name) + " " + (isNamed ? spectrumName(spectrum) + ::String(" ") : ::String()) +
             "spectrum");
    }
}

void ChannelImporter::takeNumber(double value, const Channel& target) {
    material_.GetDataInstance()->SetReal(target.value, float(value));
    enable(target);
}

void ChannelImporter::link(BaseShader* shader, const Channel& target) {
    material_.InsertShader(shader);
    material_.GetDataInstance()->SetLink(target.shader, shader);
    enable(target);
}

void ChannelImporter::enable(const Channel& target) {
    material_.GetDataInstance()->SetBool(target.enable, true);
}

void ChannelImporter::warn(const ::String& what) {
    addImportWarning(warnings_, what, material_.GetName());
}
