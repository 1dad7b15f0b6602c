// SPDX-License-Identifier: MIT
#include "materials/qsl_shader.h"

#include "shared/plugin_ids.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int32_t EXPRESSION_SHADERS[] = {PLUGINID_QSL_NOISE, PLUGINID_QSL_BLEND, PLUGINID_QSL_GRADIENT,
                                          PLUGINID_QSL_NORMAL};

bool isExpressionShader(const BaseShader* shader) {
    return shader && std::ranges::any_of(EXPRESSION_SHADERS,
                                         [shader](int32_t type) { return shader->IsInstanceOf(type); });
}

} // namespace

QSLShaderData* findQSLShader(const BaseShader* shader) {
    return isExpressionShader(shader) ? dynamic_cast<QSLShaderData*>(shader->GetNodeData()) : nullptr;
}

bool isKnownShader(const BaseShader* shader) {
    return isExpressionShader(shader) || (shader && shader->IsInstanceOf(PLUGINID_QSL_SHADER));
}

String qslNumber(float value) {
    return RealToString(static_cast<double>(value), -1, 5);
}

String qslColour(const Vector& colour) {
    return String("vec3(") + qslNumber(colour.x) + ", " + qslNumber(colour.y) + ", " + qslNumber(colour.z) +
           ")";
}

Vector mix(const Vector& first, const Vector& second, float t) {
    return first + (second - first) * t;
}
