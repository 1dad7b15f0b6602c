// SPDX-License-Identifier: MIT
#pragma once

#include "scene/param.h"
#include "scene/param_forms.h"

namespace Quenza {

class ConstantWavelengthIndependentParam : public WavelengthIndependentParam {
public:
    ConstantWavelengthIndependentParam() = default;
    explicit ConstantWavelengthIndependentParam(double value_) : value(value_) {}

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return CONSTANT; }
    Ref<WavelengthIndependentParam> cloneWavelengthIndependent() const override;
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override;

    double value = 0.0;
};

class ShaderWavelengthIndependentParam : public ConvertibleShaderForm<WavelengthIndependentParam> {
public:
    using ConvertibleShaderForm::ConvertibleShaderForm;
};

class TextureWavelengthIndependentParam : public ConvertibleTextureForm<WavelengthIndependentParam> {
public:
    using ConvertibleTextureForm::ConvertibleTextureForm;
};

} // namespace Quenza
