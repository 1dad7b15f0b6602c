// SPDX-License-Identifier: MIT
#pragma once

#include "scene/param.h"
#include "scene/shader_info.h"

namespace Quenza {

/// Writes the element "shader"; a null `info` leaves it empty.
void writeShaderForm(OStream& stream, u32 depth, const XMLWriteOptions& options, const Ref<ShaderInfo>& info);
/// Writes the element "texture" of a parameter.
void writeTextureForm(OStream& stream, u32 depth, i32 texture_index);

Ref<WavelengthIndependentParam> makeWavelengthIndependent(const Ref<ShaderInfo>& shader_info);
Ref<WavelengthIndependentParam> makeWavelengthIndependent(i32 texture_index);
Ref<WavelengthDependentParam> makeWavelengthDependent(const Ref<ShaderInfo>& shader_info);
Ref<WavelengthDependentParam> makeWavelengthDependent(i32 texture_index);

/// The shader form of a family.
template <class Family>
class ShaderForm : public Family {
public:
    ShaderForm() = default;
    explicit ShaderForm(const Ref<ShaderInfo>& info) : shader_info(info) {}

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override {
        writeShaderForm(stream, depth, options, shader_info);
    }
    u32 getType() const override { return Family::SHADER; }
    void visit(SceneVisitor& visitor) override {
        if (shader_info)
            shader_info->visit(visitor);
    }

    Ref<ShaderInfo> shader_info;
};

/// The texture form of a family.
template <class Family>
class TextureForm : public Family {
public:
    TextureForm() = default;
    explicit TextureForm(i32 index) : texture_index(index) {}

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const override {
        writeTextureForm(stream, depth, texture_index);
    }
    u32 getType() const override { return Family::TEXTURE; }

    i32 texture_index = 0; ///< Into the material's own list of textures.
};

template <class Family>
class ConvertibleShaderForm : public ShaderForm<Family> {
public:
    using ShaderForm<Family>::ShaderForm;

    Ref<WavelengthIndependentParam> cloneWavelengthIndependent() const override {
        return makeWavelengthIndependent(this->shader_info);
    }
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override {
        return makeWavelengthDependent(this->shader_info);
    }
};

template <class Family>
class ConvertibleTextureForm : public TextureForm<Family> {
public:
    using TextureForm<Family>::TextureForm;

    Ref<WavelengthIndependentParam> cloneWavelengthIndependent() const override {
        return makeWavelengthIndependent(this->texture_index);
    }
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override {
        return makeWavelengthDependent(this->texture_index);
    }
};

} // namespace Quenza
