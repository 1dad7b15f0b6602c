// SPDX-License-Identifier: MIT
#include "scene/param_forms.h"

#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "scene/xml_elements.h"

namespace Quenza {

void writeShaderForm(OStream& stream, u32 depth, const XMLWriteOptions& options,
                     const Ref<ShaderInfo>& info) {
    writeOpenTag(stream, depth, "shader");
    if (info)
        info->writeToXML(stream, depth + 1, options);
    writeCloseTag(stream, depth, "shader");
}

void writeTextureForm(OStream& stream, u32 depth, i32 texture_index) {
    writeOpenTag(stream, depth, "texture");
    writeIntElement(stream, depth + 1, "texture_index", texture_index);
    writeCloseTag(stream, depth, "texture");
}

Ref<WavelengthIndependentParam> makeWavelengthIndependent(const Ref<ShaderInfo>& shader_info) {
    return new ShaderWavelengthIndependentParam(shader_info);
}

Ref<WavelengthIndependentParam> makeWavelengthIndependent(i32 texture_index) {
    return new TextureWavelengthIndependentParam(texture_index);
}

Ref<WavelengthDependentParam> makeWavelengthDependent(const Ref<ShaderInfo>& shader_info) {
    return new ShaderWavelengthDependentParam(shader_info);
}

Ref<WavelengthDependentParam> makeWavelengthDependent(i32 texture_index) {
    return new TextureWavelengthDependentParam(texture_index);
}

Ref<WavelengthIndependentParam> ConvertibleParam::cloneWavelengthIndependent() const {
    return {};
}

Ref<WavelengthDependentParam> ConvertibleParam::cloneWavelengthDependent() const {
    return {};
}

} // namespace Quenza
