// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "scene/param.h"
#include "scene/shader_info.h"
#include "scene/spectrum.h"

namespace Quenza {

class ConstantVolumeParam : public VolumeParam {
public:
    ConstantVolumeParam() = default;
    explicit ConstantVolumeParam(const Ref<Spectrum>& spectrum_) : spectrum(spectrum_) {}

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return CONSTANT; }
    /// The spectrum is copied too.
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override;

    Ref<Spectrum> spectrum;
};

class ShaderVolumeParam : public VolumeParam {
public:
    ShaderVolumeParam() = default;
    ShaderVolumeParam(const Ref<ShaderInfo>& info, bool wavelength_dependent_)
        : shader_info(info), wavelength_dependent(wavelength_dependent_) {}

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return SHADER; }
    void visit(SceneVisitor& visitor) override;
    Ref<WavelengthIndependentParam> cloneWavelengthIndependent() const override;
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override;

    Ref<ShaderInfo> shader_info;
    bool wavelength_dependent = false; ///< The shader gives a spectrum and not a number.
};

class VoxelVolumeParam : public VolumeParam {
public:
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return VOXEL; }
    void visit(SceneVisitor& visitor) override;

    String voxeldata_path;
    bool wavelength_dependent = false;
};

} // namespace Quenza
