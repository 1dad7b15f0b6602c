// SPDX-License-Identifier: MIT
#pragma once

#include "scene/param.h"
#include "scene/param_forms.h"
#include "scene/spectrum.h"

namespace Quenza {

class ConstantWavelengthDependentParam : public WavelengthDependentParam {
public:
    ConstantWavelengthDependentParam() = default;
    explicit ConstantWavelengthDependentParam(const Ref<Spectrum>& spectrum_) : spectrum(spectrum_) {}

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return CONSTANT; }
    /// The spectrum is copied too.
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override;

    Ref<Spectrum> spectrum;
};

class ShaderWavelengthDependentParam : public ConvertibleShaderForm<WavelengthDependentParam> {
public:
    using ConvertibleShaderForm::ConvertibleShaderForm;
};

class TextureWavelengthDependentParam : public ConvertibleTextureForm<WavelengthDependentParam> {
public:
    using ConvertibleTextureForm::ConvertibleTextureForm;
};

/// Writes the element "constant" around a spectrum; a null one leaves it empty.
void writeConstantSpectrum(OStream& stream, u32 depth, const Ref<Spectrum>& spectrum);

} // namespace Quenza
