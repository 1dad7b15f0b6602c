// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"
#include "materials/channels.h"

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

// What expressions are made of.

/// With 5 decimals: "1.00000".
String qslNumber(float value);
/// "vec3(r, g, b)".
String qslColour(const Vector& colour);

/// From `first` at 0 to `second` at 1, and beyond.
Vector mix(const Vector& first, const Vector& second, float t);
