// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// A shader that can be written as an expression of the renderer's shader language.
class QSLShaderData : public ShaderData {
public:
    /// One expression from the parameters of `node`. `valueType` is a QSLValueType.
    virtual String getQSLExpression(BaseShader* node, int32_t valueType) = 0;
};

/// The data of one of the shaders that are written as expressions: noise, blend, gradient, normal. Null for
/// another shader and for null.
QSLShaderData* findQSLShader(const BaseShader* shader);
/// True for those four and for the shader that holds a program's text.
bool isKnownShader(const BaseShader* shader);
