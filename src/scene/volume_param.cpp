// SPDX-License-Identifier: MIT
#include "scene/volume_param.h"

#include "scene/file_dependency.h"
#include "scene/param_forms.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "scene/xml_elements.h"

namespace Quenza {

void ConstantVolumeParam::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeConstantSpectrum(stream, depth, spectrum);
}

Ref<WavelengthDependentParam> ConstantVolumeParam::cloneWavelengthDependent() const {
    return new ConstantWavelengthDependentParam(spectrum ? spectrum->clone() : Ref<Spectrum>());
}

void ShaderVolumeParam::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    writeOpenTag(stream, depth, "shader");
    if (shader_info)
        shader_info->writeToXML(stream, depth + 1, options);
    writeBoolElement(stream, depth + 1, "wavelength_dependent", wavelength_dependent);
    writeCloseTag(stream, depth, "shader");
}

void ShaderVolumeParam::visit(SceneVisitor& visitor) {
    if (shader_info)
        shader_info->visit(visitor);
}

Ref<WavelengthIndependentParam> ShaderVolumeParam::cloneWavelengthIndependent() const {
    return makeWavelengthIndependent(shader_info);
}

Ref<WavelengthDependentParam> ShaderVolumeParam::cloneWavelengthDependent() const {
    return makeWavelengthDependent(shader_info);
}

void VoxelVolumeParam::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "voxel");
    writeStringElement(stream, depth + 1, "voxeldata_path", voxeldata_path);
    writeBoolElement(stream, depth + 1, "wavelength_dependent", wavelength_dependent);
    writeCloseTag(stream, depth, "voxel");
}

void VoxelVolumeParam::visit(SceneVisitor& visitor) {
    if (firstVisit(visitor, *this))
        visitFileDependency(visitor, voxeldata_path);
}

} // namespace Quenza
