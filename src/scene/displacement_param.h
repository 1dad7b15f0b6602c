// SPDX-License-Identifier: MIT
#pragma once

#include "scene/param.h"
#include "scene/param_forms.h"

namespace Quenza {

class ConstantDisplacementParam : public DisplacementParam {
public:
    ConstantDisplacementParam() = default;
    explicit ConstantDisplacementParam(double value_) : value(value_) {}

    /// The number stands on a line of its own within "constant".
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return CONSTANT; }
    Ref<WavelengthIndependentParam> cloneWavelengthIndependent() const override;
    Ref<WavelengthDependentParam> cloneWavelengthDependent() const override;

    double value = 0.0;
};

class ShaderDisplacementParam : public ConvertibleShaderForm<DisplacementParam> {
public:
    using ConvertibleShaderForm::ConvertibleShaderForm;
};

class TextureDisplacementParam : public ConvertibleTextureForm<DisplacementParam> {
public:
    using ConvertibleTextureForm::ConvertibleTextureForm;
};

} // namespace Quenza
